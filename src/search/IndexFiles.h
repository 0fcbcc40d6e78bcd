#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// DataFolder + stem + ".idx".
[[nodiscard]] QString indexFile(const Root& root);

/// True if the index was written today; a missing one was not.
[[nodiscard]] bool indexIsOfToday(const Root& root);

/// Writes the paths of all tracks of the catalogue into the index file.
void SetIndexFile(Root& root);

} // namespace orvantine
