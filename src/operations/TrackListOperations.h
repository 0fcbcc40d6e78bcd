#pragma once

namespace orvantine {

struct Root;

/// Sorts the tracks by name (1), by the shown one of path and file name (2) or by number (3), numbers them anew and
/// asks whether to save. The list stays sorted until a row is moved up or the list is read again.
void mnuSortierung_Click(Root& root, int index);

/// Moves the selected track one place, 1 up, 2 down, and writes the list at once.
void mnuMoveEntry_Click(Root& root, int index);
void bEntryUp_Click(Root& root);
void bEntryDown_Click(Root& root);

/// Takes the selected track out of the list, if the user agrees. The audio file stays.
void mnuFileKill_Click(Root& root);

/// Gives the selected playlist another name, and its cover with it. The playlist file keeps its own.
void mnuUmbenennen_Click(Root& root);

/// False while another command is at work on the tracks or they are being read: its rows are not the list's.
[[nodiscard]] bool mayChangeTracks(const Root& root);

} // namespace orvantine
