#include "desktop/qt/widgets/ReportList.h"

#include "desktop/qt/widgets/FileUris.h"
#include "desktop/qt/widgets/Keys.h"
#include "desktop/qt/widgets/ReportDrawing.h"
#include "desktop/qt/widgets/Theme.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

namespace orvantine {

namespace {

constexpr std::chrono::milliseconds GreyAfter{400};
constexpr std::chrono::milliseconds FillAfter{250};
/// Room that a column keeps when it gives way.
constexpr int LastColumnRoom = 60;
constexpr int NamesRoom = 110;

/// The section to the right of this one; -1 for none.
int nextInSight(const QHeaderView& head, int section)
{
    for (int next = section + 1; next < head.count(); ++next)
        if (!head.isSectionHidden(next))
            return next;
    return -1;
}

/// One pixel of the screen, at whatever scale: a rectangle would be one here and two there.
void drawHairline(QPainter& painter, const QColor& color, const QPoint& from, const QPoint& to)
{
    QPen pen(color, 1);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLine(from, to);
}

int lastInSight(const QHeaderView& head)
{
    int last = -1;
    for (int next = nextInSight(head, last); next >= 0; next = nextInSight(head, next))
        last = next;
    return last;
}

} // namespace

ReportList::ReportList(ListView& list, QWidget* parent) : QTreeView(parent), m_list(list)
{
    setObjectName(list.fullName());
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerItem);
    setTextElideMode(Qt::ElideRight);
    setAcceptDrops(true);
    setDragDropMode(DropOnly);
    setItemDelegate(new ReportCells(*this));
    setHeader(new ReportHead(*this));
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    header()->setHighlightSections(false);
    header()->setMinimumSectionSize(24);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setModel(&list);

    m_fillLater.setSingleShot(true);
    m_fillLater.setInterval(FillAfter);
    connect(&m_fillLater, &QTimer::timeout, this, [this] { endDrawing(); });
    m_greyLater.setSingleShot(true);
    m_greyLater.setInterval(GreyAfter);
    connect(&m_greyLater, &QTimer::timeout, this, [this] {
        // A box often asks about just these rows, and tells of itself that nothing else can be clicked.
        if (QApplication::activeModalWidget() != nullptr) {
            m_greyLater.start();
            return;
        }
        m_greyed = true;
        viewport()->update();
    });

    // Whatever the list or the selection model make of the current row on such a change, the list's word counts.
    connect(&list, &QAbstractItemModel::rowsInserted, this, [this] { showSelection(); });
    connect(&list, &QAbstractItemModel::rowsRemoved, this, [this] { showSelection(); });
    connect(&list, &QAbstractItemModel::layoutChanged, this, [this] {
        showSelection();
        // The rows were sorted or moved: the selected one went along.
        if (currentIndex().isValid())
            scrollTo(currentIndex());
        header()->viewport()->update();
    });
    connect(&list, &QAbstractItemModel::columnsInserted, this, [this] { showWidths(); });
    connect(&list, &QAbstractItemModel::modelReset, this, [this] {
        showWidths();
        showSelection();
    });
    connect(header(), &QHeaderView::sectionResized, this,
            [this](int section, int, int pixels) { noteWidth(section, pixels); });
    connect(header(), &QHeaderView::sectionClicked, this, [this](int section) {
        if (m_list.ColumnClick)
            m_list.ColumnClick(section + 1);
    });

    list.SetFocus = [this] { setFocus(Qt::OtherFocusReason); };
    list.EnsureVisible = [this](int row) { scrollTo(m_list.index(row - 1, keyColumn())); };
    list.TopRow = [this] { return verticalScrollBar()->value() + 1; };
    list.ShowFromRow = [this](int row) {
        executeDelayedItemsLayout();
        updateGeometries();
        verticalScrollBar()->setValue(row - 1);
    };
    list.LockUpdate = [this](bool locked) { setUpdatesEnabled(!locked); };
    list.WidthChanged = [this](int, Twips) { showWidths(); };
    list.BatchEnded = [this] { showSelection(); };

    m_bindings.watch(list.selection(), [this] { showSelection(); });
    m_bindings.follow(list.Enabled, [this](bool enabled) { setUsable(enabled); });
    m_bindings.follow(list.Visible, [this](bool visible) { setSeen(visible); });
    m_bindings.watch(list.GridLines, [this] { viewport()->update(); });
    m_bindings.watch(list.Ghosted, [this] { viewport()->update(); });
    m_bindings.watch(list.FontName, [this] { showFont(); });
    m_bindings.watch(list.FontSize, [this] { showFont(); });

