#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Turns a playlist file into the rows of the track list and fills the panels around it. `path` may be changed for the
/// caller: an NML list is converted once and goes on as M3U.
void GetPlayEntrys(Root& root, QString& path);

/// Lines of the file that are no comments, empty ones included; an unclosed last line is none. 0 for a missing file,
/// 32767 at the most.
[[nodiscard]] int GetPlayCounts(Root& root, const QString& path);

/// Rewrites the file without comments and empty lines, neighbouring entries relative to it, and takes its lines into
/// tPlayliste. With fewer than 10 characters left, file and tPlayliste stay as they were. False only for a missing
/// file.
bool TextDosConvert(Root& root, const QString& path);

/// Gives the emptied track list to the playlist of that path; a read that waits below is overtaken.
void takeTrackList(Root& root, const QString& path);

/// Makes tPlayliste the lines of the rows that are shown, by their full paths.
void putRowsIntoField(Root& root);

/// Shows the cover of the open playlist and its pane, if it has one.
void showCover(Root& root);

/// Runs the click handler of the catalogue, which loads the selected playlist.
void LoadPlayEntrysTmp(Root& root);

/// True if the rows in sight are those of the selected playlist. A playlist too short to be taken in shows rows of the
/// list before: its own entries take their place now.
bool takeOwnTracks(Root& root);

/// Opens the selected playlist where the tracks of another one are in sight: its own could not be opened, or nobody has
/// clicked it yet. False if they still are; a missing list asks its own question.
bool showSelectedTracks(Root& root);

/// Creates the five columns of the track list with its stored widths.
void createTrackColumns(Root& root);

/// Widths of the five columns as they are created.
void resetTrackColumnWidths(Root& root);

/// The display name of an entry of a playlist: what `TagInfo` knows of the file, else its name.
[[nodiscard]] QString displayName(const Root& root, const QString& entry, const QString& fullPath);

/// Filter of the dialogs that open and save playlists.
[[nodiscard]] QString playlistFilter();

/// The text of the hint that stands in the place of a missing description.
[[nodiscard]] QString addTracksHint();

} // namespace orvantine
