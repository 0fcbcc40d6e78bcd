#include "desktop/qt/widgets/SortList.h"

#include "desktop/qt/widgets/Theme.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int LinePadding = 6;
constexpr int ScrollMilliseconds = 60;
constexpr int MarkHeight = 3;

QColor selectionGround(const QPalette& palette, bool active)
{
    return Theme::mix(palette.color(QPalette::Active, QPalette::Base),
                      palette.color(QPalette::Active, QPalette::Highlight), active ? 0.32 : 0.16);
}

} // namespace

/// Draws the parts of a line beside each other.
class SortList::Painter final : public QStyledItemDelegate
{
public:
    explicit Painter(SortList& view) : QStyledItemDelegate(&view), m_view(view) {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {40, QFontMetrics(m_view.font()).height() + 2 * LinePadding};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QPalette& palette = m_view.palette();
        const QRect row = option.rect;
        if (index.row() == m_view.currentRow()) {
            const bool active = m_view.hasFocus() && m_view.isActiveWindow();
            painter->fillRect(row, selectionGround(palette, active));
            painter->fillRect(QRect(row.left(), row.top(), active ? 3 : 2, row.height()),
                              palette.color(QPalette::Active, QPalette::Highlight));
        }
        painter->fillRect(QRect(row.left(), row.bottom(), row.width(), 1), Theme::lineColor(palette));

        const QString line = index.data().toString();
        const bool usable = m_view.isEnabled();
        const QColor text = palette.color(usable ? QPalette::Active : QPalette::Disabled, QPalette::Text);
        const QColor dim = Theme::mix(text, palette.color(QPalette::Active, QPalette::Base), 0.4);
        painter->setFont(m_view.font());
        const QFontMetrics metrics(m_view.font());
        const int numberWidth = metrics.horizontalAdvance(u"000"_s) + LinePadding;
        QRect area = row.adjusted(2 * LinePadding, 0, -2 * LinePadding, 0);
        QRect number = area;
        number.setLeft(area.right() - numberWidth);
        area.setRight(number.left() - LinePadding);
        QRect name = area;
        name.setWidth(area.width() * 2 / 5);
        area.setLeft(name.right() + 2 * LinePadding);

        const auto draw = [&](const QRect& place, const QColor& color, Qt::Alignment side, Qt::TextElideMode elide,
                              const QString& part) {
            painter->setPen(color);
            painter->drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                              metrics.elidedText(part, elide, place.width()));
        };
        draw(name, text, Qt::AlignLeft, Qt::ElideRight, line.section(u'\t', 0, 0));
        draw(area, dim, Qt::AlignLeft, Qt::ElideMiddle, line.section(u'\t', 1, -2));
        draw(number, dim, Qt::AlignRight, Qt::ElideRight, line.section(u'\t', -1));
    }

private:
    SortList& m_view;
};

SortList::SortList(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new Painter(*this));
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAutoScroll(true);
    setMouseTracking(false);
    setAccessibleDescription(u"Alt und Pfeil auf oder Pfeil ab verschieben den markierten Eintrag."_s);
    // A screen reader reads the name and the place instead of a line full of tabs.
    connect(model(), &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& changed) {
        QListWidgetItem& line = *itemFromIndex(changed);
        const QString name = u"%1, Platz %2"_s.arg(line.text().section(u'\t', 0, 0)).arg(changed.row() + 1);
        if (line.data(Qt::AccessibleTextRole).toString() != name)
            line.setData(Qt::AccessibleTextRole, name);
    });
}

void SortList::mousePressEvent(QMouseEvent* event)
{
    QListWidget::mousePressEvent(event);
    letGo();
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = row(itemAt(event->pos()));
    m_pressedAt = event->pos();
}

/// The list's own selecting by drawing is left out: the line under the mouse would become the selected one.
void SortList::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressed < 0 || !event->buttons().testFlag(Qt::LeftButton))
        return;
    if (!m_drawn && (event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
        return;
    if (!m_drawn) {
        m_drawn = true;
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
    drawTo(event->pos().y());
}

void SortList::mouseReleaseEvent(QMouseEvent* event)
{
    const bool drawn = m_drawn && event->button() == Qt::LeftButton;
    const int from = m_pressed;
    const int gap = m_gap;
    QListWidget::mouseReleaseEvent(event);
    letGo();
    // Taken out, the line leaves a place free above the gaps below it.
    const int to = gap > from ? gap - 1 : gap;
    if (drawn && to != from)
        Moved(from, to);
}

void SortList::mouseDoubleClickEvent(QMouseEvent* event)
{
    letGo();
    QListWidget::mouseDoubleClickEvent(event);
}

void SortList::keyPressEvent(QKeyEvent* event)
{
    if (m_drawn && event->key() == Qt::Key_Escape) {
        letGo();
        event->accept();
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int step = event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
    if (modifiers != Qt::AltModifier || step == 0) {
        QListWidget::keyPressEvent(event);
        return;
    }
    const int from = currentRow();
    const int to = from + step;
    if (from >= 0 && to >= 0 && to < count() && !m_drawn)
        Moved(from, to);
    event->accept();
}

void SortList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (!m_drawn || count() == 0)
        return;
    const QRect line = visualItemRect(item(std::min(m_gap, count() - 1)));
    const int middle = m_gap < count() ? line.top() : line.bottom() + 1;
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    const int top = std::clamp(middle - MarkHeight / 2, 0, viewport()->height() - MarkHeight);
    painter.fillRect(QRect(0, top, viewport()->width(), MarkHeight), accent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    painter.drawEllipse(QPointF(MarkHeight, top + MarkHeight / 2.0), MarkHeight + 1, MarkHeight + 1);
}

void SortList::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_scroll.timerId()) {
        QListWidget::timerEvent(event);
        return;
    }
    verticalScrollBar()->setValue(verticalScrollBar()->value() + (m_mouseY < 0 ? -1 : 1));
    drawTo(m_mouseY);
}

void SortList::changeEvent(QEvent* event)
{
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        letGo();
}

void SortList::focusOutEvent(QFocusEvent* event)
{
    letGo();
    QListWidget::focusOutEvent(event);
}

int SortList::gapAt(int y) const
{
    for (int line = 0; line < count(); ++line)
        if (y < visualItemRect(item(line)).center().y())
            return line;
    return count();
}

void SortList::drawTo(int y)
{
    m_mouseY = y;
    m_gap = gapAt(std::clamp(y, 0, viewport()->height()));
    const bool outside = y < 0 || y > viewport()->height();
    if (!outside)
        m_scroll.stop();
    else if (!m_scroll.isActive())
        m_scroll.start(ScrollMilliseconds, this);
    viewport()->update();
}

void SortList::letGo()
{
    m_scroll.stop();
    m_pressed = -1;
    if (!m_drawn)
        return;
    m_drawn = false;
    viewport()->unsetCursor();
    viewport()->update();
}

} // namespace orvantine