    keepGround();
    showFont();
    showWidths();
    showSelection();
}

ReportList::~ReportList()
{
    m_list.SetFocus = [] {};
    m_list.EnsureVisible = [](int) {};
    m_list.TopRow = [] { return 1; };
    m_list.ShowFromRow = [](int) {};
    m_list.LockUpdate = [](bool) {};
    m_list.WidthChanged = [](int, Twips) {};
    m_list.BatchEnded = [] {};
}

void ReportList::selectRowAt(const QPoint& point)
{
    // A menu that opens under the pressed button takes the release away.
    m_pressedRow = 0;
    const QModelIndex under = indexAt(point);
    if (under.isValid())
        m_list.select(under.row() + 1);
}

void ReportList::contextMenuEvent(QContextMenuEvent* event)
{
    if (!PopUp)
        return event->ignore();
    QPoint point = event->pos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        scrollTo(currentIndex());
        point = visualRect(currentIndex()).center();
    }
    selectRowAt(point);
    PopUp(viewport()->mapToGlobal(point));
}

void ReportList::keyPressEvent(QKeyEvent* event)
{
    const int code = keyCodeOf(*event);
    if (code != 0 && m_list.KeyDown && m_list.KeyDown(shiftWordOf(*event), code))
        return;
    if (code == 13 && event->modifiers() == (event->modifiers() & Qt::KeypadModifier)) {
        if (m_list.selectedRow() > 0 && m_list.DblClick)
            m_list.DblClick();
        return;
    }
    // The view would put the text of a cell into the clipboard.
    if (event->matches(QKeySequence::Copy))
        return event->ignore();
    QTreeView::keyPressEvent(event);
    if (takeSelection() && m_list.Click)
        m_list.Click();
}

/// Until the button goes up the row is only shown as the coming one: an event in between must not find a selected row
/// whose click was never told.
void ReportList::mousePressEvent(QMouseEvent* event)
{
    m_pressedRow = indexAt(event->pos()).row() + 1;
    m_pressedAt = event->pos();
    QTreeView::mousePressEvent(event);
    viewport()->update();
}

void ReportList::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressedRow > 0 && m_list.DragFile && event->buttons() == Qt::LeftButton) {
        if ((event->pos() - m_pressedAt).manhattanLength() >= QApplication::startDragDistance())
            dragFile();
        return;
    }
    QTreeView::mouseMoveEvent(event);
    if (m_pressedRow > 0) {
        m_pressedRow = currentIndex().row() + 1;
        viewport()->update();
    }
}

void ReportList::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeView::mouseReleaseEvent(event);
    const int row = std::exchange(m_pressedRow, 0);
    if (row == 0)
        return;
    m_list.select(row);
    showSelection();
    if (m_list.Click)
        m_list.Click();
}

void ReportList::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex under = indexAt(event->pos());
    if (event->button() != Qt::LeftButton || !under.isValid())
        return;
    m_pressedRow = 0;
    m_list.select(under.row() + 1);
    if (m_list.DblClick)
        m_list.DblClick();
}

void ReportList::focusInEvent(QFocusEvent* event)
{
    QTreeView::focusInEvent(event);
    if (m_list.GotFocus)
        m_list.GotFocus();
}

void ReportList::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

void ReportList::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(takesDrop(*event));
    showDropTarget(event->isAccepted());
}

void ReportList::dragLeaveEvent(QDragLeaveEvent* event)
{
    QTreeView::dragLeaveEvent(event);
    showDropTarget(false);
}

/// What is dropped becomes rows of the list, wherever the mouse is over it.
void ReportList::showDropTarget(bool shown)
{
    if (std::exchange(m_dropTarget, shown) != shown)
        viewport()->update();
}

void ReportList::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (!m_dropTarget)
        return;
    QPainter painter(viewport());
    QPen edge(palette().color(QPalette::Active, QPalette::Highlight), 2);
    edge.setJoinStyle(Qt::MiterJoin);
    painter.setPen(edge);
    painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

void ReportList::dropEvent(QDropEvent* event)
{
    showDropTarget(false);
    const QStringList paths = takesDrop(*event) ? localPaths(*event->mimeData()) : QStringList();
    if (paths.isEmpty())
        return event->ignore();
    // Never as a move: the program that the files come from would take them away.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The handler may ask the user, and that program waits as long as this event runs.
    QTimer::singleShot(0, this, [this, paths] {
        if (isReachable() && m_list.Drop)
            m_list.Drop(paths);
    });
}

void ReportList::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        keepGround();
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::ApplicationFontChange)
        showFont();
}

