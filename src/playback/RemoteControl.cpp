#include "playback/RemoteControl.h"

#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "platform/FileDirPath.h"
#include "playback/PlaybackState.h"
#include "playback/Position.h"

#include <QCryptographicHash>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr double MicrosecondsOfSecond = 1'000'000;

} // namespace

RemoteControl::RemoteControl(Root& root, std::function<bool()> boxOpen) : m_root(root), m_boxOpen(std::move(boxOpen))
{
    watch();
}

RemoteControl::~RemoteControl()
{
    m_root.Timer2.Tick = m_tick;
    m_root.services.mediaplayer.MediaChange = m_mediaChange;
    m_root.services.mediaplayer.PositionChange = m_positionChange;
}

void RemoteControl::watch()
{
    for (Control* control : std::initializer_list<Control*>{
             &m_root.pSoundPlayer, &m_root.pPausePlayer, &m_root.mnuSoundplayer[1], &m_root.mnuSoundplayer[2],
             &m_root.mnuSoundplayer[3], &m_root.mnuSoundplayer[4], &m_root.mnuWiedergabe})
        m_bindings.watch(control->Enabled, [this] { changed(); });
    for (int mode = 1; mode <= 3; ++mode)
        m_bindings.watch(m_root.mnuWiederholung[mode].Checked, [this] { changed(); });
    m_bindings.watch(m_root.playback, [this] { changed(); });
    m_bindings.watch(m_root.tDateiname.Caption, [this] { changed(); });
    m_bindings.watch(m_root.sVolume.Value, [this] { changed(); });
    m_bindings.watch(m_root.pCovers.Picture, [this] {
        m_filesKnown = false;
        changed();
    });
    const auto rows = [this] {
        m_playlists.reset();
        changed();
    };
    ListView& list = m_root.LListView1;
    m_bindings.watch(list.selection(), [this] { changed(); });
    QObject::connect(&list, &QAbstractItemModel::rowsInserted, &m_receiver, rows);
    QObject::connect(&list, &QAbstractItemModel::rowsRemoved, &m_receiver, rows);
    QObject::connect(&list, &QAbstractItemModel::dataChanged, &m_receiver, rows);
    QObject::connect(&list, &QAbstractItemModel::layoutChanged, &m_receiver, rows);
    QObject::connect(&list, &QAbstractItemModel::modelReset, &m_receiver, rows);

    // The player itself tells of a new title only; whether it plays or is paused is looked at with the housekeeping.
    m_tick = m_root.Timer2.Tick;
    m_root.Timer2.Tick = [this, tick = m_tick] {
        tick();
        changed();
    };
    m_mediaChange = m_root.services.mediaplayer.MediaChange;
    m_root.services.mediaplayer.MediaChange = [this, mediaChange = m_mediaChange] {
        const QString source = m_root.services.mediaplayer.currentSourceURL();
        m_titleKnown = std::exchange(m_changedSource, source) == source;
        mediaChange();
        changed();
    };
    m_positionChange = m_root.services.mediaplayer.PositionChange;
    m_root.services.mediaplayer.PositionChange = [this, positionChange = m_positionChange] {
        positionChange();
        Sought();
    };
}

bool RemoteControl::free() const
{
    return m_root.loaded && !m_root.services.events.ended() && m_root.Tag != u"9"_s && !m_boxOpen() &&
           !m_root.commands.waiting();
}

bool RemoteControl::running() const
{
    return m_root.pPausePlayer.Enabled.value();
}

PlaybackStatus RemoteControl::status() const
{
    return playbackStatus(m_root);
}

std::optional<PlayedTrack> RemoteControl::track() const
{
    const MediaPlayer& player = m_root.services.mediaplayer;
    const QString source = player.currentSourceURL();
    if (status() == PlaybackStatus::Stopped || source.isEmpty())
        return std::nullopt;
    if (!m_filesKnown || m_knownSource != source) {
        m_knownSource = source;
        m_filesKnown = true;
        const QString path = FileDirPath::hasSeparator(source) ? source : FileDirPath::FolderOf(player.URL()) + source;
        m_file = m_root.files.nativePath(path).value_or(QByteArray());
        const QString cover = coverFile(m_root, playlistName(m_root, playingRow(m_root)));
        m_cover = m_root.files.nativePath(cover).value_or(QByteArray());
    }
    QString title = player.currentItemInfo(u"Title"_s);
    if (title.isEmpty())
        title = m_root.tDateiname.Caption.value();
    return PlayedTrack{.source = source,
                       .title = title,
                       .artist = player.currentItemInfo(u"Artist"_s),
                       .album = player.currentItemInfo(u"Album"_s),
                       .file = m_file,
                       .cover = m_cover,
                       .microseconds = static_cast<qint64>(player.currentDuration() * MicrosecondsOfSecond)};
}

bool RemoteControl::titleKnown() const
{
    return m_titleKnown || status() == PlaybackStatus::Stopped;
}

bool RemoteControl::canPlay() const
{
    return running() || (m_root.pSoundPlayer.Enabled.value() && m_root.LListView1.selectedRow() > 0);
}

bool RemoteControl::canPause() const
{
    return status() != PlaybackStatus::Stopped;
}

bool RemoteControl::canSkip() const
{
    return status() != PlaybackStatus::Stopped && m_root.services.mediaplayer.playlistCount() >= 2 &&
           m_root.mnuSoundplayer[1].available() && m_root.mnuSoundplayer[2].available();
}

bool RemoteControl::canSeek() const
{
    return positionOf(m_root).has_value();
}

