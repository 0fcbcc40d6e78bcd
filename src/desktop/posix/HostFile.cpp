#include "desktop/posix/HostFile.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>

namespace orvantine {
namespace {

qint64 nanoseconds(const timespec& time)
{
    return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

FileStamp stampOf(const struct stat& info)
{
    FileStamp stamp;
    stamp.device = info.st_dev;
    stamp.inode = info.st_ino;
    stamp.size = info.st_size;
    stamp.modifiedNanoseconds = nanoseconds(info.st_mtim);
    stamp.changedNanoseconds = nanoseconds(info.st_ctim);
    return stamp;
}

bool isMissing(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

Descriptor openRegular(const QByteArray& path, int flags, struct stat& info)
{
    Descriptor file(::open(path.constData(), flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.isOpen() && (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)))
        file.close();
    return file;
}

QByteArray absolutePath(const QByteArray& path)
{
    if (path.startsWith('/'))
        return path;
    char* const current = ::getcwd(nullptr, 0);
    QByteArray folder(current);
    std::free(current); // getcwd allocates with malloc
    if (!folder.endsWith('/'))
        folder += '/';
    return folder + path;
}

} // namespace orvantine