/// The scroll bar comes and goes here, also while the list is not seen yet, when the view is told of no new size.
void ReportList::updateGeometries()
{
    QTreeView::updateGeometries();
    if (!m_applyingWidths && viewport()->width() != m_filledWidth)
        showWidths();
}

void ReportList::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    showWidths();
}

void ReportList::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QPalette& ground = palette();
    const QRect row = option.rect;
    if (index.row() + 1 == (m_pressedRow > 0 ? m_pressedRow : m_list.selectedRow())) {
        const bool active = hasFocus() && isActiveWindow();
        const QColor accent = ground.color(QPalette::Active, QPalette::Highlight);
        painter->fillRect(row,
                          Theme::mix(ground.color(QPalette::Active, QPalette::Base), accent, active ? 0.32 : 0.16));
        painter->fillRect(QRect(row.left(), row.top(), active ? 3 : 2, row.height()), accent);
    }

    QStyleOptionViewItem cell(option);
    const QColor line = Theme::lineColor(ground);
    for (int visual = 0; visual < header()->count(); ++visual) {
        const int section = header()->logicalIndex(visual);
        if (header()->isSectionHidden(section))
            continue;
        cell.rect =
            QRect(header()->sectionViewportPosition(section), row.top(), header()->sectionSize(section), row.height());
        itemDelegate()->paint(painter, cell, index.siblingAtColumn(section));
        if (m_list.GridLines.value())
            drawHairline(*painter, line, {cell.rect.right(), row.top()}, {cell.rect.right(), row.bottom()});
    }
    if (m_list.GridLines.value())
        drawHairline(*painter, line, {row.left(), row.bottom()}, {row.right(), row.bottom()});
}

