#pragma once

#include "platform/Bindings.h"

#include <QSlider>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace orvantine {

struct Root;
class TextLabel;

/// A thin bar over the seconds of a title. It goes to where it is pressed; a drag is over when the button is let go.
class SeekBar final : public QSlider
{
public:
    explicit SeekBar(QWidget* parent);

    /// Shows that place, unless the user holds the bar.
    void show(int seconds, int length);
    /// The user wants to hear that second.
    std::function<void(int seconds)> Wished = [](int) {};
    /// The place that the user would go to, while the bar is held.
    std::function<void(int seconds)> Held = [](int) {};

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int secondAt(int x) const;
    void hold(int x);

    bool m_showing = false;
    int m_turned = 0;
};

/// Where the title that plays or is paused is, and how long it is; hidden while nothing runs or something is copied. It
/// looks at the player once a second, as long as it can be seen.
class PositionRow final : public QWidget
{
public:
    PositionRow(Root& root, QWidget* parent);
    ~PositionRow() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void look();

    Root& m_root;
    TextLabel* m_elapsed;
    SeekBar* m_bar;
    TextLabel* m_length;
    QTimer m_second;
    /// What it did before this row looked too.
    std::function<void()> m_mediaChange;
    QString m_title;
    Bindings m_bindings;
};

} // namespace orvantine
