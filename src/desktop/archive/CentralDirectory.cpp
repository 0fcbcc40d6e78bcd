#include "desktop/archive/CentralDirectory.h"

#include <QtEndian>

#include <algorithm>
#include <optional>

namespace orvantine {
namespace {

constexpr qint64 endLength = 22;
constexpr qint64 longestComment = 65535;
constexpr qint64 largestDirectory = qint64{64} << 20;

struct Directory
{
    qint64 offset = 0;
    qint64 length = 0;
};

template <class Number>
qint64 numberAt(QByteArrayView bytes, qsizetype offset)
{
    if (offset < 0 || offset + qsizetype{sizeof(Number)} > bytes.size())
        return -1;
    const auto number = qFromLittleEndian<Number>(bytes.data() + offset);
    return number > Number(largestDirectory) && sizeof(Number) > 4 ? -1 : static_cast<qint64>(number);
}

/// Where it says so in 64 bits.
std::optional<Directory> largeDirectory(const ArchiveReader& read, qint64 end)
{
    constexpr qint64 locatorLength = 20;
    constexpr qint64 recordLength = 56;
    const QByteArray locator = read(end - locatorLength, locatorLength);
    if (end < locatorLength || !locator.startsWith("PK\6\7") || locator.size() != locatorLength)
        return {};
    const auto place = qFromLittleEndian<quint64>(locator.constData() + 8);
    if (place > static_cast<quint64>(end))
        return {};
    const QByteArray record = read(static_cast<qint64>(place), recordLength);
    if (!record.startsWith("PK\6\6") || record.size() != recordLength)
        return {};
    const auto offset = qFromLittleEndian<quint64>(record.constData() + 48);
    return offset > place ? std::nullopt
                          : std::optional(Directory{static_cast<qint64>(offset), numberAt<quint64>(record, 40)});
}

std::optional<Directory> directoryOf(const ArchiveReader& read, qint64 size)
{
    constexpr qint64 elsewhere = 0xffffffff;
    const qint64 start = std::max<qint64>(size - endLength - longestComment, 0);
    const QByteArray tail = read(start, size - start);
    const qsizetype end = tail.lastIndexOf("PK\5\6", std::max<qsizetype>(tail.size() - endLength, 0));
    if (end < 0)
        return {};
    const Directory found{numberAt<quint32>(tail, end + 16), numberAt<quint32>(tail, end + 12)};
    return found.offset == elsewhere || found.length == elsewhere ? largeDirectory(read, start + end)
                                                                  : std::optional(found);
}

} // namespace

bool namesAreClean(const ArchiveReader& read, qint64 size)
{
    constexpr qsizetype headLength = 46;
    const std::optional<Directory> directory = directoryOf(read, size);
    if (!directory || directory->offset < 0 || directory->length < 0 || directory->length > largestDirectory)
        return false;
    const QByteArray bytes = read(directory->offset, directory->length);
    if (bytes.size() != directory->length)
        return false;
    QByteArrayView left(bytes);
    while (left.startsWith("PK\1\2")) {
        const qint64 nameLength = numberAt<quint16>(left, 28);
        const qint64 length = headLength + nameLength + numberAt<quint16>(left, 30) + numberAt<quint16>(left, 32);
        if (left.size() < headLength || length > left.size())
            return false;
        const QByteArrayView name = left.sliced(headLength, nameLength);
        if (std::any_of(name.begin(), name.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x20; }))
            return false;
        left = left.sliced(length);
    }
    return left.isEmpty();
}

} // namespace orvantine
