#include "desktop/qt/window/MainWindow.h"

#include "app/ColumnWidths.h"
#include "app/FormResize.h"
#include "app/Root.h"
#include "desktop/qt/widgets/Keys.h"
#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/widgets/Surfaces.h"
#include "desktop/qt/widgets/Theme.h"
#include "desktop/qt/window/Balloons.h"
#include "desktop/qt/window/CataloguePane.h"
#include "desktop/qt/window/PlayerBar.h"
#include "desktop/qt/window/PlaylistPane.h"
#include "shell/MainWindow.h"
#include "shell/Shutdown.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <numeric>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int CatalogueWidth = 276;
constexpr std::chrono::milliseconds NoteAfter{120};
/// How long a window that is not on the screen yet is waited for before it is minimised.
constexpr std::chrono::milliseconds ExposeLookAfter{20};
constexpr int MostExposeLooks = 250;

constexpr int pixelsAtLeast(Twips length)
{
    return (length + TwipsPerPixel - 1) / TwipsPerPixel;
}

Qt::CursorShape cursorOf(MousePointer pointer)
{
    switch (pointer) {
    case MousePointer::Hourglass:
        return Qt::WaitCursor;
    case MousePointer::ArrowHourglass:
        return Qt::BusyCursor;
    case MousePointer::Default:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace

MainWindow::MainWindow(Root& root) : m_root(root)
{
    setObjectName(root.name);
    const WindowSize least = leastSize(root);
    setMinimumSize(pixelsAtLeast(least.width), pixelsAtLeast(least.height));
    m_menus.fill(*menuBar(), orvantine::menuBar(root));

    auto* const centre = new QWidget(this);
    m_splitter = new QSplitter(Qt::Horizontal, centre);
    m_catalogue = new CataloguePane(root, m_splitter);
    m_playlist = new PlaylistPane(root, m_splitter);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({CatalogueWidth, 4 * CatalogueWidth});
    keepSplitter();
    auto* const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(new PlayerBar(root, centre));
    setCentralWidget(centre);
    makeBusyPanel(centre);
    makeQuietLine(centre);
    connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this, [this] { openMenuBar(); });
    m_tips = std::make_unique<Balloons>(root.TT, *this);
    centre->installEventFilter(this);

    m_minimiseLater.setSingleShot(true);
    connect(&m_minimiseLater, &QTimer::timeout, this, [this] { minimise(); });
    m_noteLater.setSingleShot(true);
    m_noteLater.setInterval(NoteAfter);
    connect(&m_noteLater, &QTimer::timeout, this, [this] { notePlace(); });

    m_bindings.follow(root.Caption, [this](const QString& caption) { setWindowTitle(caption); });
    m_bindings.follow(root.Pointer, [this](MousePointer pointer) { setCursor(cursorOf(pointer)); });
    m_bindings.watch(root.Left, [this] { showPlace(); });
    m_bindings.watch(root.Top, [this] { showPlace(); });
    m_bindings.watch(root.Width, [this] { showSize(); });
    m_bindings.watch(root.Height, [this] { showSize(); });
    showSize();
    m_bindings.follow(root.State, [this](WindowState) { showState(); });
    m_bindings.follow(root.Visible, [this](bool) { showVisible(); });
    m_catalogue->list().setFocus();
    // A dialog that comes up before this window is to stand over it all the same.
    winId();
    windowHandle()->installEventFilter(this);
}

MainWindow::~MainWindow() = default;

void MainWindow::makeBusyPanel(QWidget* centre)
{
    auto* const card = new Card(centre);
    m_busy = card;
    card->setObjectName(m_root.pAnimations.fullName());
    auto* const spinner = new Spinner(card);
    spinner->setObjectName(m_root.pAnimation.fullName());
    auto* const text = new ControlLabel(m_root.Label2, TextLabel::Weight::Normal, card);
    text->setLines(4);
    text->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto* const layout = new QHBoxLayout(card);
    layout->setContentsMargins(2 * Theme::Margin, Theme::Margin, 2 * Theme::Margin, Theme::Margin);
    layout->setSpacing(2 * Theme::Margin);
    layout->addWidget(spinner);
    layout->addWidget(text, 1);
    m_bindings.follow(m_root.pAnimation.Running, [spinner](bool running) { spinner->setRunning(running); });
    m_bindings.follow(m_root.pAnimations.Visible, [this](bool visible) {
        placeBusyPanel();
        m_busy->setVisible(visible);
        m_busy->raise();
    });
}

/// Where the user drew the edge between the two panes, it stays.
void MainWindow::keepSplitter()
{
    const auto show = [this](Twips width) {
        const QList<int> sizes = m_splitter->sizes();
        const int room = std::accumulate(sizes.begin(), sizes.end(), 0);
        const int pixels = pixelsOf(width);
        if (pixels > 0 && sizes.constFirst() != pixels)
            m_splitter->setSizes({pixels, std::max(room - pixels, 1)});
    };
    m_bindings.follow(m_root.CatalogueWidth, show);
    m_splitterLater.setSingleShot(true);
    m_splitterLater.setInterval(NoteAfter);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] { m_splitterLater.start(); });
    connect(&m_splitterLater, &QTimer::timeout, this, [this] { noteSplitter(); });
}

