#pragma once

namespace orvantine {

struct Root;

/// Moves the selected track one place, 1 up, 2 down, and writes the list at once.
void mnuMoveEntry_Click(Root& root, int index);

void bEntryUp_Click(Root& root);
void bEntryDown_Click(Root& root);

} // namespace orvantine
