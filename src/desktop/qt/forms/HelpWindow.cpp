#include "desktop/qt/forms/HelpWindow.h"

#include "desktop/qt/widgets/Emblem.h"
#include "desktop/qt/widgets/Theme.h"

#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QKeyEvent>
#include <QPdfWriter>
#include <QResource>
#include <QTextBrowser>
#include <QTextCursor>
#include <QToolBar>
#include <QUrl>

#include <memory>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString& contentsTopic()
{
    static const QString topic = u"/Inhalt.htm"_s;
    return topic;
}

QString resourceOf(const QString& topic)
{
    return u":/hilfe"_s + topic;
}

} // namespace

HelpWindow::HelpWindow() : m_page(new QTextBrowser(this))
{
    setObjectName(u"HelpWindow"_s);
    setWindowTitle(u"Orvanten Manager – Hilfe"_s);
    setWindowIcon(emblemIcon());

    m_page->setObjectName(u"HelpPage"_s);
    m_page->setAccessibleName(u"Hilfetext"_s);
    m_page->setOpenExternalLinks(false);
    m_page->setOpenLinks(true);
    m_page->setFrameShape(QFrame::NoFrame);
    m_page->document()->setDocumentMargin(24);
    setCentralWidget(m_page);

    auto* const bar = new QToolBar(u"Hilfe"_s, this);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_back = bar->addAction(Theme::icon(u"go-previous"_s), u"Zurück"_s);
    m_forward = bar->addAction(Theme::icon(u"go-next"_s), u"Vor"_s);
    QAction* const contents = bar->addAction(Theme::icon(u"go-home"_s), u"Inhalt"_s);
    m_print = bar->addAction(Theme::icon(u"document-print"_s), u"Drucken"_s);
    m_print->setToolTip(u"Öffnet die Seite als PDF, das sich ausdrucken lässt"_s);
    m_print->setShortcut(QKeySequence(QKeySequence::Print));
    connect(m_print, &QAction::triggered, this, [this] {
        if (const QString file = printed(); !file.isEmpty())
            QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    });
    m_back->setShortcut(QKeySequence(QKeySequence::Back));
    m_forward->setShortcut(QKeySequence(QKeySequence::Forward));
    contents->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Home));
    addToolBar(bar);

    connect(m_back, &QAction::triggered, m_page, &QTextBrowser::backward);
    connect(m_forward, &QAction::triggered, m_page, &QTextBrowser::forward);
    connect(contents, &QAction::triggered, this, [this] { go(contentsTopic()); });
    connect(m_page, &QTextBrowser::backwardAvailable, m_back, &QAction::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, m_forward, &QAction::setEnabled);
    connect(m_page, &QTextBrowser::sourceChanged, this, [this] {
        const QString title = m_page->documentTitle();
        setWindowTitle(title.isEmpty() ? u"Orvanten Manager – Hilfe"_s : title + u" – Orvanten Manager Hilfe"_s);
    });
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    resize(760, 640);
}

HelpWindow::~HelpWindow()
{
    if (!m_file.isEmpty())
        QResource::unregisterResource(m_file);
}

bool HelpWindow::showTopic(const QString& file, const QString& topic)
{
    if (!open(file) || !QFile::exists(resourceOf(topic)))
        return false;
    go(topic);
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
    m_page->setFocus();
    return true;
}

bool HelpWindow::open(const QString& file)
{
    if (!m_file.isEmpty())
        return QFile::exists(m_file);
    if (file.isEmpty() || !QResource::registerResource(file))
        return false;
    m_file = file;
    return true;
}

void HelpWindow::go(const QString& topic)
{
    QUrl page;
    page.setScheme(u"qrc"_s);
    page.setPath(u"/hilfe"_s + topic);
    m_page->setSource(page);
}

QString HelpWindow::printed()
{
    if (!m_prints.isValid())
        return {};
    QString file = m_prints.filePath(u"Hilfe %1.pdf"_s.arg(++m_printCount));
    QPdfWriter writer(file);
    writer.setTitle(m_page->documentTitle());
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter);
    // On paper it is dark on light, whatever the desktop's colours are.
    const std::unique_ptr<QTextDocument> page(m_page->document()->clone());
    QTextCursor all(page.get());
    all.select(QTextCursor::Document);
    QTextCharFormat ink;
    ink.setForeground(Qt::black);
    all.mergeCharFormat(ink);
    page->print(&writer);
    return file;
}

void HelpWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QMainWindow::keyPressEvent(event);
}

} // namespace orvantine
