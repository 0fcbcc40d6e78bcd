#include "desktop/qt/window/PlayerBar.h"

#include "app/Root.h"
#include "desktop/qt/widgets/FlatButton.h"
#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/widgets/Surfaces.h"
#include "desktop/qt/widgets/Theme.h"
#include "desktop/qt/widgets/VolumeSlider.h"
#include "desktop/qt/window/PositionRow.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int SideButton = 34;
constexpr int MainButton = 40;
constexpr int VolumeWidth = 110;
constexpr int LineGap = 2;

/// A line of text with a small icon before it, seen while the panel control is.
QWidget* makeLine(PictureBox& panel, Label& text, IconView* icon, Bindings& bindings, QWidget* parent)
{
    auto* const line = new QWidget(parent);
    line->setObjectName(panel.fullName());
    auto* const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Theme::Gap);
    layout->addWidget(icon);
    layout->addWidget(new ControlLabel(text, TextLabel::Weight::Normal, line), 1);
    const auto show = [line, &panel, &text] {
        line->setVisible(panel.Visible.value() && !text.Caption.value().isEmpty());
    };
    bindings.watch(panel.Visible, show);
    bindings.watch(text.Caption, show);
    show();
    return line;
}

} // namespace

PlayerBar::PlayerBar(Root& root, QWidget* parent) : QWidget(parent), m_root(root)
{
    using enum FlatButton::Form;
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(Theme::Margin, Theme::Gap, Theme::Margin, Theme::Gap);
    layout->setSpacing(4);
    auto* const disc = new DiscButton(root.pSymbole, u"Playliste wiedergeben"_s, this);
    layout->addWidget(disc);
    layout->addSpacing(Theme::Gap);
    layout->addWidget(
        new ControlButton(root.pPlayBack, Flat, SideButton, u"Vorheriger Titel"_s, u"media-skip-backward"_s, this));
    auto* const play = new ControlButton(root.pSoundPlayer, Strong, MainButton, u"Wiedergabe starten"_s,
                                         u"media-playback-start"_s, this);
    layout->addWidget(play);
    auto* const pause =
        new ControlButton(root.pPausePlayer, Strong, MainButton, u"Pause"_s, u"media-playback-pause"_s, this);
    layout->addWidget(pause);
    play->setFocusPartner(pause);
    pause->setFocusPartner(play);
    layout->addWidget(
        new ControlButton(root.pStopPlayer, Flat, SideButton, u"Wiedergabe stoppen"_s, u"media-playback-stop"_s, this));
    layout->addWidget(
        new ControlButton(root.pPlayForward, Flat, SideButton, u"Nächster Titel"_s, u"media-skip-forward"_s, this));
    layout->addSpacing(Theme::Margin);
    m_status = makeStatus();
    keepRoom();
    layout->addWidget(m_status, 1);
    layout->addSpacing(Theme::Margin);
    layout->addWidget(makeVolume());

    // The button presses the command that is offered: while the player plays on by another way, that one stops.
    const auto showMeaning = [pause, &root] {
        const PlaybackStatus status = root.playback;
        if (!root.mnuSoundplayer[4].Enabled.value() || status == PlaybackStatus::Stopped)
            pause->setMeaning(u"Pause"_s, u"media-playback-pause"_s);
        else if (status == PlaybackStatus::Paused)
            pause->setMeaning(u"Weiterspielen"_s, u"media-playback-start"_s);
        else
            pause->setMeaning(u"Wiedergabe stoppen"_s, u"media-playback-stop"_s);
    };
    m_bindings.watch(root.mnuSoundplayer[4].Enabled, showMeaning);
    m_bindings.watch(root.playback, showMeaning);
    showMeaning();
    m_bindings.follow(root.playback, [disc](PlaybackStatus status) {
        disc->setLook(status == PlaybackStatus::Playing  ? DiscButton::Look::Playing
                      : status == PlaybackStatus::Paused ? DiscButton::Look::Paused
                                                         : DiscButton::Look::Still);
    });
}

QWidget* PlayerBar::makeStatus()
{
    auto* const status = new QWidget(this);
    auto* const layout = new QVBoxLayout(status);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(LineGap);
    layout->addStretch();
    auto* const sign = new IconView(u"media-playback-start"_s, 16, status);
    sign->setObjectName(u"playback"_s);
    auto* const title = makeLine(m_root.pDateiname, m_root.tDateiname, sign, m_bindings, status);
    auto* const held = new TextLabel(TextLabel::Weight::Dim, title);
    held->setObjectName(u"held"_s);
    held->setText(u"Angehalten"_s);
    held->setWhole(true);
    title->layout()->addWidget(held);
    m_bindings.follow(m_root.playback, [sign, held](PlaybackStatus playback) {
        const bool paused = playback == PlaybackStatus::Paused;
        sign->setIconName(paused ? u"media-playback-pause"_s : u"media-playback-start"_s);
        held->setVisible(paused);
    });
    layout->addWidget(title);
    layout->addWidget(new PositionRow(m_root, status));
    layout->addWidget(makeLine(m_root.pCopyStatus, m_root.tCopyStatus, new IconView(u"document-export"_s, 16, status),
                               m_bindings, status));
    layout->addStretch();
    return status;
}

QWidget* PlayerBar::makeVolume()
{
    auto* const panel = new QWidget(this);
    panel->setObjectName(m_root.pVolume.fullName());
    auto* const layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Theme::Gap);
    auto* const slider = new VolumeSlider(m_root.sVolume, panel);
    slider->setAccessibleName(u"Lautstärke"_s);
    slider->setToolTip(u"Lautstärke"_s);
    slider->setFixedWidth(VolumeWidth);
    layout->addWidget(new IconView(u"audio-volume-high"_s, 16, panel));
    layout->addWidget(slider);
    m_bindings.follow(m_root.pVolume.Visible, [panel](bool visible) { panel->setVisible(visible); });
    return panel;
}

/// For a title and its position, in any size of letters, so that the lists do not move when something plays.
void PlayerBar::keepRoom()
{
    int room = LineGap;
    for (const QString& line : {m_root.pDateiname.fullName(), u"position"_s})
        room += m_status->findChild<QWidget*>(line)->sizeHint().height();
    m_status->setMinimumHeight(room);
}

void PlayerBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // The lines get the letters behind this one.
    if (event->type() == QEvent::FontChange && m_status != nullptr)
        QMetaObject::invokeMethod(this, &PlayerBar::keepRoom, Qt::QueuedConnection);
}

void PlayerBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor window = palette().color(QPalette::Window);
    painter.fillRect(rect(), Theme::mix(window, palette().color(QPalette::WindowText), 0.04));
    painter.fillRect(0, 0, width(), 1, Theme::lineColor(palette()));
}

} // namespace orvantine
