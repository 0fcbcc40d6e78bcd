#pragma once

#include <QWidget>

#include <functional>

namespace orvantine {

/// A softly cornered area that stands a little off the window's ground.
class Card final : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// An icon of the icon set beside a text.
class IconView final : public QWidget
{
public:
    IconView(const QString& name, int side, QWidget* parent);

    void setIconName(const QString& name);
    [[nodiscard]] const QString& iconName() const { return m_name; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
};

/// A few letters in a frame: "MP3".
class Badge final : public QWidget
{
public:
    Badge(const QString& text, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    std::function<void()> DoubleClicked = [] {};

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QString m_text;
};

/// Turns while it runs; costs nothing otherwise.
class Spinner final : public QWidget
{
public:
    explicit Spinner(QWidget* parent);

    void setRunning(bool running);
    [[nodiscard]] QSize sizeHint() const override { return {36, 36}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    int m_timer = 0;
    int m_step = 0;
};

} // namespace orvantine
