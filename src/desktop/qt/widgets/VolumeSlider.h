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

private:
    void scroll(int value);

    Slider& m_control;
    bool m_showing = false;
    Bindings m_bindings;
};

} // namespace orvantine
