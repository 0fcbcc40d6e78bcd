#pragma once

#include "platform/Files.h"

#include <QDateTime>
#include <QString>

namespace orvantine {

/// Where the desktop keeps what was thrown away: `trash`/files and `trash`/info.
struct ResetPlaces
{
    /// The DataFolder of the settings.
    QString dataFolder;
    /// The user's own trash, without a trailing separator.
    QString trash;
    QDateTime now;
};

/// Empties the database of the DataFolder and moves the playlists in its folder "Playlisten" to the trash: all of it,
/// or nothing. False also where there is neither of them, or the playlists cannot be told.
[[nodiscard]] bool resetDatabase(Files& files, const ResetPlaces& places);

} // namespace orvantine
