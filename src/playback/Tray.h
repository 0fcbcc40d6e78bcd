#pragma once

namespace orvantine {

struct Root;

/// The notification area's callback: X carries the mouse message times 15. A press of either button hides the window
/// or brings it back.
void pTrayicons_MouseMove(Root& root, int x);

// The small controls around the player that forward to a command

/// Asks for the description of the playlist, as mnuBeschriftung, while the name of what plays is enabled.
void pTrayicon_Click(Root& root);
/// Asks for another name of the playlist, as mnuUmbenennen, while the name of what plays is enabled.
void tPlaylisteinträge_DblClick(Root& root);
/// Chooses a cover, unless the catalogue is empty.
void pMpeg_DblClick(Root& root);

} // namespace orvantine
