#include "desktop/posix/InPlace.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

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

enum class Cut { No, Yes };

/// The errno of the failure, not of the way back.
bool takeBack(const Descriptor& file, qint64 offset, QByteArrayView old, Cut cut)
{
    const int error = errno;
    static_cast<void>(writeAt(file, offset, old));
    if (cut == Cut::Yes)
        static_cast<void>(truncateTo(file, offset + old.size()));
    errno = error;
    return false;
}

} // namespace

qsizetype commonFront(QByteArrayView one, QByteArrayView other)
{
    constexpr qsizetype block = 4096;
    const qsizetype longest = std::min(one.size(), other.size());
    qsizetype common = 0;
    while (longest - common >= block && std::memcmp(one.data() + common, other.data() + common, block) == 0)
        common += block;
    while (common < longest && one[common] == other[common])
        ++common;
    return common;
}

qsizetype commonBack(QByteArrayView one, QByteArrayView other)
{
    constexpr qsizetype block = 4096;
    const qsizetype longest = std::min(one.size(), other.size());
    const auto same = [&](qsizetype from) {
        return std::memcmp(one.data() + one.size() - from, other.data() + other.size() - from, block) == 0;
    };
    qsizetype common = 0;
    while (longest - common >= block && same(common + block))
        common += block;
    while (common < longest && one[one.size() - 1 - common] == other[other.size() - 1 - common])
        ++common;
    return common;
}

bool replaceTail(const Descriptor& file, qint64 offset, QByteArrayView old, const Pieces& fresh)
{
    const qint64 common = std::min(qint64{old.size()}, fresh.size());
    if (!writeRange(file, offset, fresh, common, fresh.size()))
        return takeBack(file, offset + old.size(), {}, Cut::Yes);
    if (!writeRange(file, offset, fresh, 0, common) ||
        (fresh.size() < old.size() && !truncateTo(file, offset + fresh.size())))
        return takeBack(file, offset, old, fresh.size() != old.size() ? Cut::Yes : Cut::No);
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
