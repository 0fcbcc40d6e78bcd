#pragma once

namespace orvantine {

struct Root;

/// Loads the whole catalogue from the database file. Rows are packed: a gap in the numbers is skipped. Tells how many
/// playlist files are missing, if the option asks for it.
void mnuLaden_Click(Root& root);
/// Another name of the same.
void GetLoadListe(Root& root);

} // namespace orvantine
