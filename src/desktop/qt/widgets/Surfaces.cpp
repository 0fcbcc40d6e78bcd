#include "desktop/qt/widgets/Surfaces.h"

#include "desktop/qt/widgets/Theme.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace orvantine {

namespace {

constexpr int Spokes = 10;
constexpr int MillisecondsPerSpoke = 90;

} // namespace

void Card::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool dark = Theme::isDark(palette());
    const QColor window = palette().color(QPalette::Active, QPalette::Window);
    const QColor base = palette().color(QPalette::Active, QPalette::Base);
    painter.setPen(Theme::lineColor(palette()));
    painter.setBrush(dark ? Theme::mix(window, palette().color(QPalette::WindowText), 0.06)
                          : Theme::mix(window, base, 0.6));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::CornerRadius, Theme::CornerRadius);
}

IconView::IconView(const QString& name, int side, QWidget* parent) : QWidget(parent), m_name(name)
{
    setFixedSize(side, side);
}

void IconView::setIconName(const QString& name)
{
    m_name = name;
    update();
}

void IconView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Theme::icon(m_name).paint(&painter, rect());
}

Badge::Badge(const QString& text, QWidget* parent) : QWidget(parent), m_text(text)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Badge::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(m_text) + 12, metrics.height() + 4};
}

void Badge::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    const QColor text = Theme::mix(accent, palette().color(QPalette::WindowText), 0.35);
    painter.setPen(QPen(text, 1));
    painter.setBrush(Theme::mix(palette().color(QPalette::Window), accent, 0.12));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.drawText(rect(), Qt::AlignCenter, m_text);
}

void Badge::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        DoubleClicked();
}

Spinner::Spinner(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Spinner::setRunning(bool running)
{
    if (running == (m_timer != 0))
        return;
    if (running) {
        m_timer = startTimer(MillisecondsPerSpoke);
    } else {
        killTimer(m_timer);
        m_timer = 0;
    }
    update();
}

void Spinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    const QColor window = palette().color(QPalette::Window);
    const double radius = std::min(width(), height()) / 2.0 - 4;
    painter.setPen(Qt::NoPen);
    for (int spoke = 0; spoke < Spokes; ++spoke) {
        const double angle = 2 * std::numbers::pi * spoke / Spokes;
        const int age = (m_step - spoke + Spokes) % Spokes;
        painter.setBrush(Theme::mix(accent, window, static_cast<double>(age) / Spokes));
        painter.drawEllipse(QPointF(radius * std::sin(angle), -radius * std::cos(angle)), 3, 3);
    }
}

void Spinner::timerEvent(QTimerEvent*)
{
    m_step = (m_step + 1) % Spokes;
    if (isVisible())
        update();
}

} // namespace orvantine
