#pragma once

#include "platform/Bindings.h"
#include "platform/Controls.h"

#include <QSlider>

namespace orvantine {

/// A slider whose thumb jumps to where it is pressed; its text stands beside the thumb while it is dragged.
class VolumeSlider final : public QSlider
{
public:
    VolumeSlider(Slider& control, QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// A step goes on from the level that is heard.
    void refresh();
    void scroll(int value);

    Slider& m_control;
    bool m_showing = false;
    Bindings m_bindings;
};

} // namespace orvantine
