#include "desktop/posix/RecoveryContents.h"

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/HostFile.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr qint64 longestContents = qint64{64} << 20;

} // namespace

QByteArray lineOf(const KeptCopy& entry)
{
    QByteArray line = QByteArray::number(entry.seconds) + '\t' + entry.copy.toPercentEncoding() + '\t' +
                      entry.path.toPercentEncoding("/");
    if (!entry.reason.isEmpty())
        line += '\t' + entry.reason.toUtf8().toPercentEncoding(" ");
    return line + '\n';
}

QByteArray contentsFile(const QByteArray& folder)
{
    return folder + "/Contents";
}

std::optional<QList<KeptCopy>> readContents(const QByteArray& folder)
{
    const Descriptor file(::open(contentsFile(folder).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    QList<KeptCopy> entries;
    if (!file.isOpen())
        return isMissing(errno) ? std::optional(entries) : std::nullopt;
    QByteArray text;
    struct stat info = {};
    if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > longestContents ||
        !readAt(file, 0, info.st_size, text) || text.size() != info.st_size)
        return {};
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> parts = line.split('\t');
        // A table of old tells no reason.
        if (parts.size() < 3 || parts.size() > 4)
            continue;
        const QByteArray copy = QByteArray::fromPercentEncoding(parts[1]);
        if (!copy.isEmpty() && !copy.contains('/'))
            entries.append({parts[0].toLongLong(), copy, QByteArray::fromPercentEncoding(parts[2]),
                            QString::fromUtf8(QByteArray::fromPercentEncoding(parts.value(3)))});
    }
    return entries;
}

} // namespace orvantine
