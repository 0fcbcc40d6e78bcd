#include "desktop/qt/widgets/VolumeSlider.h"

#include <QMouseEvent>
#include <QStyleOptionSlider>
#include <QToolTip>

namespace orvantine {

VolumeSlider::VolumeSlider(Slider& control, QWidget* parent) : QSlider(Qt::Horizontal, parent), m_control(control)
{
    setObjectName(control.fullName());
    setSingleStep(1);
    setPageStep(1);
    connect(this, &QSlider::valueChanged, this, [this](int value) {
        if (!m_showing)
            scroll(value);
    });
    m_bindings.follow(control.Min, [this](int least) { setMinimum(least); });
    m_bindings.follow(control.Max, [this](int most) { setMaximum(most); });
    m_bindings.follow(control.Value, [this](int value) {
        m_showing = true;
        setValue(value);
        m_showing = false;
    });
    m_bindings.follow(control.Enabled, [this](bool enabled) { setEnabled(enabled); });
    m_bindings.follow(control.Visible, [this](bool visible) { setVisible(visible); });
    control.SetFocus = [this] { setFocus(Qt::OtherFocusReason); };
}

void VolumeSlider::mousePressEvent(QMouseEvent* event)
{
    if (m_control.MouseDown)
        m_control.MouseDown();
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect thumb = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    if (event->button() == Qt::LeftButton && !thumb.contains(event->pos()))
        setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), event->pos().x() - thumb.width() / 2,
                                                 width() - thumb.width()));
    QSlider::mousePressEvent(event);
}

void VolumeSlider::mouseReleaseEvent(QMouseEvent* event)
{
    QSlider::mouseReleaseEvent(event);
    if (m_control.Click)
        m_control.Click();
}

void VolumeSlider::wheelEvent(QWheelEvent* event)
{
    refresh();
    QSlider::wheelEvent(event);
}

void VolumeSlider::keyPressEvent(QKeyEvent* event)
{
    refresh();
    QSlider::keyPressEvent(event);
}

void VolumeSlider::refresh()
{
    if (m_control.Refresh)
        m_control.Refresh();
}

void VolumeSlider::scroll(int value)
{
    m_control.Value = value;
    if (m_control.Scroll)
        m_control.Scroll();
    if (isSliderDown() && !m_control.Text.value().isEmpty())
        QToolTip::showText(mapToGlobal(QPoint(width() / 2, -height())), m_control.Text.value(), this);
}

} // namespace orvantine
