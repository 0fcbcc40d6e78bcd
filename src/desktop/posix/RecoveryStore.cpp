#include "desktop/posix/RecoveryStore.h"

#include "desktop/posix/Checksum.h"
#include "desktop/posix/PrivateFolder.h"
#include "desktop/posix/RecoveryContents.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr qint64 largestInMemory = qint64{16} << 20;
constexpr qint64 copyChunk = qint64{1} << 20;
constexpr qint64 bytesBetweenPrunes = qint64{32} << 20;
constexpr qint64 worthALook = qint64{1} << 20;
constexpr char unfinishedEnd[] = ".neu";

bool syncFolder(const QByteArray& folder)
{
    const Descriptor file(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return file.isOpen() && (::fsync(file.get()) == 0 || errno == EINVAL);
}

/// Its name is on the disk when the folder is.
bool writeWhole(const QByteArray& path, const QByteArray& bytes)
{
    const QByteArray unfinished = path + unfinishedEnd;
    const Descriptor file(::open(unfinished.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (file.isOpen() && writeAt(file, 0, bytes) && ::fsync(file.get()) == 0 &&
        ::rename(unfinished.constData(), path.constData()) == 0)
        return true;
    const int error = errno;
    ::unlink(unfinished.constData());
    errno = error;
    return false;
}

/// A line that was cut off before does not spoil this one.
bool appendLine(const QByteArray& path, QByteArray line)
{
    const Descriptor file(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    struct stat info = {};
    QByteArray last;
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0 ||
        (info.st_size > 0 && !readAt(file, info.st_size - 1, 1, last)))
        return false;
    if (info.st_size > 0 && last != "\n")
        line.prepend('\n');
    if (writeAt(file, info.st_size, line))
        return true;
    const int error = errno;
    static_cast<void>(::ftruncate(file.get(), info.st_size));
    errno = error;
    return false;
}

QByteArray copyName(quint64 sum, const QByteArray& path)
{
    return QByteArray::number(sum, 16).rightJustified(RecoveryStore::SumLength, '0') + '-' +
           path.sliced(path.lastIndexOf('/') + 1).left(120);
}

using HoldsCopy = std::function<bool(const Descriptor& file)>;

/// A name for bytes of that sum: that of a copy that holds them already, or one that nobody has.
struct CopyPlace
{
    QByteArray name;
    bool stands = false;
};

Descriptor openStored(const QByteArray& path)
{
    return Descriptor(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
}

/// The copy of a database has the bytes that its own copies had: they stand under another name already.
bool linkTwin(const QByteArray& folder, const QByteArray& name, const HoldsCopy& holds)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.constData()), ::closedir);
    const QByteArray start = name.first(RecoveryStore::SumLength + 1);
    while (const dirent* const entry = listing ? ::readdir(listing.get()) : nullptr) {
        const QByteArray twin = folder + '/' + entry->d_name;
        if (!QByteArrayView(entry->d_name).startsWith(start) || twin.endsWith(unfinishedEnd))
            continue;
        const Descriptor file = openStored(twin);
        if (file.isOpen() && holds(file))
            return ::link(twin.constData(), (folder + '/' + name).constData()) == 0;
    }
    return false;
}

/// The sum finds a copy, its bytes tell.
std::optional<CopyPlace> placeOf(const QByteArray& folder, quint64 sum, const QByteArray& path, qint64 size,
                                 const HoldsCopy& holds)
{
    for (quint64 more = 0; more < RecoveryStore::TriedSums; ++more) {
        const QByteArray name = copyName(sum + more, path);
        const Descriptor file = openStored(folder + '/' + name);
        if (!file.isOpen() && errno == ENOENT)
            return CopyPlace{name, size >= worthALook && linkTwin(folder, name, holds)};
        if (file.isOpen() && holds(file))
            return CopyPlace{name, true};
    }
    errno = EEXIST;
    return {};
}

bool holdsBytes(const Descriptor& file, const QByteArray& bytes)
{
    QByteArray found;
    return readAt(file, 0, bytes.size() + 1, found) && found == bytes;
}

bool holdsPassage(const Descriptor& file, const Descriptor& from, Passage told)
{
    struct stat info = {};
    if (::fstat(file.get(), &info) != 0 || info.st_size != told.length)
        return false;
    QByteArray found;
    QByteArray chunk;
    for (qint64 done = 0; done < told.length; done += chunk.size()) {
        const qint64 length = std::min(copyChunk, told.length - done);
        if (!readAt(from, told.offset + done, length, chunk) || chunk.isEmpty() ||
            !readAt(file, done, chunk.size(), found) || found != chunk)
            return false;
    }
    return true;
}

bool writeStream(const Descriptor& from, Passage told, const QByteArray& path, quint64& sum)
{
    const Descriptor to(::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!to.isOpen())
        return false;
    QByteArray chunk;
    for (qint64 done = 0; done < told.length; done += chunk.size()) {
        if (!readAt(from, told.offset + done, std::min(copyChunk, told.length - done), chunk) || chunk.isEmpty() ||
            !writeAt(to, done, chunk))
            return false;
        sum = checksum(sum, chunk);
    }
    return ::fsync(to.get()) == 0;
}

} // namespace

