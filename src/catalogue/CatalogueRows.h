#pragma once

#include <QString>

namespace orvantine {

struct CatalogueEntry;
struct Root;

// Rows of the catalogue, counted from 1

[[nodiscard]] QString playlistName(const Root& root, int row);
[[nodiscard]] QString playlistPath(const Root& root, int row);

/// Puts name, path and number of tracks into the entry, as the cells of the row tell them.
void takeCells(const Root& root, int row, CatalogueEntry& entry);

/// Path and name of a row: whether it is still the same one after events were served.
struct RowIdentity
{
    QString path;
    QString name;
    /// Stays with the row until the catalogue is loaded again; "" where nobody gave it one.
    QString key;

    bool operator==(const RowIdentity& other) const { return path == other.path && name == other.name; }
};
[[nodiscard]] RowIdentity identityOf(const Root& root, int row);
/// Where the row is now: by its key, or if the catalogue was loaded since by path and name, the row `hint` first. 0
/// where it has gone, though another one be like it.
[[nodiscard]] int rowOf(const Root& root, const RowIdentity& row, int hint);
/// The catalogue is loaded: the keys that were given so far stay with no row.
void beginRowKeys(Root& root);
/// A key that no row has had.
[[nodiscard]] QString newRowKey(Root& root);

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

/// The number of the row's entry in the database: its own number, or behind a gap in the section that of its path. 0
/// where no entry has its path, or the database cannot be read.
[[nodiscard]] int storedNumberOf(const Root& root, int row);

/// Another name or path for a row. Under the filter, where no save comes behind it, it is stored at once.
void setPlaylistName(Root& root, int row, const QString& name);
void setPlaylistPath(Root& root, int row, const QString& path);

/// What the labels say of a list, description and date above all, is said of that row. True where no list is in sight.
[[nodiscard]] bool labelsTellOf(const Root& root, int row);

/// Selects the last row and notes that its tracks are the ones that are loaded.
void selectLastRow(Root& root);

/// Puts the number of tracks in sight into the row's cell; `showTrackCount` unless that number stands there already.
void setTrackCount(Root& root, int row);
void setTrackCount(Root& root, int row, int tracks);
void showTrackCount(Root& root, int row);

/// The heading of the tracks counts them.
void showTrackHeading(Root& root);

/// Another row has that file, one that the filter hides included.
[[nodiscard]] bool isUsedByAnother(const Root& root, int row, const QString& path);

/// Colours name and track count of a row: dark red for a missing playlist file, else the text colour.
void markMissing(Root& root, int row, bool missing);

[[nodiscard]] QString favouriteIcon(bool favourite);
/// Gives the row the icon of a favourite, if its key says so, or that of any other playlist.
void markFavourite(Root& root, int row);
void markAllFavourites(Root& root);

/// False for an empty list, under the filter and behind a read that failed: such a list must never overwrite the
/// section `Index`.
[[nodiscard]] bool isWholeCatalogue(const Root& root);

} // namespace orvantine
