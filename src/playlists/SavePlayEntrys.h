#pragma once

namespace orvantine {

struct Root;

/// Writes the tracks in sight to their list, as plain M3U text, whichever row of the catalogue is selected. A list from
/// elsewhere is copied into "Playlisten" first, if the option asks for it. Rows that are not the list's own, or not all
/// of them, are not written.
void SavePlayEntrys(Root& root);

/// There is a file to save to: that of a row, or that of the list in sight whose row the filter hides.
[[nodiscard]] bool hasPlace(const Root& root);

/// Copies the playlist file into "Playlisten", points its row at the copy and saves it there. A copy that would take
/// the place of another row's file is not made: the list is saved where it lies.
void SaveLocalEntrys(Root& root);

} // namespace orvantine
