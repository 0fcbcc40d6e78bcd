#pragma once

namespace orvantine {

struct Root;

/// Asks for a name and opens a new, empty playlist; the catalogue is saved at once.
void mnuNeu_Click(Root& root);

/// Takes a playlist file that the user chooses into the catalogue and opens it. A list that once got another name has
/// it again.
void mnuDurchsuchen_Click(Root& root);

/// Opens the audio finder, behind an index of today.
void mnuAddFolder_Click(Root& root);

} // namespace orvantine
