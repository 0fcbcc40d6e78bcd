#pragma once

#include "platform/Files.h"

#include <QList>
#include <QString>

namespace orvantine {

/// One item of a list that is played.
struct PlaylistEntry
{
    /// The text that the track's row shows as its path.
    QString sourceURL;
    /// The text to look up in `Files`: as `sourceURL`, or with the list's folder before a relative entry.
    QString path;

    bool operator==(const PlaylistEntry&) const = default;
};

/// True for the endings of a list of lines, whatever their case: m3u, m3u8, pls, txt, tmp. All else is a track.
[[nodiscard]] bool isPlaylistPath(const QString& path);

/// The entries of a list's text, in their order. CR closes an entry and LF is dropped wherever it stands; a last line
/// that nothing closes is no entry. A text without CR that has LF is split there, its last line counts. Empty lines
/// and lines that begin with "#" are dropped. An entry with a separator is taken as it stands, any other one lies in
/// the folder of `playlistPath`.
[[nodiscard]] QList<PlaylistEntry> playlistEntries(const QString& playlistPath, const QString& text);

/// What the player walks through when it is handed `url`: the entries of a list, or the one track. `playlist` is a list
/// whatever its ending. A list that cannot be read has no entries.
[[nodiscard]] QList<PlaylistEntry> entriesToPlay(Files& files, const QString& url, const QString& playlist = {});

/// False for what a player passes over: no regular file, or a list inside a list.
[[nodiscard]] bool isPlayable(const Files& files, const PlaylistEntry& entry);

} // namespace orvantine
