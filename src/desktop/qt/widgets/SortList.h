#pragma once

#include <QBasicTimer>
#include <QListWidget>

#include <functional>

namespace orvantine {

/// A list whose lines are put into another order: drawn with the mouse, or moved with Alt and the up and down keys.
/// While a line is drawn, a mark shows where it would go; Escape lets it go where it was. The parts of a line, divided
/// by tabs, stand in columns: name, path, number.
class SortList final : public QListWidget
{
public:
    explicit SortList(QWidget* parent);

    /// A line is to stand in another place, both 0-based, in the order as it will be.
    std::function<void(int from, int to)> Moved = [](int, int) {};

    [[nodiscard]] bool isDrawn() const { return m_drawn; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    class Painter;

    /// The gap that is nearest to a height: 0 above the first line, count() below the last.
    [[nodiscard]] int gapAt(int y) const;
    void drawTo(int y);
    void letGo();

    /// -1 for none.
    int m_pressed = -1;
    QPoint m_pressedAt;
    bool m_drawn = false;
    int m_gap = 0;
    int m_mouseY = 0;
    /// Runs while the mouse is above or below the lines that are seen.
    QBasicTimer m_scroll;
};

} // namespace orvantine
