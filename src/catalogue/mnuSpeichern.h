#pragma once

namespace orvantine {

struct Root;

/// Writes the whole section `Index` from the rows of the catalogue. Does nothing for an empty catalogue and while the
/// favourites filter is on.
void mnuSpeichern_Click(Root& root);
/// Another name of the same.
void SaveDatabase(Root& root);

/// The section alone, for a command that has changed files on the way and is cut short by the end of the program.
void writeCatalogueRows(Root& root);

} // namespace orvantine
