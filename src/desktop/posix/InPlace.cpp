#include "desktop/posix/InPlace.h"

#include <algorithm>
#include <cerrno>

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

bool truncateTo(const Descriptor& file, qint64 size)
{
    int result = 0;
    do {
        result = ::ftruncate(file.get(), size);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

} // namespace orvantine
