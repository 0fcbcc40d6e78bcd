#pragma once

namespace orvantine {

struct Root;

/// Moves the selected playlist: 1 up, 2 down, each written to the database at once; 4 opens the dialog for the whole
/// order. A step that is asked for while another one waits is passed over. While the list is not the whole catalogue
/// nothing is written, and the dialog stays away.
void mnuVerschiebung_Click(Root& root, int index);
void bMoveUp_Click(Root& root);
void bMoveDown_Click(Root& root);

} // namespace orvantine
