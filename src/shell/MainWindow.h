#pragma once

namespace orvantine {

struct Root;

/// With 1 the menus, lists and play buttons are off, with 0 they are on; both may be repeated.
void DisabledButtons(Root& root, int off);
/// Turns the present state around.
void DisabledButtons(Root& root);

/// A minimised window goes to the tray; any other is kept at its least size.
void Form_Resize(Root& root);

void mnuGridlines_Click(Root& root);
void mnuDatumsanzeige_Click(Root& root);
void mnuLautstärke_Click(Root& root);
void mnuPositionen_Click(Root& root);
void mnuTrackShow_Click(Root& root);
/// 1 shows the tracks' full path, 2 their file name.
void mnuOrvmenu_Click(Root& root, int index);
void mnuSchriftarten_Click(Root& root);
void mnuSpaltenReset_Click(Root& root);
void mnuAddSoundfiles_Click(Root& root);
void mnuErrorDisplay_Click(Root& root);
void mnuLokalePlayliste_Click(Root& root);
void mnuHilfe_Click(Root& root);
void mnuInfo_Click(Root& root);

/// Shows a topic, "/1.0 Erste Schritte.htm", of the help; without the help file nothing happens.
void showHelp(Root& root, const char16_t* topic);

} // namespace orvantine
