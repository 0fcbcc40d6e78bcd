#pragma once

#include <QString>

namespace orvantine {

/// True for a name part with "*" or "?".
[[nodiscard]] bool isPattern(QStringView name);

/// Ignoring case; "*" stands for any characters, "?" for one; "*.*" matches names without a dot as well.
[[nodiscard]] bool matchesPattern(QStringView name, QStringView pattern);

/// True if one of the patterns of "*.mp3;*.wma; *.wav" matches.
[[nodiscard]] bool matchesAnyPattern(QStringView name, QStringView patterns);

} // namespace orvantine