qint64 RemoteControl::position() const
{
    return static_cast<qint64>(positionOf(m_root).value_or(Position()).seconds * MicrosecondsOfSecond);
}

int RemoteControl::repeatMode() const
{
    const int mode = repeatOf(m_root);
    return mode > 0 ? mode : 3;
}

void RemoteControl::lookAtVolume()
{
    const QDateTime now = m_root.services.events.now();
    if (!m_root.loaded || (m_volumeSeen.isValid() && std::abs(m_volumeSeen.secsTo(now)) < 1))
        return;
    m_volumeSeen = now;
    m_root.sVolume.Refresh();
}

double RemoteControl::volume() const
{
    const int most = m_root.sVolume.Max.value();
    return most > 0 ? static_cast<double>(m_root.sVolume.Value.value()) / most : 0;
}

const QList<KnownPlaylist>& RemoteControl::playlists() const
{
    if (!m_playlists) {
        m_playlists.emplace();
        QHash<QString, int> seen;
        for (int row = 1; row <= m_root.LListView1.count(); ++row) {
            const QString path = playlistPath(m_root, row);
            QString id = QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
            if (const int before = seen[id]++; before > 0)
                id += u'_' + QString::number(before + 1);
            m_playlists->append({.id = id, .name = playlistName(m_root, row)});
        }
    }
    return *m_playlists;
}

std::optional<KnownPlaylist> RemoteControl::activePlaylist() const
{
    const int row = playingRow(m_root);
    if (status() == PlaybackStatus::Stopped || row < 1 || row > playlists().size())
        return std::nullopt;
    return playlists()[row - 1];
}

int RemoteControl::rowOf(const QString& id) const
{
    const QList<KnownPlaylist>& known = playlists();
    const auto found = std::find_if(known.begin(), known.end(), [&id](const KnownPlaylist& k) { return k.id == id; });
    return found == known.end() ? 0 : static_cast<int>(found - known.begin()) + 1;
}

bool RemoteControl::play()
{
    if (!free() || !canPlay() || status() == PlaybackStatus::Playing)
        return false;
    if (!running())
        return m_root.pSoundPlayer.press();
    if (status() != PlaybackStatus::Paused)
        return false;
    // While it is paused the play button is off, and the command that goes on takes its place, though that is off too
    // where no title followed.
    m_root.mnuSoundplayer[4].Click();
    return true;
}

bool RemoteControl::pause()
{
    if (!free() || status() != PlaybackStatus::Playing)
        return false;
    // After a resume by the menu the command is off, though the player can be paused.
    m_root.mnuSoundplayer[3].Click();
    return true;
}

bool RemoteControl::playPause()
{
    return status() == PlaybackStatus::Playing ? pause() : play();
}

bool RemoteControl::stop()
{
    // In the waits of the sequence nothing runs, and a stop ends them.
    return free() && (running() || m_root.Timer1.Enabled.value()) && m_root.pStopPlayer.press();
}

bool RemoteControl::next()
{
    return free() && canSkip() && m_root.mnuSoundplayer[1].press();
}

bool RemoteControl::previous()
{
    return free() && canSkip() && m_root.mnuSoundplayer[2].press();
}

bool RemoteControl::seek(qint64 offset)
{
    const std::optional<Position> place = positionOf(m_root);
    if (!free() || !place)
        return false;
    const double wished = place->seconds + static_cast<double>(offset) / MicrosecondsOfSecond;
    if (wished > place->length)
        return next();
    seekTo(m_root, wished);
    return true;
}

bool RemoteControl::setPosition(qint64 microseconds)
{
    const std::optional<Position> place = positionOf(m_root);
    const double wished = static_cast<double>(microseconds) / MicrosecondsOfSecond;
    if (!free() || !place || wished < 0 || wished > place->length)
        return false;
    seekTo(m_root, wished);
    return true;
}

bool RemoteControl::setRepeatMode(int mode)
{
    return free() && mode >= 1 && mode <= 3 && m_root.mnuWiederholung[mode].press();
}

bool RemoteControl::setVolume(double level)
{
    constexpr double Tiny = 0.02;
    Slider& slider = m_root.sVolume;
    if (!free() || !slider.Enabled.value() || !slider.Scroll || std::isnan(level))
        return false;
    // The level may have been set elsewhere since it was looked at.
    slider.Refresh();
    const double wished = std::clamp(level, 0.0, 1.0);
    int step = static_cast<int>(std::lround(wished * slider.Max.value()));
    const double change = wished - volume();
    if (step == slider.Value.value() && std::abs(change) > Tiny)
        step += change > 0 ? 1 : -1;
    slider.Value = std::clamp(step, slider.Min.value(), slider.Max.value());
    slider.Scroll();
    return true;
}

bool RemoteControl::activate(const QString& id)
{
    ListView& list = m_root.LListView1;
    const int row = rowOf(id);
    if (!free() || row == 0 || !list.Click || !list.DblClick)
        return false;
    list.select(row);
    list.EnsureVisible(row);
    list.Click();
    // The list may be missing, and the user may have left the box about it with another wish.
    if (!free() || list.selectedRow() != row || list.Tag != QString::number(row))
        return false;
    list.DblClick();
    return true;
}

bool RemoteControl::raise()
{
    if (m_root.services.events.ended())
        return false;
    m_root.services.instance.Activated();
    return true;
}

bool RemoteControl::quit()
{
    return free() && m_root.mnuBeenden.press();
}

} // namespace orvantine
