#include "desktop/posix/RecoveryStore.h"

#include "desktop/posix/PrivateFolder.h"

#include <QCryptographicHash>
#include <QHash>
#include <QList>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr qint64 longestContents = qint64{64} << 20;
constexpr qint64 largestInMemory = qint64{16} << 20;
constexpr qint64 copyChunk = qint64{1} << 20;
constexpr qint64 bytesBetweenPrunes = qint64{32} << 20;

/// One line of the store's table of contents: seconds since 1970, name of the copy, path.
struct Entry
{
    qint64 seconds = 0;
    QByteArray copy;
    QByteArray path;
};

QByteArray lineOf(const Entry& entry)
{
    return QByteArray::number(entry.seconds) + '\t' + entry.copy.toPercentEncoding() + '\t' +
           entry.path.toPercentEncoding("/") + '\n';
}

QByteArray contentsFile(const QByteArray& folder)
{
    return folder + "/Contents";
}

QList<Entry> readContents(const QByteArray& folder)
{
    const Descriptor file(::open(contentsFile(folder).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    QByteArray text;
    QList<Entry> entries;
    struct stat info = {};
    // What cannot be read as a whole tells of no copy that may go.
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0 || info.st_size > longestContents ||
        !readAt(file, 0, info.st_size, text) || text.size() != info.st_size)
        return entries;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> parts = line.split('\t');
        if (parts.size() != 3)
            continue;
        const QByteArray copy = QByteArray::fromPercentEncoding(parts[1]);
        if (!copy.isEmpty() && !copy.contains('/'))
            entries.append({parts[0].toLongLong(), copy, QByteArray::fromPercentEncoding(parts[2])});
    }
    return entries;
}

bool syncFolder(const QByteArray& folder)
{
    const Descriptor file(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return file.isOpen() && (::fsync(file.get()) == 0 || errno == EINVAL);
}

bool writeWhole(const QByteArray& path, const QByteArray& bytes)
{
    const QByteArray unfinished = path + ".neu";
    const Descriptor file(::open(unfinished.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (file.isOpen() && writeAt(file, 0, bytes) && ::fsync(file.get()) == 0 &&
        ::rename(unfinished.constData(), path.constData()) == 0)
        return syncFolder(path.first(path.lastIndexOf('/')));
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
    if (writeAt(file, info.st_size, line) && ::fdatasync(file.get()) == 0)
        return true;
    const int error = errno;
    static_cast<void>(::ftruncate(file.get(), info.st_size));
    errno = error;
    return false;
}

QByteArray copyName(const QByteArray& hash, const QByteArray& path)
{
    return hash.toHex() + '-' + path.sliced(path.lastIndexOf('/') + 1).left(120);
}

bool stands(const QByteArray& path, qint64 size)
{
    struct stat info = {};
    return ::stat(path.constData(), &info) == 0 && info.st_size == size;
}

bool writeStream(const Descriptor& from, Passage told, const QByteArray& path, QCryptographicHash& hash)
{
    const Descriptor to(::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!to.isOpen())
        return false;
    QByteArray chunk;
    for (qint64 done = 0; done < told.length; done += chunk.size()) {
        if (!readAt(from, told.offset + done, std::min(copyChunk, told.length - done), chunk) || chunk.isEmpty() ||
            !writeAt(to, done, chunk))
            return false;
        hash.addData(chunk);
    }
    return ::fsync(to.get()) == 0;
}

} // namespace

RecoveryStore::RecoveryStore(QByteArray folder) : m_folder(std::move(folder)) {}

bool RecoveryStore::keep(const QByteArray& path, const QByteArray& bytes)
{
    if (!preparePrivateFolder(m_folder))
        return false;
    const QByteArray copy = copyName(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256), path);
    const QByteArray whole = m_folder + '/' + copy;
    return (stands(whole, bytes.size()) || writeWhole(whole, bytes)) && enter(copy, path, bytes.size());
}

Descriptor RecoveryStore::openCopy(const QByteArray& copy) const
{
    return Descriptor(
        ::open((m_folder + '/' + copy).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
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
    QCryptographicHash hash(QCryptographicHash::Sha256);
    bool done = writeStream(file, told, unfinished, hash);
    const QByteArray copy = copyName(hash.result(), path);
    const QByteArray whole = m_folder + '/' + copy;
    done = done && (stands(whole, told.length) || ::rename(unfinished.constData(), whole.constData()) == 0) &&
           syncFolder(m_folder);
    const int error = errno;
    ::unlink(unfinished.constData());
    errno = error;
    if (name != nullptr)
        *name = copy;
    return done && enter(copy, path, told.length);
}

bool RecoveryStore::enter(const QByteArray& copy, const QByteArray& path, qint64 size)
{
    const bool entered = appendLine(contentsFile(m_folder), lineOf({::time(nullptr), copy, path}));
    m_untilPrune -= size;
    if (m_untilPrune < 0) {
        prune();
        m_untilPrune = bytesBetweenPrunes;
    }
    return entered;
}

void RecoveryStore::prune()
{
    const QList<Entry> entries = readContents(m_folder);
    const qint64 oldest = ::time(nullptr) - MostSeconds;
    QSet<QByteArray> paths;
    QHash<QByteArray, qint64> kept;
    qint64 total = 0;
    QList<Entry> staying;
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
    for (const Entry& entry : std::as_const(staying))
        text += lineOf(entry);
    if (!writeWhole(contentsFile(m_folder), text))
        return;
    for (const Entry& entry : entries)
        if (!kept.contains(entry.copy))
            ::unlink((m_folder + '/' + entry.copy).constData());
}

} // namespace orvantine
