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

/// The favourites filter hides rows: what is left is no whole catalogue.
[[nodiscard]] bool isFiltered(const Root& root);
/// Puts the mark of the filter, whose rows cannot be moved.
void setFiltered(Root& root, bool on);
/// The number of a row in section `Index`: its place, unless the filter has hidden others in front of it. 0 for a row
/// that has none.
[[nodiscard]] int numberOf(const Root& root, int row);
/// Rows of the catalogue, those that the filter hides included.
[[nodiscard]] int wholeCount(const Root& root);
/// The row keeps this number while the filter is on.
void keepNumber(Root& root, int row, int number);

/// Another name or path for a row. Under the filter, where no save comes behind it, it is stored at once.
void setPlaylistName(Root& root, int row, const QString& name);
void setPlaylistPath(Root& root, int row, const QString& path);

/// Selects the last row and notes that its tracks are the ones that are loaded.
void selectLastRow(Root& root);

/// Puts the number of tracks into the row's cell, unless it is told there already.
void showTrackCount(Root& root, int row);

/// Colours name and track count of a row: dark red for a missing playlist file, else the text colour.
void markMissing(Root& root, int row, bool missing);

/// Gives the row the icon of a favourite, if its key says so, or that of any other playlist.
void markFavourite(Root& root, int row);
void markAllFavourites(Root& root);

/// False for an empty list and under the filter: such a list must never overwrite the section `Index`.
[[nodiscard]] bool isWholeCatalogue(const Root& root);

} // namespace orvantine
