#pragma once

namespace orvantine {

struct Root;

/// Turns the grid of both lists on or off.
void mnuGridlines_Click(Root& root);
/// Shows or hides date and number of tracks. The setting "ShowDate" is 1 while they are hidden.
void mnuDatumsanzeige_Click(Root& root);
/// The same where it is not so already, without a word to the settings.
void showDateDisplay(Root& root, bool on);
/// Shows or hides the volume; the buttons that move rows make room for it.
void mnuLautstärke_Click(Root& root);
/// Shows or hides the buttons that move rows, in the place of the counts and the date; the volume makes room.
void mnuPositionen_Click(Root& root);
/// Shows or hides the number of tracks in the catalogue. The column of names takes over its width.
void mnuTrackShow_Click(Root& root);
/// 1 shows the tracks' full path, 2 their file name. The widths in sight are stored before.
void mnuOrvmenu_Click(Root& root, int index);

/// Chooses the font of both lists.
void mnuSchriftarten_Click(Root& root);
/// Gives the columns the widths of their creation and writes all options, if the user agrees.
void mnuSpaltenReset_Click(Root& root);

// Turn their mark alone: what it stands for is asked where it matters.

void mnuAddSoundfiles_Click(Root& root);
void mnuErrorDisplay_Click(Root& root);
void mnuLokalePlayliste_Click(Root& root);

/// Opens the help at its first page.
void mnuHilfe_Click(Root& root);
/// Shows the dialog about the program.
void mnuInfo_Click(Root& root);

/// Saves the catalogue. A save that went well is told in passing: nothing else would show it.
void saveAndTell(Root& root);

} // namespace orvantine