RecoveryStore::RecoveryStore(QByteArray folder) : m_folder(std::move(folder)) {}

bool RecoveryStore::keep(const QByteArray& path, const QByteArray& bytes)
{
    if (!preparePrivateFolder(m_folder))
        return false;
    const auto place = placeOf(m_folder, checksum(0, bytes), path, bytes.size(),
                               [&bytes](const Descriptor& file) { return holdsBytes(file, bytes); });
    return place && (place->stands || writeWhole(m_folder + '/' + place->name, bytes)) &&
           enter(place->name, path, bytes.size());
}

Descriptor RecoveryStore::openCopy(const QByteArray& copy) const
{
    return openStored(m_folder + '/' + copy);
}

bool RecoveryStore::keep(const QByteArray& path, const Descriptor& file, Passage told, QByteArray* name)
{
    if (told.length <= largestInMemory) {
        QByteArray bytes;
        return readAt(file, told.offset, told.length, bytes) && bytes.size() == told.length && keep(path, bytes);
    }
    if (!preparePrivateFolder(m_folder))
        return false;
    const QByteArray unfinished = m_folder + "/Copy.neu";
    quint64 sum = 0;
    std::optional<CopyPlace> place;
    if (writeStream(file, told, unfinished, sum))
        place = placeOf(m_folder, sum, path, told.length,
                        [&](const Descriptor& copy) { return holdsPassage(copy, file, told); });
    const bool done =
        place && (place->stands || ::rename(unfinished.constData(), (m_folder + '/' + place->name).constData()) == 0);
    const int error = errno;
    ::unlink(unfinished.constData());
    errno = error;
    if (name != nullptr && place)
        *name = place->name;
    return done && enter(place->name, path, told.length) && (name == nullptr || settle());
}

bool RecoveryStore::enter(const QByteArray& copy, const QByteArray& path, qint64 size)
{
    const bool entered = appendLine(contentsFile(m_folder), lineOf({::time(nullptr), copy, path, m_reason}));
    m_unsettled = m_unsettled || entered;
    m_untilPrune -= size;
    if (m_untilPrune < 0) {
        prune();
        m_untilPrune = bytesBetweenPrunes;
    }
    return entered;
}

bool RecoveryStore::settle()
{
    // Whom a failure concerns takes back what he did: it is none of the next one.
    if (!std::exchange(m_unsettled, false))
        return true;
    const Descriptor contents(::open(contentsFile(m_folder).constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
    return contents.isOpen() && ::fdatasync(contents.get()) == 0 && syncFolder(m_folder);
}

void RecoveryStore::prune()
{
    const QList<KeptCopy> entries = readContents(m_folder).value_or(QList<KeptCopy>());
    const qint64 oldest = ::time(nullptr) - MostSeconds;
    QSet<QByteArray> paths;
    QHash<QByteArray, qint64> kept;
    qint64 total = 0;
    QList<KeptCopy> staying;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        struct stat info = {};
        if (::stat((m_folder + '/' + entry->copy).constData(), &info) != 0)
            continue;
        const bool newestOfPath = !paths.contains(entry->path);
        const qint64 more = kept.contains(entry->copy) ? 0 : info.st_size;
        if (!newestOfPath && (entry->seconds < oldest || total + more > MostBytes))
            continue;
        paths.insert(entry->path);
        kept.insert(entry->copy, info.st_size);
        total += more;
        staying.prepend(*entry);
    }
    if (staying.size() == entries.size())
        return;
    QByteArray text;
    for (const KeptCopy& entry : std::as_const(staying))
        text += lineOf(entry);
    if (!writeWhole(contentsFile(m_folder), text) || !syncFolder(m_folder))
        return;
    for (const KeptCopy& entry : entries)
        if (!kept.contains(entry.copy))
            ::unlink((m_folder + '/' + entry.copy).constData());
}

} // namespace orvantine
