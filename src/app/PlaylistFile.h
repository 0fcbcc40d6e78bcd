#pragma once

#include "platform/Files.h"

namespace orvantine {

struct Root;

// A playlist by the path that a user, the database or a drop names. The database and its copy are texts and no
// playlists: the normalising read would spoil them.

/// The database, or its copy.
[[nodiscard]] bool isOwnFile(const Root& root, const QString& path);

/// Failed for what is no playlist.
[[nodiscard]] ReadText readPlaylist(Root& root, const QString& path);
bool writePlaylist(Root& root, const QString& path, const QString& text);
bool copyPlaylist(Root& root, const QString& from, const QString& to);
/// Nothing stands there, or a text that is not the program's own.
[[nodiscard]] bool mayHoldPlaylist(const Root& root, const QString& path);

} // namespace orvantine
