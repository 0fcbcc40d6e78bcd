#pragma once

namespace orvantine {

struct Root;

/// True if the index was written today; a missing one was not.
[[nodiscard]] bool indexIsOfToday(const Root& root);

/// Writes the paths of all tracks of the catalogue into the index file.
void SetIndexFile(Root& root);

} // namespace orvantine