void MainWindow::noteSplitter()
{
    m_splitterLater.stop();
    noteCatalogueWidth(m_root, twipsOf(m_splitter->sizes().constFirst()));
}

/// Stands over the lists for a moment; a screen reader hears of it at once.
void MainWindow::makeQuietLine(QWidget* centre)
{
    auto* const card = new Card(centre);
    m_quiet = card;
    card->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const text = new ControlLabel(m_root.quietLine, TextLabel::Weight::Normal, card);
    m_quietText = text;
    text->setAlignment(Qt::AlignCenter);
    auto* const layout = new QHBoxLayout(card);
    layout->setContentsMargins(2 * Theme::Margin, Theme::Gap, 2 * Theme::Margin, Theme::Gap);
    layout->addWidget(text);
    const auto show = [this] {
        placeQuietLine();
        m_quiet->setVisible(m_root.quietLine.Visible.value());
        m_quiet->raise();
    };
    show();
    m_bindings.watch(m_root.quietLine.Visible, show);
    m_bindings.watch(m_root.quietLine.Caption, [this, text, show] {
        show();
        if (m_root.quietLine.Caption.value().isEmpty())
            return;
        QAccessibleEvent told(text, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    });
}

void MainWindow::placeQuietLine()
{
    const QSize room = centralWidget() != nullptr ? centralWidget()->size() : size();
    const int words = QFontMetrics(font()).horizontalAdvance(m_root.quietLine.Caption.value());
    const int width = std::min(words + 6 * Theme::Margin, room.width() - 4 * Theme::Margin);
    const QMargins around = m_quiet->layout()->contentsMargins();
    m_quietText->setLines(words + around.left() + around.right() < width ? 1 : 2);
    // Of the text itself: the card knows nothing of it while it is out of sight.
    const QSize size(width, m_quietText->sizeHint().height() + around.top() + around.bottom());
    // Above the bar of the player, where no list has its head.
    m_quiet->setGeometry((room.width() - size.width()) / 2, room.height() * 3 / 4, size.width(), size.height());
}

void MainWindow::openMenuBar()
{
    const QList<QAction*> menus = menuBar()->actions();
    const auto usable = [](const QAction* menu) { return menu->isEnabled() && menu->isVisible(); };
    const auto first = std::find_if(menus.begin(), menus.end(), usable);
    if (first == menus.end())
        return;
    menuBar()->setFocus(Qt::MenuBarFocusReason);
    menuBar()->setActiveAction(*first);
}

void MainWindow::placeBusyPanel()
{
    const QSize room = centralWidget()->size();
    const QSize size(std::min(480, room.width() - 4 * Theme::Margin), m_busy->sizeHint().height() + Theme::Margin);
    m_busy->setGeometry((room.width() - size.width()) / 2, (room.height() - size.height()) / 2, size.width(),
                        size.height());
}

void MainWindow::placeOverlays()
{
    placeBusyPanel();
    placeQuietLine();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == centralWidget() && event->type() == QEvent::Resize)
        placeOverlays();
    if (watched == windowHandle() && event->type() == QEvent::Expose && !m_shownAt && windowHandle()->isExposed())
        m_shownAt = geometry().topLeft();
    return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::event(QEvent* event)
{
    // A box was closed while the lists are out of reach. The focus waits in the window for the list that gave it away;
    // left alone, it would go to the first button.
    if (event->type() == QEvent::WindowActivate && focusWidget() == nullptr)
        setFocus(Qt::OtherFocusReason);
    return QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (m_closing)
        return;
    m_closing = true;
    noteNow();
    Form_QueryUnload(m_root);
    m_closing = false;
}

void MainWindow::endSession()
{
    noteNow();
    endBySession(m_root);
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    m_noteLater.start();
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    m_noteLater.start();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) {
        Theme::setUpIcons();
        update();
    }
    if (event->type() != QEvent::WindowStateChange || !isVisible())
        return;
    const WindowState state = isMinimized()   ? WindowState::Minimized
                              : isMaximized() ? WindowState::Maximized
                                              : WindowState::Normal;
    if (m_root.State.value() != state)
        m_root.State = state;
    if (m_root.loaded)
        Form_Resize(m_root);
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    // The lists know the keys of the player; they work from the other places of the window
    // that have no use of their own for them.
    ListView& list = m_root.mnuEditCopy.Tag == u"2" ? m_root.LListView2 : m_root.LListView1;
    const bool fromList = dynamic_cast<ReportList*>(focusWidget()) != nullptr;
    const int code = keyCodeOf(*event);
    if (!fromList && code != 0 && shiftWordOf(*event) == 4 && list.Enabled.value() && list.KeyDown &&
        list.KeyDown(4, code))
        return;
    QMainWindow::keyPressEvent(event);
}

