#pragma once

#include "platform/ListView.h"

namespace orvantine {

struct Root;

/// What a row of the track list is made of.
struct TrackRow
{
    /// Position, 1-based.
    int number = 1;
    QString name;
    /// Full path of the track's file.
    QString path;
    bool missing = false;
};

/// "101", "01", name, path, file name; a missing file in dark red.
[[nodiscard]] ListItem itemOf(const TrackRow& row);

/// Says quietly that the tracks were not written, as somebody else has put more into the file meanwhile.
void tellGrownList(Root& root);

/// The path of an entry of a playlist: one without a folder lies beside the list.
[[nodiscard]] QString fullPath(const QString& entry, const QString& playlistFolder);

/// The display name of an entry of a playlist: what `TagInfo` knows of the file, else its name.
[[nodiscard]] QString displayName(const Root& root, const QString& entry, const QString& path);

} // namespace orvantine
