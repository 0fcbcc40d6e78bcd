#pragma once

#include "platform/Choosers.h"

namespace orvantine {

struct Root;

/// The folder dialog, from the computer's root or from the network's. "" on Cancel.
[[nodiscard]] QString BrowseFolders(Root& root, FolderRoot from);

} // namespace orvantine
