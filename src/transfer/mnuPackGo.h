#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Carries the whole catalogue to another place, as a tree of folders or as one archive: each playlist with its tracks,
/// a list that names them by file name alone, and its cover; the database goes with them.
void mnuPackGo_Click(Root& root);

/// The folder in which the tree of an archive is built, with its separator: in the temporary folder, and the user's
/// alone. "" where none can be made.
[[nodiscard]] QString scratchFolder(Root& root);

/// Empties that folder. No link is followed.
void KillTempFiles(Root& root, const QString& folder);

} // namespace orvantine
