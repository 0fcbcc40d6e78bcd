#include "desktop/qt/widgets/ReportDrawing.h"

#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/widgets/Theme.h"

#include <QPainter>

#include <algorithm>

namespace orvantine {

namespace {

constexpr int RowPadding = 5;
constexpr int IconSize = 16;
/// How far the text of rows that are out of use goes into the ground.
constexpr double GreyPart = 0.62;
constexpr int ArrowSize = 8;

} // namespace

ReportCells::ReportCells(ReportList& view) : QStyledItemDelegate(&view), m_view(view) {}

QSize ReportCells::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {40, std::max(QFontMetrics(m_view.font()).height(), IconSize) + 2 * RowPadding};
}

void ReportCells::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QPalette palette = groundPalette();
    QRect area = option.rect.adjusted(RowPadding, 0, -RowPadding, 0);

    const QString pictureName = index.data(ListView::IconNameRole).toString();
    if (!pictureName.isEmpty() && leavesRoom(area, index)) {
        const QRect place(area.left(), area.center().y() - IconSize / 2 + 1, IconSize, IconSize);
        Theme::listIcon(pictureName)
            .paint(painter, place, Qt::AlignCenter, m_view.isGreyed() ? QIcon::Disabled : QIcon::Normal);
        area.setLeft(place.right() + RowPadding);
    }

    painter->setFont(m_view.font());
    const QColor told = Theme::textColor(static_cast<Color>(index.data(ListView::ColorRole).toUInt()), palette);
    painter->setPen(m_view.isGreyed() ? Theme::mix(told, palette.color(QPalette::Base), GreyPart) : told);
    const bool number = index.column() + 1 == m_view.numberColumn();
    if (index.column() == m_view.keyColumn() && index.data(ListView::MissingRole).toBool())
        area.setRight(paintMissing(*painter, area) - RowPadding);
    const int playing = index.data(ListView::PlayingRole).toInt();
    if (index.column() == m_view.keyColumn() && playing != ListView::NotPlaying) {
        area.setRight(paintPlaying(*painter, area, playing == ListView::IsPaused) - RowPadding);
        QFont font = m_view.font();
        font.setBold(true);
        painter->setFont(font);
    }
    // A path is told apart by its ends.
    const bool path = m_view.list().columnText(index.column() + 1) == QStringLiteral("Path");
    const QString text = painter->fontMetrics().elidedText(index.data().toString(),
                                                           path ? Qt::ElideMiddle : Qt::ElideRight, area.width());
    painter->drawText(area, static_cast<int>((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter), text);
}

QPalette ReportCells::groundPalette() const
{
    QPalette palette = m_view.palette();
    palette.setCurrentColorGroup(QPalette::Active);
    return palette;
}

bool ReportCells::leavesRoom(const QRect& area, const QModelIndex& index) const
{
    if (index.column() == m_view.keyColumn())
        return true;
    const int text = QFontMetrics(m_view.font()).horizontalAdvance(index.data().toString());
    return text <= area.width() - IconSize - RowPadding + 1;
}

int ReportCells::paintMissing(QPainter& painter, const QRect& area) const
{
    const QString words = QStringLiteral("fehlt");
    const int width = painter.fontMetrics().horizontalAdvance(words);
    if (width > area.width() / 2)
        return area.right() + RowPadding;
    const QPalette palette = groundPalette();
    const QColor red = Theme::textColor(Color::DarkRed, palette);
    const QPen before = painter.pen();
    painter.setPen(Theme::mix(red, palette.color(QPalette::Base), m_view.isGreyed() ? GreyPart : 0.25));
    painter.drawText(area, static_cast<int>(Qt::AlignRight | Qt::AlignVCenter), words);
    painter.setPen(before);
    return area.right() - width;
}

int ReportCells::paintPlaying(QPainter& painter, const QRect& area, bool paused) const
{
    if (area.width() < 3 * IconSize)
        return area.right() + RowPadding;
    const QRect place(area.right() - IconSize, area.center().y() - IconSize / 2 + 1, IconSize, IconSize);
    Theme::icon(paused ? QStringLiteral("media-playback-pause") : QStringLiteral("media-playback-start"))
        .paint(&painter, place, Qt::AlignCenter, m_view.isGreyed() ? QIcon::Disabled : QIcon::Normal);
    return place.left();
}

ReportHead::ReportHead(ReportList& view) : QHeaderView(Qt::Horizontal, &view), m_view(view) {}

QSize ReportHead::sizeHint() const
{
    return {QHeaderView::sizeHint().width(), QFontMetrics(font()).height() + 2 * RowPadding};
}

void ReportHead::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    const QColor line = Theme::lineColor(palette());
    painter->fillRect(
        rect, Theme::mix(palette().color(QPalette::Active, QPalette::Base), palette().color(QPalette::Window), 0.55));
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), line);
    painter->fillRect(QRect(rect.right(), rect.top() + 4, 1, rect.height() - 8), line);
    const bool number = section + 1 == m_view.numberColumn();
    QRect area = rect.adjusted(RowPadding, 0, -RowPadding, 0);
    if (section + 1 == m_view.sortedColumn()) {
        const QPointF tip(area.right() - ArrowSize / 2.0, rect.center().y() - ArrowSize / 4.0);
        painter->setPen(Qt::NoPen);
        painter->setBrush(palette().color(QPalette::WindowText));
        painter->drawPolygon(QPolygonF(
            {tip, tip + QPointF(ArrowSize / 2.0, ArrowSize / 2.0), tip + QPointF(-ArrowSize / 2.0, ArrowSize / 2.0)}));
        area.setRight(area.right() - ArrowSize - RowPadding);
    }
    painter->setPen(Theme::dimText(palette()));
    painter->drawText(
        area, static_cast<int>((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter),
        painter->fontMetrics().elidedText(m_view.list().columnText(section + 1), Qt::ElideRight, area.width()));
}

void ReportHead::mouseReleaseEvent(QMouseEvent* event)
{
    QHeaderView::mouseReleaseEvent(event);
    m_view.endDrawing();
}

void ReportHead::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(
        rect(), Theme::mix(palette().color(QPalette::Active, QPalette::Base), palette().color(QPalette::Window), 0.55));
    painter.fillRect(QRect(0, height() - 1, width(), 1), Theme::lineColor(palette()));
    painter.end();
    QHeaderView::paintEvent(event);
}

} // namespace orvantine
