#include "playback/PlaybackState.h"

#include "app/Columns.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"

namespace orvantine {

PlaybackStatus playbackStatus(const Root& root)
{
    const PlayState state = root.services.mediaplayer.playState();
    if (!root.pPausePlayer.Enabled.value() || state == PlayState::Stopped || state == PlayState::Ready)
        return PlaybackStatus::Stopped;
    return state == PlayState::Paused ? PlaybackStatus::Paused : PlaybackStatus::Playing;
}

void showPlayback(Root& root)
{
    const PlaybackStatus status = playbackStatus(root);
    root.LListView2.setPlaying(
        TrackItem::Path, status == PlaybackStatus::Stopped ? QString() : root.services.mediaplayer.currentSourceURL(),
        status == PlaybackStatus::Paused);
    root.playback = status;
}

int repeatOf(const Root& root)
{
    for (int mode = 1; mode <= 3; ++mode)
        if (root.mnuWiederholung[mode].Checked.value())
            return mode;
    return 0;
}

int playingRow(const Root& root)
{
    const ListView& list = root.LListView1;
    const int row = root.pSoundPlayer.Tag.toInt();
    const QString& path = root.sequence.playlist();
    const QString& key = root.sequence.rowKey();
    if (path.isEmpty())
        return row;
    for (int other = 1; other <= list.count() && !key.isEmpty(); ++other)
        if (list.key(other) == key)
            return other;
    // After the catalogue was read anew its rows have other keys.
    const auto plays = [&root, &path](int candidate) {
        return FileDirPath::isSameFile(playlistPath(root, candidate), path);
    };
    if (plays(row))
        return row;
    for (int other = 1; other <= list.count(); ++other)
        if (plays(other))
            return other;
    return 0;
}

void notePlaying(Root& root, int row)
{
    root.pSoundPlayer.Tag = QString::number(row);
    root.LListView2.Tag = root.pSoundPlayer.Tag;
    root.sequence.setPlaylist(playlistPath(root, row), root.LListView1.key(row));
}

} // namespace orvantine
