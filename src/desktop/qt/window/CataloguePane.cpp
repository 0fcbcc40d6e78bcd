#include "desktop/qt/window/CataloguePane.h"

#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "desktop/qt/widgets/FlatButton.h"
#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/widgets/Theme.h"
#include "playlists/GetPlayEntrys.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int TracksColumn = 4;
constexpr int HeadHeight = 30;

/// Names only what can be done.
QString emptyHint(const Root& root)
{
    if (root.mnuAddFolder.Click)
        return u"Strg+N nimmt eine Wiedergabeliste auf, Strg+L legt eine neue an, Strg+O durchsucht einen Ordner. "
               u"Dateien lassen sich auch hierher ziehen."_s;
    return u"Strg+N nimmt eine Wiedergabeliste auf, Strg+L legt eine neue an. Dateien und Ordner lassen sich auch "
           u"hierher ziehen."_s;
}

/// What to do in an empty catalogue, and with a filter that leaves nothing. The mouse reaches the list below it.
QWidget* makeHint(Root& root, Bindings& bindings, QWidget* parent)
{
    auto* const hint = new QWidget(parent);
    hint->setObjectName(root.pHinweistext.fullName());
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const layout = new QVBoxLayout(hint);
    layout->setContentsMargins(Theme::Margin, Theme::Margin, Theme::Margin, Theme::Margin);
    layout->setSpacing(Theme::Gap);
    auto* const title = new TextLabel(TextLabel::Weight::Heading, hint);
    title->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    auto* const text = new TextLabel(TextLabel::Weight::Dim, hint);
    text->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    text->setLines(6);
    layout->addStretch(2);
    layout->addWidget(title);
    layout->addWidget(text);
    layout->addStretch(3);
    bindings.follow(root.mnuFavoritenShow.Checked, [title, text, &root](bool filtered) {
        title->setText(filtered ? u"Keine Favoriten"_s : u"Die Orvante ist leer"_s);
        text->setText(filtered ? u"Keine Wiedergabeliste ist als Favorit markiert. „Nur Favoriten anzeigen“ im Menü "
                                 u"„Vorgänge“ zeigt wieder alle."_s
                               : emptyHint(root));
    });
    return hint;
}

} // namespace

CataloguePane::CataloguePane(Root& root, QWidget* parent) : QWidget(parent), m_root(root), m_popup(this)
{
    auto* const title = new ControlLabel(root.tOrvanten, TextLabel::Weight::Heading, this);
    auto* const count = new ControlLabel(root.nAnzeige, TextLabel::Weight::Dim, this);
    count->setWhole(true);
    auto* const filter = new TextLabel(TextLabel::Weight::Normal, this);
    filter->setText(u"· nur Favoriten"_s);
    filter->setWhole(true);
    m_bindings.follow(root.mnuFavoritenShow.Checked, [filter](bool filtered) { filter->setVisible(filtered); });
    auto* const up = new ControlButton(root.bMoveUp, 28, u"Eintrag nach oben verschieben"_s, u"go-up"_s, this);
    auto* const down = new ControlButton(root.bMoveDown, 28, u"Eintrag nach unten verschieben"_s, u"go-down"_s, this);
    auto* const caption = new ControlLabel(root.LListenCaption, TextLabel::Weight::Dim, this);
    caption->setLines(2);
    m_list = new ReportList(root.LListView1, this);
    m_list->setAccessibleName(u"Wiedergabelisten"_s);
    m_list->setNumberColumn(TracksColumn);
    m_list->PopUp = [this](const QPoint& point) { popUp(point); };
    auto* const rename = new QShortcut(Qt::Key_F2, m_list);
    rename->setContext(Qt::WidgetShortcut);
    connect(rename, &QShortcut::activated, this, [&root] { root.mnuUmbenennen.press(); });
    m_popup.setObjectName(u"cataloguePopUp"_s);
    m_hint = makeHint(root, m_bindings, m_list);
    m_bindings.follow(root.pHinweistext.Visible, [this](bool visible) { m_hint->setVisible(visible); });
    m_list->viewport()->installEventFilter(this);

    auto* const head = new QHBoxLayout;
    head->setSpacing(Theme::Gap);
    head->addWidget(title);
    head->addWidget(count);
    head->addWidget(filter);
    head->addStretch();
    head->addWidget(up);
    head->addWidget(down);
    head->addStrut(HeadHeight);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(Theme::Margin, Theme::Gap, Theme::Gap, Theme::Margin);
    layout->setSpacing(Theme::Gap);
    layout->addLayout(head);
    layout->addWidget(caption);
    layout->addWidget(m_list, 1);
}

void CataloguePane::popUp(const QPoint& point)
{
    const ListView& list = m_root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    // What comes up acts on the list that is in sight. One that is missing is only asked for by a click.
    if (isPlaylistThere(m_root, playlistPath(m_root, row)))
        list.Click();
    if (m_root.services.events.ended() || list.selectedRow() != row)
        return;
    if (m_popup.isEmpty()) {
        const MenuItem* const groups[][4] = {
            {&m_root.mnuWiedergabe},
            {&m_root.mnuEigenschaften, &m_root.mnuUmbenennen, &m_root.mnuBeschriftung, &m_root.mnuFavoriten},
            {&m_root.mnuSpeichernUnter},
            {&m_root.mnuLöschen}};
        for (const auto& group : groups) {
            m_popup.addSeparator();
            for (const MenuItem* item : group)
                if (item != nullptr)
                    m_popup.addAction(window()->findChild<QAction*>(item->fullName()));
        }
    }
    const QList<QAction*> actions = m_popup.actions();
    for (QAction* action : actions)
        if (const QString icon = action->data().toString(); !icon.isEmpty() && action->icon().isNull())
            action->setIcon(Theme::icon(icon));
    m_popup.exec(point);
}

bool CataloguePane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        placeHint();
    return QWidget::eventFilter(watched, event);
}

void CataloguePane::placeHint()
{
    m_hint->setGeometry(m_list->viewport()->geometry());
}

} // namespace orvantine
