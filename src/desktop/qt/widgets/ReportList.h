#pragma once

#include "platform/Bindings.h"
#include "platform/ListView.h"

#include <QTimer>
#include <QTreeView>

#include <functional>

namespace orvantine {

/// Shows a report list. Rows, selection and widths are the list's; what the user does with them is told to its
/// handlers. Programmatic changes call no handler.
class ReportList final : public QTreeView
{
public:
    explicit ReportList(ListView& list, QWidget* parent = nullptr);
    ~ReportList() override;

    [[nodiscard]] ListView& list() const { return m_list; }
    /// A column whose texts are numbers stands to the right. Counted from 1.
    void setNumberColumn(int column) { m_numberColumn = column; }
    [[nodiscard]] int numberColumn() const { return m_numberColumn; }
    /// The column that tells what a row is: that of the names, else the first in sight. Counted from 0.
    [[nodiscard]] int keyColumn() const;
    /// True while the rows are drawn as out of use, some time after the list was disabled, or because they are shown
    /// and no more.
    [[nodiscard]] bool isGreyed() const { return m_greyed || m_list.Ghosted.value(); }
    /// The column in sight that the rows are sorted by, counted from 1; 0 for none.
    [[nodiscard]] int sortedColumn() const;
    /// The user has let go of the edge of a column.
    void endDrawing();
    /// The row under a point of the viewport becomes the selected one, as by a click without its handler.
    void selectRowAt(const QPoint& point);
    /// Opens the pop-up menu of the row that has just been selected, at a point of the screen. Null for no menu.
    std::function<void(const QPoint&)> PopUp;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 80}; }

private:
    void showSelection();
    /// The pressed row leaves the list as a file; the click that it might have become is none.
    void dragFile();
    /// Neither a command nor a modal window keeps the user from the list.
    [[nodiscard]] bool isReachable() const;
    [[nodiscard]] bool takesDrop(const QDropEvent& event) const;
    /// True if the current row was another one than the selected one, which it is now.
    bool takeSelection();
    void showWidths();
    void fillRoom();
    void showDropTarget(bool shown);
    void noteWidth(int section, int pixels);
    void tellDrawn(int section);
    void showFont();
    void keepGround();
    void setUsable(bool usable);
    void setSeen(bool seen);
    void keepFocusInMind();
    void giveFocusBack();
    void tellFocusedRow();

    ListView& m_list;
    Bindings m_bindings;
    QTimer m_greyLater;
    QTimer m_fillLater;
    int m_numberColumn = 0;
    bool m_applyingWidths = false;
    /// Of the viewport, when the column of the names took its room.
    int m_filledWidth = 0;
    /// The section whose edge the user draws; none below 0.
    int m_drawn = -1;
    /// Something is dragged over the list that it would take.
    bool m_dropTarget = false;
    bool m_hadFocus = false;
    /// The row under the mouse while its button is down; 0 for none.
    int m_pressedRow = 0;
    QPoint m_pressedAt;
    bool m_greyed = false;
};

} // namespace orvantine
