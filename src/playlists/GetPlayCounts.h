#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Lines of the file that are no comments, empty ones included; an unclosed last line is none. 0 for a missing file,
/// 32767 at the most.
[[nodiscard]] int GetPlayCounts(Root& root, const QString& path);

} // namespace orvantine
