#pragma once

namespace orvantine {

struct Root;

/// The notification area's callback: X carries the mouse message times 15. A press of either button hides the window
/// or brings it back.
void pTrayicons_MouseMove(Root& root, int x);

// The small controls around the player that forward to a command
void pTrayicon_Click(Root& root);
void tPlaylisteinträge_DblClick(Root& root);
void pMpeg_DblClick(Root& root);

} // namespace orvantine
