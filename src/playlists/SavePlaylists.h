#pragma once

namespace orvantine {

struct Root;

/// Writes the open list to its path, as plain M3U text. A list from elsewhere is copied into "Playlisten" first, if
/// the option asks for it.
void SavePlayEntrys(Root& root);

/// Copies the playlist file into "Playlisten", points the row at the copy and saves it.
void SaveLocalEntrys(Root& root);

/// Exports the playlist as it stands on disk under a new name; an NML list takes the rows.
void mnuSpeichernUnter_Click(Root& root);

/// False inside a read, and where the selected row is another one than the list whose tracks are shown: a wait or a box
/// may have let something else select it. Nor where the rows are those of the list before. A row without a path may be
/// written: that fails, and is told.
[[nodiscard]] bool mayWriteSelected(const Root& root);

} // namespace orvantine
