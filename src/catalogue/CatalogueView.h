#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Appends a row for the playlist file and opens it. An empty path is a no-op.
void GetPlayListe(Root& root, const QString& path);

/// Colours name and track count of a row: dark red for a missing playlist file, else the text colour.
void markMissing(Root& root, int row, bool missing);

/// Gives the row the icon of a favourite, if its key says so, or that of any other playlist.
void markFavourite(Root& root, int row);
void markAllFavourites(Root& root);

/// True if the stored mark of the row with that number is "1".
[[nodiscard]] bool isFavourite(const Root& root, int row);

} // namespace orvantine
