#pragma once

#include "desktop/posix/Descriptor.h"
#include "platform/Files.h"

#include <QByteArray>

#include <sys/stat.h>

namespace orvantine {

[[nodiscard]] FileStamp stampOf(const struct stat& info);
/// An `errno` that says that nothing stands there.
[[nodiscard]] bool isMissing(int error);
/// Never waits, not even for a pipe, and takes regular files only.
[[nodiscard]] Descriptor openRegular(const QByteArray& path, int flags, struct stat& info);
/// A relative path starts from the current folder.
[[nodiscard]] QByteArray absolutePath(const QByteArray& path);

} // namespace orvantine
