#pragma once

#include <QString>

#include <optional>

namespace orvantine {

struct Root;

/// Turns a playlist file into the rows of the track list and fills the panels around it. `path` may be changed for the
/// caller: an NML list is converted once and goes on as M3U. Events are served inside; one of them may open another
/// list, which then stays in sight.
void GetPlayEntrys(Root& root, QString& path);

/// What a read would do with the NML list of a row, as a step of the running change: that fails with it.
void convertRow(Root& root, int row);

/// Selects a row of the catalogue, marks it as the one that is loaded (`LListView1.Tag`) and opens its list; gives the
/// list's path as `GetPlayEntrys` leaves it. Without such a row nothing is marked any more.
QString openRow(Root& root, int row);

/// Whether a read finds the list: its file, or the one that it was converted to.
[[nodiscard]] bool isPlaylistThere(const Root& root, const QString& path);

/// Runs the click handler of the catalogue, which loads the selected playlist unless it is marked as loaded.
void LoadPlayEntrysTmp(Root& root);
/// The same whatever is marked: the mark may stand on a row whose tracks are not the ones shown.
void openSelectedAnew(Root& root);

/// True if the rows in sight are a playlist's own and may be changed. Where they are not, or not all, the list is read
/// again in place, and stays as it is unless that shows all of it. Without any playlist the rows are nobody else's.
[[nodiscard]] bool ownTracks(Root& root);

/// The same for what acts on the selected track, and its row: nothing where the rows may not be changed, 0 where none
/// is selected, or where that reading has put another track into its row.
[[nodiscard]] std::optional<int> ownSelectedRow(Root& root);

/// The same for what adds tracks: where no list is in sight the selected one is opened, which may ask about a missing
/// file.
[[nodiscard]] bool openOwnTracks(Root& root);

} // namespace orvantine
