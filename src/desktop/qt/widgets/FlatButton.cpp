#include "desktop/qt/widgets/FlatButton.h"

#include "desktop/qt/widgets/Theme.h"

#include <QEnterEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>

namespace orvantine {

namespace {

/// What every control that acts as a button has in common.
/// A button without a handler cannot be pressed, whatever its control says.
template <class C>
void follow(Bindings& bindings, FlatButton& button, C& control, const QString& name)
{
    button.setObjectName(control.fullName());
    button.setAccessibleName(name);
    bindings.follow(control.Visible, [&button](bool visible) { button.setVisible(visible); });
    bindings.follow(control.Enabled, [&button, &control](bool enabled) { button.enable(enabled && control.Click); });
    bindings.follow(control.ToolTipText,
                    [&button, name](const QString& tip) { button.setToolTip(tip.isEmpty() ? name : tip); });
    control.SetFocus = [target = QPointer<FlatButton>(&button)] {
        if (target)
            target->setFocus(Qt::OtherFocusReason);
    };
}

} // namespace

FlatButton::FlatButton(Form form, int side, QWidget* parent) : QAbstractButton(parent), m_form(form), m_side(side)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void FlatButton::enable(bool enabled)
{
    if (!enabled && hasFocus() && m_partner != nullptr && m_partner->isEnabled())
        m_partner->setFocus(Qt::OtherFocusReason);
    setEnabled(enabled);
}

void FlatButton::setIconName(const QString& name)
{
    m_iconName = name;
    update();
}

void FlatButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const double radius = m_form == Form::Strong ? area.height() / 2 : Theme::CornerRadius;
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    const QColor window = palette().color(QPalette::Window);

    QColor ground = strong() ? accent : Qt::transparent;
    if (isEnabled() && isDown())
        ground = Theme::mix(strong() ? accent : window, palette().color(QPalette::WindowText), 0.22);
    else if (isEnabled() && underMouse())
        ground = Theme::mix(strong() ? accent : window, palette().color(QPalette::WindowText), 0.10);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(area, radius, radius);
    if (hasFocus()) {
        painter.setPen(QPen(strong() ? palette().color(QPalette::WindowText) : accent, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(area, radius, radius);
    }
    drawFace(painter, rect());
}

void FlatButton::drawFace(QPainter& painter, const QRect& area)
{
    const int side = m_side >= 34 ? 22 : 16;
    QRect place(0, 0, side, side);
    place.moveCenter(area.center());
    const QIcon shown = Theme::icon(m_iconName);
    if (!strong()) {
        shown.paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
        return;
    }
    // On the accent colour the icon takes the colour of highlighted text.
    const double ratio = devicePixelRatioF();
    QPixmap face(place.size() * ratio);
    face.setDevicePixelRatio(ratio);
    face.fill(Qt::transparent);
    QPainter inner(&face);
    shown.paint(&inner, QRect(QPoint(), place.size()));
    inner.setCompositionMode(QPainter::CompositionMode_SourceIn);
    inner.fillRect(QRect(QPoint(), place.size()), palette().color(QPalette::Active, QPalette::HighlightedText));
    inner.end();
    painter.drawPixmap(place, face);
}

void FlatButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void FlatButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

void FlatButton::changeEvent(QEvent* event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::PaletteChange)
        update();
}

ControlButton::ControlButton(PictureBox& control, Form form, int side, const QString& name, const QString& icon,
                             QWidget* parent)
    : FlatButton(form, side, parent), m_tip(control.ToolTipText)
{
    setIconName(icon);
    follow(m_bindings, *this, control, name);
    connect(this, &QAbstractButton::clicked, this, [&control] {
        if (control.Click)
            control.Click();
    });
}

ControlButton::ControlButton(Button& control, int side, const QString& name, const QString& icon, QWidget* parent)
    : FlatButton(Form::Flat, side, parent), m_tip(control.ToolTipText)
{
    setIconName(icon);
    follow(m_bindings, *this, control, name);
    connect(this, &QAbstractButton::clicked, this, [&control] {
        if (control.Click)
            control.Click();
    });
}

void ControlButton::setMeaning(const QString& name, const QString& icon)
{
    setIconName(icon);
    setAccessibleName(name);
    if (m_tip.value().isEmpty())
        setToolTip(name);
}

DiscButton::DiscButton(PictureBox& control, const QString& name, QWidget* parent) : FlatButton(Form::Flat, 44, parent)
{
    follow(m_bindings, *this, control, name);
    connect(this, &QAbstractButton::clicked, this, [&control] {
        if (control.Click)
            control.Click();
    });
}

void DiscButton::setLook(Look look)
{
    m_look = look;
    update();
}

void DiscButton::drawFace(QPainter& painter, const QRect& area)
{
    const QColor window = palette().color(QPalette::Window);
    const QColor text = palette().color(QPalette::WindowText);
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    const double strength = isEnabled() ? 1.0 : 0.45;
    const bool running = m_look != Look::Still;
    const QColor edge = Theme::mix(window, running ? accent : text, 0.75 * strength);
    const QColor face =
        Theme::mix(window, m_look == Look::Playing ? accent : text, (m_look == Look::Playing ? 0.55 : 0.22) * strength);

    const QPointF middle = QRectF(area).center();
    const double radius = area.height() / 2.0 - 5;
    painter.setPen(QPen(edge, 1.4));
    painter.setBrush(face);
    painter.drawEllipse(middle, radius, radius);

    if (m_look == Look::Paused) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(edge);
        const QRectF bar(0, 0, radius * 0.28, radius * 1.1);
        for (const double side : {-1.0, 1.0})
            painter.drawRect(bar.translated(middle - bar.center() + QPointF(side * radius * 0.3, 0)));
        return;
    }

    // Two glints, as light falls on a disc.
    QPainterPath glints;
    const QRectF outer(middle.x() - radius + 1.5, middle.y() - radius + 1.5, 2 * radius - 3, 2 * radius - 3);
    for (const double start : {25.0, 205.0}) {
        glints.moveTo(middle);
        glints.arcTo(outer, start, 38);
        glints.closeSubpath();
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::mix(face, Theme::isDark(palette()) ? text : Qt::white, 0.45 * strength));
    painter.drawPath(glints);

    painter.setPen(QPen(edge, 1.2));
    painter.setBrush(Theme::mix(window, text, 0.06));
    painter.drawEllipse(middle, radius * 0.38, radius * 0.38);
    painter.setBrush(window);
    painter.drawEllipse(middle, radius * 0.14, radius * 0.14);
}

} // namespace orvantine
