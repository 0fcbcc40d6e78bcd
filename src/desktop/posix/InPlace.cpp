#include "desktop/posix/InPlace.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

/// The bytes from `from` to `to` of the pieces, which begin at `offset` of the file.
bool writeRange(const Descriptor& file, qint64 offset, const Pieces& pieces, qint64 from, qint64 to)
{
    const qint64 cut = pieces.head.size();
    if (from < cut && !writeAt(file, offset + from, pieces.head.sliced(from, std::min(to, cut) - from)))
        return false;
    const qint64 start = std::max(from, cut);
    return start >= to || writeAt(file, offset + start, pieces.rest.sliced(start - cut, to - start));
}

/// The errno of the failure, not of the way back.
bool takeBack(const Descriptor& file, qint64 offset, QByteArrayView old)
{
    const int error = errno;
    static_cast<void>(writeAt(file, offset, old));
    static_cast<void>(truncateTo(file, offset + old.size()));
    errno = error;
    return false;
}

} // namespace

bool replaceTail(const Descriptor& file, qint64 offset, QByteArrayView old, const Pieces& fresh)
{
    const qint64 common = std::min(qint64{old.size()}, fresh.size());
    if (!writeRange(file, offset, fresh, common, fresh.size()))
        return takeBack(file, offset + old.size(), {});
    if (!writeRange(file, offset, fresh, 0, common) ||
        (fresh.size() < old.size() && !truncateTo(file, offset + fresh.size())))
        return takeBack(file, offset, old);
    return true;
}

bool placeAnew(const QByteArray& scratch, const QByteArray& path)
{
    if (::renameat2(AT_FDCWD, scratch.constData(), AT_FDCWD, path.constData(), RENAME_NOREPLACE) == 0)
        return true;
    // Old and foreign file systems know neither that nor a second name.
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (::link(scratch.constData(), path.constData()) == 0)
        return ::unlink(scratch.constData()) == 0;
    if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS && errno != EMLINK)
        return false;
    struct stat info = {};
    if (::lstat(path.constData(), &info) == 0)
        errno = EEXIST;
    else if (errno == ENOENT)
        return ::rename(scratch.constData(), path.constData()) == 0;
    return false;
}

bool truncateTo(const Descriptor& file, qint64 size)
{
    int result = 0;
    do {
        result = ::ftruncate(file.get(), size);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

} // namespace orvantine
