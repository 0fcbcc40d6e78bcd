#pragma once

namespace orvantine {

struct Root;

/// Puts the selected playlist's name or the selected track's full path on the clipboard, by the list that had the
/// focus last. Before any had it nothing happens.
void mnuEditCopy_Click(Root& root);

/// Removes the selected playlist or track, by the list that had the focus last.
void mnuEditKill_Click(Root& root);

/// A list has the focus from the first time that one had it: the menus do not take it away.
[[nodiscard]] bool listIsActive(const Root& root);

/// Notes which list had the focus last: 1 the catalogue, 2 the tracks.
void noteFocus(Root& root, int list);

} // namespace orvantine
