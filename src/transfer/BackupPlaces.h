#pragma once

#include "transfer/RestorePlan.h"

namespace orvantine {

struct Root;

/// Where the pictures of a backup go, or all else.
[[nodiscard]] QString restoreFolder(const Root& root, bool picture);

/// As `planRestore`, for the DataFolder as it is now: no link may stand where something is to go.
[[nodiscard]] std::variant<RestorePlan, RestoreObstacle>
planRestoreHere(const Root& root, const std::vector<ArchiveEntry>& entries, qint64 archiveSize, qint64 room);

} // namespace orvantine
