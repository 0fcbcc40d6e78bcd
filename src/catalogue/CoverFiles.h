#pragma once

#include <QString>
#include <QStringView>

namespace orvantine {

struct Root;

// A cover is found and chosen with three endings, but taken from a dropped folder with two.

/// What the chooser for a cover offers.
inline constexpr QStringView CoverFilter = u"Bilddateien|*.bmp; *.gif; *.jpg|Alle Dateitypen|*.*";
/// The pictures of a folder that become the cover of its playlist.
inline constexpr QStringView FolderPictures = u"*.jpg;*.gif";

/// Path of the cover of a playlist by its display name: ".jpg", ".gif", ".bmp" in "Resource", the last hit wins. ""
/// where there is none, and for a name that a file cannot have.
[[nodiscard]] QString coverFile(const Root& root, const QString& playlistName);

/// Copies a picture to the cover of the playlist; gives the cover's path, "" where none came into being.
[[nodiscard]] QString takeCover(Root& root, const QString& picture, const QString& playlistName);

/// Gives the cover in sight the name that its playlist has now. True if there was a picture, which now bears that name.
bool renameCover(Root& root, const QString& from, const QString& to);

/// Gives every picture of the playlist its new name, whatever the ending; one that cannot be copied stays, and so
/// do all where a file cannot have one of the names.
void renameCovers(Root& root, const QString& from, const QString& to);

} // namespace orvantine
