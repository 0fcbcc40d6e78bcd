#include "desktop/posix/JournalFolders.h"

#include "desktop/posix/Checksum.h"
#include "desktop/posix/Descriptor.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace orvantine {

QByteArray folderOf(const QByteArray& path)
{
    return path.first(std::max<qsizetype>(path.lastIndexOf('/'), 1));
}

bool syncPath(const QByteArray& path)
{
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    return file.isOpen() && (::fsync(file.get()) == 0 || errno == EINVAL);
}

void beginSync(const QByteArray& path)
{
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.isOpen())
        ::sync_file_range(file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

quint64 currentBoot()
{
    static const quint64 boot = [] {
        const Descriptor file(::open("/proc/sys/kernel/random/boot_id", O_RDONLY | O_CLOEXEC));
        QByteArray text;
        return file.isOpen() && readAt(file, 0, 64, text) ? checksum(1, text) : 0;
    }();
    return boot;
}

} // namespace orvantine
