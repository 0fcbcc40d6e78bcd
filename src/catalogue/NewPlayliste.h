#pragma once

#include <QString>

namespace orvantine {

class Command;
struct Root;

/// Appends a row to the catalogue: the one routine that does. An empty name is asked for; an empty path, or the
/// database's name with ".tmp", stands for a new file in "Playlisten", and `path` then tells its name. While the
/// window is not visible nothing is asked and no file is created. True if a row was added.
[[nodiscard]] bool NewPlayliste(Root& root, QString& path, QString name);

/// Tells that the catalogue is full; false if the program has ended.
[[nodiscard]] bool tellLimit(Command& command);

/// False where no row can be added any more; that was told.
[[nodiscard]] bool mayAddRow(const Root& root, Command& command);

} // namespace orvantine
