#pragma once

#include <QString>

namespace orvantine {

struct Root;

inline constexpr int MostPlaylists = 160;

/// One of the seven values of a catalogue row: `letter` is 'a' to 'g', `row` the 1-based number.
[[nodiscard]] QString indexValue(const Root& root, const QString& file, int row, char letter);
void writeIndexValue(Root& root, const QString& file, int row, char letter, const QString& value);
void deleteIndexValue(Root& root, const QString& file, int row, char letter);

/// DataFolder + stem + ".bak".
[[nodiscard]] QString backupFile(const Root& root);

/// Loads the whole catalogue from the database file. Rows are packed: a gap in the numbers is skipped. Tells how many
/// playlist files are missing, if the option asks for it.
void mnuLaden_Click(Root& root);
void GetLoadListe(Root& root);

/// Writes the whole section `Index` from the rows of the catalogue. Does nothing for an empty catalogue and while the
/// favourites filter is on.
void mnuSpeichern_Click(Root& root);
void SaveDatabase(Root& root);

/// False for an empty list, for one that the favourites filter has made shorter, and for half a load: such a list must
/// never overwrite the section.
[[nodiscard]] bool isWholeCatalogue(const Root& root);

} // namespace orvantine
