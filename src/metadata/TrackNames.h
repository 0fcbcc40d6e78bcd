#pragma once

#include <QString>

namespace orvantine {

struct Root;

// Section `TagInfo`: the names that tracks are shown by, the full path of a track's file is the key. `database` says by
// which of its two names the database is meant: `databaseFile` or `namedDatabaseFile`.

/// "" where none is stored.
[[nodiscard]] QString storedTrackName(const Root& root, const QString& database, const QString& path);
void storeTrackName(Root& root, const QString& database, const QString& path, const QString& name);
void forgetTrackName(Root& root, const QString& database, const QString& path);

/// What the labels say of the selected track: its artist, " - ", its title.
[[nodiscard]] QString nameByLabels(const Root& root);

} // namespace orvantine
