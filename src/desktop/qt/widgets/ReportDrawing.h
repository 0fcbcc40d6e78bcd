#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace orvantine {

class ReportList;

/// Draws the cells of a report list: icon, text in the row's colour. The row's ground is the list's.
class ReportCells final : public QStyledItemDelegate
{
public:
    explicit ReportCells(ReportList& view);

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    /// The colours of a list in use: one that is out of reach for a moment looks as before.
    [[nodiscard]] QPalette groundPalette() const;
    /// A track number of many digits stands without its picture: cut, it would tell nothing.
    [[nodiscard]] bool leavesRoom(const QRect& area, const QModelIndex& index) const;
    /// Tells in words what the colour tells, which may be that of a column out of sight. Gives where the words begin.
    [[nodiscard]] int paintMissing(QPainter& painter, const QRect& area) const;

    /// Shows that the row plays or is paused. Gives where the sign begins.
    [[nodiscard]] int paintPlaying(QPainter& painter, const QRect& area, bool paused) const;

    const ReportList& m_view;
};

/// Flat column heads whose texts stand over those of the cells.
class ReportHead final : public QHeaderView
{
public:
    explicit ReportHead(ReportList& view);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    ReportList& m_view;
};

} // namespace orvantine
