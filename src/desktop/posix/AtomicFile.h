#pragma once

#include <QByteArray>

namespace orvantine {

/// Puts a file of mode 0600 in the place of `path` in one step: a reader sees the old bytes or the new ones, also
/// after a loss of power. A link stays a link. False if anything failed; then the old file stands.
bool writeAtomically(const QByteArray& path, const QByteArray& bytes);

/// All bytes of a regular file of up to 16 MiB; false with `errno` for anything else.
[[nodiscard]] bool readSmallFile(const QByteArray& path, QByteArray& bytes);

} // namespace orvantine
