#pragma once

#include <QString>

namespace orvantine {
struct Root;
}

/// What a volume holds; `volume` is its first three characters, "C:\", or the folder it is mounted on.
namespace orvantine::FreeSpace {

/// Name of the file system in upper case.
[[nodiscard]] QString VolumeType(const Root& root, const QString& volume);

/// Digits; "" on "FAT32" and for a volume that cannot be asked.
[[nodiscard]] QString FreeBytes(const Root& root, const QString& volume);

[[nodiscard]] QString TotalBytes(const Root& root, const QString& volume);

} // namespace orvantine::FreeSpace
