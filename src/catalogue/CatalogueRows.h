#pragma once

#include <QString>

namespace orvantine {

struct Root;

// Rows of the catalogue, counted from 1

[[nodiscard]] QString playlistName(const Root& root, int row);
[[nodiscard]] QString playlistPath(const Root& root, int row);

/// Path and name of a row: whether it is still the same one after events were served.
struct RowIdentity
{
    QString path;
    QString name;

    bool operator==(const RowIdentity&) const = default;
};
[[nodiscard]] RowIdentity identityOf(const Root& root, int row);

/// Path of the selected playlist; "" where none is selected.
[[nodiscard]] QString selectedPlaylist(const Root& root);
/// Its name.
[[nodiscard]] QString selectedName(const Root& root);

/// The row of the playlist whose tracks are in sight: the selected one, or the loaded one, or else the first that has
/// its file. 0 where there is none.
[[nodiscard]] int rowInSight(const Root& root);

/// Selects the last row and notes that its tracks are the ones that are loaded.
void selectLastRow(Root& root);

/// Puts the number of tracks into the row's cell, unless it is told there already.
void showTrackCount(Root& root, int row);

/// Colours name and track count of a row: dark red for a missing playlist file, else the text colour.
void markMissing(Root& root, int row, bool missing);

/// Gives the row the icon of a favourite, if its key says so, or that of any other playlist.
void markFavourite(Root& root, int row);
void markAllFavourites(Root& root);

/// False for an empty list and for one that the favourites filter has made shorter: such a list must never overwrite
/// the section `Index`.
[[nodiscard]] bool isWholeCatalogue(const Root& root);

} // namespace orvantine
