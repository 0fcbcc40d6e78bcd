#pragma once

namespace orvantine {

struct Root;

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
/// Saves the catalogue. A save that went well is told in passing: nothing else would show it.
void saveAndTell(Root& root);

} // namespace orvantine
