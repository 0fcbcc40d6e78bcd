#pragma once

#include <QString>

namespace orvantine {

struct XdgFolders;

/// Where the sibling that resets the database keeps old bytes, beside the place of the program, which holds that one
/// while it runs. "" without a home.
[[nodiscard]] QString resetFolder(const XdgFolders& folders);

/// Puts back what a reset has left half done.
void settleReset(const XdgFolders& folders);

} // namespace orvantine
