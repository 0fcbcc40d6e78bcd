#include "desktop/qt/window/PositionRow.h"

#include "app/Root.h"
#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/widgets/Theme.h"
#include "playback/Position.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Step = 5;
constexpr int Page = 30;
constexpr int Knob = 10;
constexpr int Groove = 4;
constexpr int LeastWidth = 60;
/// The icon of the line above.
constexpr int Indent = 16 + Theme::Gap;

} // namespace

SeekBar::SeekBar(QWidget* parent) : QSlider(Qt::Horizontal, parent)
{
    setSingleStep(Step);
    setPageStep(Page);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setAccessibleName(u"Position im Titel"_s);
    setToolTip(u"Position im Titel (Pfeiltasten: 5 Sekunden, Bild auf und Bild ab: 30 Sekunden)"_s);
    connect(this, &QSlider::valueChanged, this, [this](int seconds) {
        if (!m_showing && !isSliderDown())
            Wished(seconds);
    });
}

void SeekBar::show(int seconds, int length)
{
    if (length != maximum())
        setSliderDown(false);
    if (isSliderDown())
        return;
    m_showing = true;
    setRange(0, length);
    setValue(seconds);
    m_showing = false;
}

QSize SeekBar::sizeHint() const
{
    return {2 * LeastWidth, Knob + 4};
}

QSize SeekBar::minimumSizeHint() const
{
    return {LeastWidth, Knob + 4};
}

void SeekBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const bool near = underMouse() || hasFocus() || isSliderDown();
    const QColor full = palette().color(QPalette::Highlight);
    const double middle = height() / 2.0;
    const double room = width() - Knob;
    const double done = maximum() > 0 ? room * sliderPosition() / maximum() : 0;
    const QRectF groove(Knob / 2.0, middle - Groove / 2.0, room, Groove);
    painter.setBrush(Theme::mix(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.25));
    painter.drawRoundedRect(groove, Groove / 2.0, Groove / 2.0);
    painter.setBrush(full);
    painter.drawRoundedRect(QRectF(groove.topLeft(), QSizeF(done, Groove)), Groove / 2.0, Groove / 2.0);
    if (!near)
        return;
    if (hasFocus())
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    painter.drawEllipse(QPointF(groove.left() + done, middle), Knob / 2.0 - 0.5, Knob / 2.0 - 0.5);
}

void SeekBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    setSliderDown(true);
    hold(event->pos().x());
}

void SeekBar::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        hold(event->pos().x());
}

void SeekBar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isSliderDown())
        return;
    const int seconds = sliderPosition();
    setSliderDown(false);
    QToolTip::hideText();
    Wished(seconds);
}

void SeekBar::wheelEvent(QWheelEvent* event)
{
    constexpr int Notch = 120;
    event->accept();
    const QPoint turned = event->angleDelta();
    m_turned += turned.y() != 0 ? turned.y() : -turned.x();
    const int notches = m_turned / Notch;
    m_turned %= Notch;
    if (notches != 0 && !isSliderDown())
        setValue(value() + notches * Step);
}

void SeekBar::focusInEvent(QFocusEvent* event)
{
    setAccessibleDescription(u"%1 von %2"_s.arg(positionText(value()), positionText(maximum())));
    QSlider::focusInEvent(event);
}

int SeekBar::secondAt(int x) const
{
    const double share = std::clamp((x - Knob / 2.0) / std::max(1, width() - Knob), 0.0, 1.0);
    return static_cast<int>(std::lround(share * maximum()));
}

void SeekBar::hold(int x)
{
    const int seconds = secondAt(x);
    setSliderPosition(seconds);
    update();
    Held(seconds);
    QToolTip::showText(mapToGlobal(QPoint(x, -2 * height())), positionText(seconds), this);
}

PositionRow::PositionRow(Root& root, QWidget* parent)
    : QWidget(parent),
      m_root(root),
      m_elapsed(new TextLabel(TextLabel::Weight::Dim, this)),
      m_bar(new SeekBar(this)),
      m_length(new TextLabel(TextLabel::Weight::Dim, this))
{
    setObjectName(u"position"_s);
    m_elapsed->setObjectName(u"elapsed"_s);
    m_bar->setObjectName(u"Mediaplayer"_s);
    m_length->setObjectName(u"length"_s);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(Indent, 0, 0, 0);
    layout->setSpacing(Theme::Gap);
    for (TextLabel* const time : {m_elapsed, m_length})
        time->setWhole(true);
    layout->addWidget(m_elapsed);
    layout->addWidget(m_bar, 1);
    layout->addWidget(m_length);

    m_bar->Wished = [this](int seconds) {
        seekTo(m_root, seconds);
        look();
    };
    m_bar->Held = [this](int seconds) { m_elapsed->setText(positionText(seconds)); };
    m_second.setSingleShot(true);
    m_second.setTimerType(Qt::CoarseTimer);
    connect(&m_second, &QTimer::timeout, this, [this] { look(); });
    MediaPlayer& player = m_root.services.mediaplayer;
    player.PositionChange = [this] { look(); };
    // The length of a title is known some time after it began.
    m_mediaChange = player.MediaChange;
    player.MediaChange = [this, mediaChange = m_mediaChange] {
        mediaChange();
        look();
    };
    m_bindings.watch(root.playback, [this] { look(); });
    m_bindings.watch(root.tCopyStatus.Caption, [this] { look(); });
    m_bindings.watch(root.pCopyStatus.Visible, [this] { look(); });
    look();
}

PositionRow::~PositionRow()
{
    m_root.services.mediaplayer.PositionChange = [] {};
    m_root.services.mediaplayer.MediaChange = m_mediaChange;
}

void PositionRow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    look();
}

void PositionRow::look()
{
    const std::optional<Position> place = positionOf(m_root);
    // What is held of one title does not count for the next.
    if (const QString title = m_root.services.mediaplayer.currentSourceURL(); title != std::exchange(m_title, title))
        m_bar->setSliderDown(false);
    // The line about copying takes the room.
    const bool copies = m_root.pCopyStatus.Visible.value() && !m_root.tCopyStatus.Caption.value().isEmpty();
    if (place) {
        m_bar->show(static_cast<int>(place->seconds), static_cast<int>(place->length));
        if (!m_bar->isSliderDown())
            m_elapsed->setText(positionText(place->seconds));
        m_length->setText(positionText(place->length));
        // So that a tenth second does not move the bar.
        m_elapsed->setMinimumWidth(m_length->sizeHint().width());
    }
    // Between two titles it stays for who uses its keys: they would go to what is next to it.
    const bool used = m_bar->hasFocus() && m_root.playback.value() != PlaybackStatus::Stopped;
    if (!place)
        m_bar->show(0, 0);
    setVisible((place || used) && !copies);
    constexpr double Second = 1000;
    if (m_root.playback.value() != PlaybackStatus::Playing || !parentWidget()->isVisible())
        return m_second.stop();
    // A little behind the change of the shown second.
    const double over = place ? place->seconds - std::floor(place->seconds) : 0;
    m_second.start(static_cast<int>((1 - over) * Second) + 20);
}

} // namespace orvantine