void MainWindow::showPlace()
{
    const QPoint place(pixelsOf(m_root.Left.value()), pixelsOf(m_root.Top.value()));
    if (m_noting || m_root.State.value() != WindowState::Normal || pos() == place)
        return;
    move(place);
    placeFrame();
}

void MainWindow::showSize()
{
    const QSize size(pixelsOf(m_root.Width.value()), pixelsOf(m_root.Height.value()));
    if (m_noting || m_root.State.value() != WindowState::Normal || this->size() == size)
        return;
    resize(size);
    placeFrame();
}

/// Before it is shown a window knows no frame. Told as the frame's, the place holds for the frame once it comes. A
/// native window whose size differs when it is shown would be told its place anew, without a frame.
void MainWindow::placeFrame()
{
    if (isVisible() || windowHandle() == nullptr)
        return;
    windowHandle()->resize(size());
    windowHandle()->setFramePosition({pixelsOf(m_root.Left.value()), pixelsOf(m_root.Top.value())});
}

void MainWindow::showState()
{
    // The tray minimises a window and takes it out of sight in one go. Told both, the window manager answers late, and
    // its word would come when the window is brought back: it would go again at once. So only a window that is still
    // seen a moment later is minimised.
    if (m_root.State.value() == WindowState::Minimized) {
        m_minimiseLater.start(0);
        return;
    }
    Qt::WindowStates states = windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    if (m_root.State.value() == WindowState::Maximized)
        states |= Qt::WindowMaximized;
    if (windowState() != states)
        setWindowState(states);
    // A window that was minimised when its place and size were told takes them now.
    if (m_root.State.value() == WindowState::Normal) {
        showSize();
        showPlace();
    }
}

void MainWindow::minimise()
{
    if (m_root.State.value() != WindowState::Minimized || !isVisible())
        return;
    // A window manager that has not shown the window yet would show it behind the wish.
    if (!windowHandle()->isExposed() && m_exposeLooks++ < MostExposeLooks) {
        m_minimiseLater.start(ExposeLookAfter);
        return;
    }
    m_exposeLooks = 0;
    setWindowState(windowState() | Qt::WindowMinimized);
}

void MainWindow::showVisible()
{
    const bool visible = m_root.Visible.value();
    if (visible == isVisible())
        return;
    m_shownAt.reset();
    m_moved = false;
    if (visible)
        showPlace();
    setVisible(visible);
    if (visible && m_root.State.value() == WindowState::Minimized)
        m_minimiseLater.start(0);
    if (!visible || m_root.State.value() == WindowState::Minimized)
        return;
    raise();
    const QList<QDialog*> dialogs = findChildren<QDialog*>();
    const auto shown = std::find_if(dialogs.begin(), dialogs.end(), [](const QDialog* d) { return d->isVisible(); });
    if (shown == dialogs.end())
        activateWindow();
    else
        (*shown)->activateWindow();
}

void MainWindow::noteNow()
{
    if (m_splitterLater.isActive())
        noteSplitter();
    notePlace();
}

void MainWindow::notePlace()
{
    m_noteLater.stop();
    if (m_root.State.value() != WindowState::Normal || !isVisible() ||
        windowState().testAnyFlags(Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    const auto note = [](QProperty<Twips>& measure, int pixels) {
        if (pixelsOf(measure.value()) != pixels)
            measure = twipsOf(pixels);
    };
    m_noting = true;
    // A window stays where it was put, whatever the desktop made of the wish, until it is moved. Where a window does
    // not learn its place, there is none to note.
    m_moved = m_moved || (m_shownAt && m_shownAt != geometry().topLeft());
    if (m_moved && !QGuiApplication::platformName().startsWith(u"wayland"_s)) {
        note(m_root.Left, x());
        note(m_root.Top, y());
    }
    note(m_root.Width, width());
    note(m_root.Height, height());
    m_noting = false;
}

} // namespace orvantine
