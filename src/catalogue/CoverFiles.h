#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Path of the cover of a playlist by its display name: ".jpg", ".gif", ".bmp" in "Resource", the last hit wins. ""
/// where there is none, and for a name that a file cannot have.
[[nodiscard]] QString coverFile(const Root& root, const QString& playlistName);

/// Copies a picture to the cover of the playlist; gives the cover's path, "" where none came into being.
[[nodiscard]] QString takeCover(Root& root, const QString& picture, const QString& playlistName);

} // namespace orvantine
