#pragma once

#include "platform/Controls.h"

namespace orvantine {

struct Root;

/// Shows or hides the pane of the cover. Where the selected playlist has none one is chosen instead.
void mnuCoverShow_Click(Root& root);

/// Chooses a picture as the cover of the selected playlist.
void pCovers_Click(Root& root);
/// The same through the click handler of the cover.
void HelpDblClick(Root& root);

/// The right button deletes the cover of the selected playlist, if the user agrees.
void pCovers_MouseDown(Root& root, MouseButton button);

/// Takes the first picture of the folder as the cover of the selected playlist; without one the pane goes away.
void FindPicture(Root& root, const QString& folder);

/// Shows the picture `id` + 20 of that format ("GIF", "JPG") of the program's resources in pTrayicon. One that the
/// program does not hold is passed over.
void GetPicture(Root& root, const QString& format, int id);
/// GetPicture of the two formats.
void LoadGIF(Root& root, int id);
void LoadJPG(Root& root, int id);
/// Shows the first JPG while something plays.
void Command1_Click(Root& root);

} // namespace orvantine
