#include "desktop/posix/AtomicFile.h"

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/PrivateFolder.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvantine {
namespace {

constexpr qint64 maximumSize = qint64{16} << 20;

} // namespace

bool writeAtomically(const QByteArray& path, const QByteArray& bytes)
{
    const QByteArray real = realPath(path);
    const QByteArray target = real.isEmpty() ? path : real;
    const QByteArray folder = target.left(target.lastIndexOf('/'));
    const QByteArray unfinished = target + ".neu";
    if (!folder.isEmpty() && !makePrivateFolder(folder))
        return false;
    Descriptor file(::open(unfinished.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    bool done = file.isOpen() && writeAt(file, 0, bytes) && ::fsync(file.get()) == 0;
    file.close();
    done = done && ::rename(unfinished.constData(), target.constData()) == 0;
    if (!done) {
        ::unlink(unfinished.constData());
        return false;
    }
    const Descriptor directory(::open(folder.isEmpty() ? "/" : folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen())
        ::fsync(directory.get());
    return true;
}

bool readSmallFile(const QByteArray& path, QByteArray& bytes)
{
    bytes.clear();
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0)
        return false;
    if (!S_ISREG(info.st_mode) || info.st_size > maximumSize) {
        errno = EINVAL;
        return false;
    }
    return readAt(file, 0, info.st_size, bytes);
}

} // namespace orvantine
