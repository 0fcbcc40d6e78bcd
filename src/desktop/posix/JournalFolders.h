#pragma once

#include <QByteArray>

namespace orvantine {

/// Of an absolute path.
[[nodiscard]] QByteArray folderOf(const QByteArray& path);

/// Brings a file or folder to the disk. False with `errno`; a folder of a foreign file system may take no sync.
[[nodiscard]] bool syncPath(const QByteArray& path);

/// Lets the disk begin with a file that is going to be synced behind others.
void beginSync(const QByteArray& path);

/// Tells one run of the system from another.
[[nodiscard]] quint64 currentBoot();

} // namespace orvantine
