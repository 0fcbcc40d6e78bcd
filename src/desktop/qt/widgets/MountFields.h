#pragma once

#include <QByteArray>

/// What the kernel's tables of mounts have in common.
namespace orvantine {

/// A blank, a tabulator, a line end and a backslash stand in a field as three octal digits.
[[nodiscard]] QByteArray withoutMountEscapes(const QByteArray& field);

/// True for a file system that lies on another machine.
[[nodiscard]] bool isNetworkFileSystem(const QByteArray& type);

} // namespace orvantine
