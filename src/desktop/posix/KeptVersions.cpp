#include "desktop/posix/KeptVersions.h"

#include "desktop/posix/Checksum.h"
#include "desktop/posix/HostFile.h"
#include "desktop/posix/NameLookup.h"
#include "desktop/posix/RecoveryContents.h"
#include "desktop/posix/RecoveryStore.h"

#include <QCryptographicHash>
#include <QHash>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr qint64 largestRead = qint64{256} << 20;

/// The name of a copy tells of what it holds, by a hash in earlier versions of the program; one of another form tells
/// nothing of it.
bool isWhole(const QByteArray& copy, const QByteArray& bytes)
{
    const qsizetype length = copy.indexOf('-');
    if (length == RecoveryStore::SumLength) {
        bool read = false;
        const quint64 told = copy.first(length).toULongLong(&read, 16);
        return !read || told - checksum(0, bytes) < RecoveryStore::TriedSums;
    }
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    return length != hash.size() || copy.startsWith(hash);
}

} // namespace

std::optional<EarlierVersionList> KeptVersions::list() const
{
    EarlierVersionList found;
    if (m_folder.isEmpty())
        return found;
    const std::optional<QList<KeptCopy>> entries = readContents(m_folder);
    if (!entries)
        return {};
    QHash<QByteArray, std::optional<qint64>> sizes;
    const auto sizeOf = [this, &sizes, &found](const QByteArray& copy) {
        if (const auto known = sizes.constFind(copy); known != sizes.constEnd())
            return *known;
        struct stat info = {};
        std::optional<qint64> size;
        if (::lstat((m_folder + '/' + copy).constData(), &info) == 0 && S_ISREG(info.st_mode)) {
            size = info.st_size;
            found.room += info.st_size;
        }
        sizes.insert(copy, size);
        return size;
    };
    for (auto entry = entries->crbegin(); entry != entries->crend(); ++entry)
        if (const std::optional<qint64> size = sizeOf(entry->copy))
            found.versions.push_back({NameLookup::textOf(entry->path), QDateTime::fromSecsSinceEpoch(entry->seconds),
                                      *size, entry->reason, entry->copy});
    return found;
}

ReadBytes KeptVersions::bytes(const QByteArray& handle) const
{
    ReadBytes result;
    if (m_folder.isEmpty() || handle.isEmpty() || handle.contains('/') || handle.contains('\0'))
        return {ReadOutcome::Missing, {}};
    struct stat info = {};
    const Descriptor file = openRegular(m_folder + '/' + handle, O_RDONLY | O_NOFOLLOW, info);
    if (!file.isOpen())
        return {isMissing(errno) ? ReadOutcome::Missing : ReadOutcome::Failed, {}};
    if (info.st_size > largestRead || !readAt(file, 0, info.st_size, result.bytes) || !isWhole(handle, result.bytes))
        return {ReadOutcome::Failed, {}};
    result.outcome = ReadOutcome::Done;
    return result;
}

} // namespace orvantine
