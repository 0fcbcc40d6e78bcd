#pragma once

#include <QString>
#include <QStringList>

namespace orvantine {

struct Root;

/// Appends one track to the list in sight and to tPlayliste. With `batch` 0 the playlist file is written from
/// tPlayliste, and a list in a ".tmp" file moves into "Playlisten"; otherwise the catalogue's count is taken from the
/// rows, and the caller saves once at the end. An empty file is a no-op, and so is one whose path breaks a line.
/// Nothing is added to rows that are not a list's own.
void AddPlayEntrys(Root& root, const QString& file, int batch);

/// As if each of the files were added as one of a batch, but shown together: the first row is selected, and its
/// information read, once at the end. Events are served meanwhile; if one of them opens another list, the rest is left
/// out. `exist`: the files were just listed, nobody needs to look for them.
void AddPlayEntrys(Root& root, const QStringList& files, bool exist = false);

} // namespace orvantine