void ReportList::showSelection()
{
    if (m_list.batching())
        return;
    const int row = m_list.selectedRow();
    if (row < 1 || row > m_list.rowCount()) {
        if (currentIndex().isValid())
            selectionModel()->clear();
    } else if (currentIndex().row() + 1 != row || !selectionModel()->isRowSelected(row - 1)) {
        selectionModel()->setCurrentIndex(m_list.index(row - 1, keyColumn()),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    viewport()->update();
}

bool ReportList::takesDrop(const QDropEvent& event) const
{
    return m_list.Drop && m_list.AllowDrop && isReachable() && event.source() != this &&
           mayHoldFiles(*event.mimeData());
}

bool ReportList::isReachable() const
{
    const QWidget* const modal = QApplication::activeModalWidget();
    return m_list.Enabled.value() && (modal == nullptr || modal == window());
}

void ReportList::dragFile()
{
    const int row = std::exchange(m_pressedRow, 0);
    setState(NoState);
    const std::optional<QByteArray> file = m_list.DragFile(row);
    if (file) {
        auto* const content = new QMimeData;
        content->setData(QStringLiteral("text/uri-list"), uriList({*file}));
        // Lives as long as the desktop needs it.
        auto* const drag = new QDrag(this);
        drag->setMimeData(content);
        drag->exec(Qt::CopyAction);
    }
    showSelection();
}

bool ReportList::takeSelection()
{
    const int row = currentIndex().isValid() ? currentIndex().row() + 1 : 0;
    return row > 0 && row != m_list.selectedRow() && m_list.select(row);
}

void ReportList::showWidths()
{
    m_applyingWidths = true;
    for (int column = 1; column <= m_list.columns(); ++column) {
        const int pixels = pixelsOf(m_list.columnWidth(column));
        setColumnHidden(column - 1, pixels <= 0);
        if (pixels > 0)
            header()->resizeSection(column - 1, pixels);
    }
    m_applyingWidths = false;
    fillRoom();
}

/// The column of the names takes the room that is left, and gives way where there is none, the last one behind it. The
/// widths that the list keeps stay.
void ReportList::fillRoom()
{
    m_filledWidth = viewport()->width();
    int room = m_filledWidth;
    for (int section = 0; section < header()->count(); ++section)
        if (!header()->isSectionHidden(section))
            room -= header()->sectionSize(section);
    const int names = keyColumn();
    if (names >= header()->count() || header()->isSectionHidden(names))
        return;
    int wanted = header()->sectionSize(names) + room;
    m_applyingWidths = true;
    // In a narrow window the last column gives way before anything is scrolled out of sight.
    if (const int last = lastInSight(*header()); wanted < NamesRoom && last != names) {
        const int pixels = header()->sectionSize(last);
        const int less = std::clamp(pixels - LastColumnRoom, 0, NamesRoom - wanted);
        header()->resizeSection(last, pixels - less);
        wanted += less;
    }
    header()->resizeSection(names, std::max(wanted, NamesRoom));
    setHorizontalScrollBarPolicy(wanted < NamesRoom ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    m_applyingWidths = false;
}

void ReportList::noteWidth(int section, int pixels)
{
    if (m_applyingWidths || pixels <= 0)
        return;
    m_drawn = section;
    m_list.noteColumnWidth(section + 1, twipsOf(pixels));
    // Not while the user draws the edge: it would move under the mouse.
    m_fillLater.start();
}

void ReportList::endDrawing()
{
    const int drawn = std::exchange(m_drawn, -1);
    if (drawn < 0)
        return;
    m_fillLater.stop();
    // The names get what is left in the end: drawn narrower or wider themselves, they pass that on to their neighbour.
    if (const int next = nextInSight(*header(), drawn); drawn == keyColumn() && next >= 0) {
        int room = viewport()->width();
        for (int section = 0; section < header()->count(); ++section)
            if (section != next && !header()->isSectionHidden(section))
                room -= header()->sectionSize(section);
        m_applyingWidths = true;
        header()->resizeSection(next, std::max(room, LastColumnRoom));
        m_applyingWidths = false;
        tellDrawn(next);
    }
    tellDrawn(drawn);
    fillRoom();
}

void ReportList::tellDrawn(int section)
{
    m_list.noteColumnWidth(section + 1, twipsOf(header()->sectionSize(section)));
    if (m_list.WidthDrawn)
        m_list.WidthDrawn(section + 1);
}

int ReportList::sortedColumn() const
{
    if (!m_list.sorted())
        return 0;
    // The number of a row that is only storage is that of its track.
    const int column = m_list.sortColumn();
    if (column > header()->count() || !isColumnHidden(column - 1))
        return column;
    return column == 1 ? nextInSight(*header(), 0) + 1 : 0;
}

void ReportList::showFont()
{
    QFont shown = parentWidget() != nullptr ? parentWidget()->font() : QFont();
    if (!m_list.FontName.value().isEmpty())
        shown.setFamily(m_list.FontName.value());
    if (m_list.FontSize.value() > 0)
        shown.setPointSizeF(m_list.FontSize.value());
    setFont(shown);
    scheduleDelayedItemsLayout();
}

/// A wait that lasts a moment must not make the lists flicker: their ground stays, grey comes later.
void ReportList::keepGround()
{
    QPalette own = palette();
    if (own.color(QPalette::Disabled, QPalette::Base) == own.color(QPalette::Active, QPalette::Base))
        return;
    own.setColor(QPalette::Disabled, QPalette::Base, own.color(QPalette::Active, QPalette::Base));
    setPalette(own);
}

void ReportList::setUsable(bool usable)
{
    if (usable) {
        m_greyLater.stop();
        m_greyed = false;
        setEnabled(true);
        giveFocusBack();
        return;
    }
    // A click that never ends counts as none.
    m_pressedRow = 0;
    showSelection();
    keepFocusInMind();
    m_greyLater.start();
    setEnabled(false);
}

void ReportList::setSeen(bool seen)
{
    if (!seen)
        keepFocusInMind();
    setVisible(seen);
    giveFocusBack();
}

/// A widget that is disabled or hidden would hand its focus to the next one. Behind a box the list has the focus of its
/// window only.
void ReportList::keepFocusInMind()
{
    if (window()->focusWidget() != this)
        return;
    m_hadFocus = true;
    clearFocus();
}

/// Once the list can be used again, unless the user went elsewhere meanwhile.
void ReportList::giveFocusBack()
{
    if (!isEnabled() || isHidden() || !std::exchange(m_hadFocus, false))
        return;
    const QWidget* const focused = window()->focusWidget();
    if (focused != nullptr && focused != window())
        return;
    setFocus(Qt::OtherFocusReason);
    tellFocusedRow();
}

/// A screen reader would otherwise hear of the list alone, after each row that was opened.
void ReportList::tellFocusedRow()
{
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(this);
    const QModelIndex current = currentIndex();
    if (!QAccessible::isActive() || face == nullptr || face->tableInterface() == nullptr || !current.isValid())
        return;
    QAccessibleInterface* const cell = face->tableInterface()->cellAt(current.row(), current.column());
    if (cell == nullptr)
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(face->indexOfChild(cell));
    QAccessible::updateAccessibility(&event);
}

int ReportList::keyColumn() const
{
    int first = 0;
    for (int column = m_list.columns(); column >= 1; --column) {
        if (isColumnHidden(column - 1))
            continue;
        if (m_list.columnText(column) == QStringLiteral("Name"))
            return column - 1;
        first = column - 1;
    }
    return first;
}

} // namespace orvantine
