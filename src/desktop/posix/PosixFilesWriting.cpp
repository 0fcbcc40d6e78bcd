#include "desktop/posix/HostFile.h"
#include "desktop/posix/InPlace.h"
#include "desktop/posix/JournalFolders.h"
#include "desktop/posix/PosixFiles.h"
#include "platform/HostText.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr unsigned anyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr qint64 copyChunk = qint64{1} << 20;
// A new file that is larger is not noted byte by byte.
constexpr qint64 largestNoted = qint64{16} << 20;

bool streamCopy(const Descriptor& from, const Descriptor& to, qint64 size)
{
    QByteArray chunk;
    qint64 done = 0;
    while (done < size) {
        if (!readAt(from, done, std::min(copyChunk, size - done), chunk) || chunk.isEmpty() ||
            !writeAt(to, done, chunk))
            return false;
        done += chunk.size();
    }
    return true;
}

} // namespace

void PosixFiles::beginCommand()
{
    if (m_undo.running())
        return;
    m_keptForCommand.clear();
    m_undo.tryAgain();
}

void PosixFiles::noteError(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        m_fault = WriteFault::NoRoom;
        return;
    case EROFS:
        m_fault = WriteFault::ReadOnlyDisk;
        return;
    case EACCES:
    case EPERM:
        m_fault = WriteFault::NoRights;
        return;
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
        m_fault = WriteFault::NoSuchPlace;
        return;
    default:
        m_fault = m_undo.hasPlace() ? WriteFault::Disk : WriteFault::NoSafePlace;
    }
}

bool PosixFiles::act(const std::function<bool()>& action)
{
    m_undo.begin();
    errno = 0;
    bool done = action();
    if (!done) {
        noteError(errno);
        m_undo.fail();
    }
    const bool ended = m_undo.end();
    if (done && !ended)
        noteError(errno);
    return done && ended;
}

bool PosixFiles::endWhole()
{
    const bool failed = m_undo.failed();
    const bool ended = m_undo.end();
    if (!ended && !failed)
        noteError(errno);
    return ended;
}

bool PosixFiles::claimWrite(const QString& path)
{
    const NameLookup::Found found = m_names.find(path);
    if (found.error == 0) {
        const bool own = found.info.st_uid == ::geteuid();
        if (S_ISREG(found.info.st_mode) && (own || ::access(found.path.constData(), W_OK) == 0))
            return m_undo.hasPlace();
        noteError(EACCES);
        return false;
    }
    const std::optional<QByteArray> fresh = isMissing(found.error) ? m_names.creationPath(path) : std::nullopt;
    if (!fresh) {
        noteError(isMissing(found.error) ? ENOENT : found.error);
        return false;
    }
    const QByteArray whole = absolutePath(*fresh);
    const bool possible = ::access(whole.first(whole.lastIndexOf('/') + 1).constData(), W_OK | X_OK) == 0;
    if (!possible)
        noteError(errno);
    return possible;
}

void PosixFiles::failWhole()
{
    if (m_undo.running() && !m_fault)
        m_fault = WriteFault::Disk;
    m_undo.fail();
}

bool PosixFiles::endPart()
{
    return m_undo.endPart();
}

std::optional<FilesTrouble> PosixFiles::trouble() const
{
    if (!m_undo.hasPlace())
        return FilesTrouble::NoSafePlace;
    return m_undo.isStuck() ? std::optional(FilesTrouble::Unfinished) : std::nullopt;
}

QStringList PosixFiles::waiting() const
{
    QStringList paths;
    const QList<QByteArray> waiting = m_undo.waiting();
    for (const QByteArray& path : waiting)
        paths += decode(path);
    return paths;
}

bool PosixFiles::keepOld(const QByteArray& path, const QByteArray& old)
{
    return old.isEmpty() || m_store.keep(absolutePath(path), old);
}

bool PosixFiles::keepBeforeCommand(const Target& target)
{
    struct stat info = {};
    if (target.created || target.size == 0)
        return true;
    if (::fstat(target.file.get(), &info) != 0)
        return false;
    const auto kept = m_keptForCommand.constFind(target.path);
    return (kept != m_keptForCommand.constEnd() && *kept == stampOf(info)) ||
           m_store.keep(absolutePath(target.path), target.file, {0, target.size});
}

void PosixFiles::changedByCommand(const Target& target)
{
    struct stat info = {};
    stampNow(target.file);
    if (::fstat(target.file.get(), &info) == 0)
        m_keptForCommand.insert(target.path, stampOf(info));
}

std::optional<PosixFiles::Target> PosixFiles::openTarget(const QString& path, bool mayCreate, unsigned creationMode)
{
    Target target;
    const NameLookup::Found found = m_names.find(path);
    struct stat info = {};
    if (found.error == 0) {
        // The mode counts even for root: taking the write protection away is a step of its own.
        if (!S_ISREG(found.info.st_mode) || (found.info.st_mode & anyWriteBit) == 0) {
            errno = EACCES;
            return std::nullopt;
        }
        target.path = found.path;
        target.file = openRegular(target.path, O_RDWR, info);
        target.size = info.st_size;
    } else if (!mayCreate || !isMissing(found.error)) {
        errno = found.error;
    } else {
        const std::optional<QByteArray> fresh = m_names.creationPath(path);
        if (!fresh) {
            errno = ENOENT;
            return std::nullopt;
        }
        target.path = *fresh;
        const qint64 mark = m_undo.mark();
        if (!m_undo.willCreate(absolutePath(target.path)))
            return std::nullopt;
        target.file =
            Descriptor(::open(target.path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, creationMode));
        target.created = true;
        // Nothing was made, and what may stand there now is somebody else's.
        if (const int error = errno; !target.file.isOpen()) {
            static_cast<void>(m_undo.takeBack(mark));
            errno = error;
        }
    }
    if (!target.file.isOpen())
        return std::nullopt;
    return target;
}

bool PosixFiles::rewrite(const Target& target, qint64 offset, QByteArrayView old, QByteArrayView head,
                         QByteArrayView rest)
{
    const Pieces fresh{head, rest};
    return m_undo.willWrite(target.file, absolutePath(target.path), offset, old, old.size() - rest.size(), head) &&
           replaceTail(target.file, offset, old, fresh);
}

bool PosixFiles::rewriteWhole(const Target& target, QByteArrayView old, QByteArrayView fresh)
{
    const qsizetype front = commonFront(old, fresh);
    const bool moves = old.size() != fresh.size();
    old = old.sliced(front);
    fresh = fresh.sliced(front);
    const qsizetype back = commonBack(old, fresh);
    return rewrite(target, front, moves ? old : old.chopped(back), fresh.chopped(back),
                   moves ? fresh.last(back) : QByteArrayView());
}

bool PosixFiles::replaceWhole(const QString& path, const QByteArray& bytes, Content content)
{
    const std::optional<Target> target = openTarget(path, true, 0666);
    if (!target)
        return false;
    const qint64 largest = content == Content::TextOnly ? LargestPlaylist : m_options.maximumReadSize;
    QByteArray old;
    errno = EFBIG;
    if (target->size > largest || !readAt(target->file, 0, target->size, old) || old.size() != target->size ||
        (content == Content::TextOnly && !isText(old)))
        return false;
    if (!target->created && old == bytes)
        return true;
    if (!keepOld(target->path, old))
        return false;
    if (!rewriteWhole(*target, old, bytes))
        return false;
    stampNow(target->file);
    return true;
}

bool PosixFiles::writeBytes(const QString& path, const QByteArray& bytes)
{
    return act([&] { return replaceWhole(path, bytes, Content::Any); });
}

bool PosixFiles::writeText(const QString& path, const QString& text)
{
    return act([&] { return replaceWhole(path, encode(text), Content::TextOnly); });
}

bool PosixFiles::appendBytes(const QString& path, const QByteArray& bytes)
{
    return act([&] { return append(path, bytes); });
}

bool PosixFiles::append(const QString& path, const QByteArray& bytes)
{
    const std::optional<Target> target = openTarget(path, true, 0666);
    if (!target || !keepBeforeCommand(*target) || !rewrite(*target, target->size, {}, bytes, {}))
        return false;
    changedByCommand(*target);
    return true;
}

bool PosixFiles::replaceBytes(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes)
{
    return act([&] { return replacePart(path, offset, length, bytes); });
}

bool PosixFiles::replacePart(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes)
{
    const std::optional<Target> target = openTarget(path, false, 0);
    if (!target || offset < 0 || length < 0 || offset > target->size || length > target->size - offset)
        return false;
    // What follows moves only if the length changes.
    const bool moves = bytes.size() != length;
    const qint64 oldLength = moves ? target->size - offset : length;
    QByteArray old;
    errno = EFBIG;
    if (oldLength > m_options.maximumReadSize || !readAt(target->file, offset, oldLength, old) ||
        old.size() != oldLength)
        return false;
    if (!moves && bytes == old)
        return true;
    if (!keepBeforeCommand(*target) || !rewrite(*target, offset, old, bytes, QByteArrayView(old).sliced(length)))
        return false;
    changedByCommand(*target);
    return true;
}

bool PosixFiles::copy(const QString& from, const QString& to)
{
    const NameLookup::Found source = m_names.find(from);
    if (isMissing(source.error) || (source.error == 0 && !S_ISREG(source.info.st_mode)))
        return false;
    return act([&] {
        struct stat info = {};
        const Descriptor reading = openRegular(source.path, O_RDONLY, info);
        if (!reading.isOpen())
            return false;
        const NameLookup::Found existing = m_names.find(to);
        if (existing.error == 0 && existing.info.st_dev == info.st_dev && existing.info.st_ino == info.st_ino)
            return true;
        if (isMissing(existing.error) && info.st_size > largestNoted) {
            const std::optional<QByteArray> fresh = m_names.creationPath(to);
            return fresh && placeCopy(reading, info, absolutePath(*fresh));
        }
        return copyOver(reading, info, to);
    });
}

bool PosixFiles::copyOver(const Descriptor& source, const struct stat& info, const QString& to)
{
    const std::optional<Target> target = openTarget(to, true, info.st_mode & 0666U);
    if (!target)
        return false;
    errno = EFBIG;
    if (std::max<qint64>(info.st_size, target->size) > m_options.maximumReadSize)
        return false;
    QByteArray fresh;
    QByteArray old;
    errno = EIO;
    if (!readAt(source, 0, info.st_size, fresh) || fresh.size() != info.st_size ||
        !readAt(target->file, 0, target->size, old) || old.size() != target->size)
        return false;
    if (old != fresh && (!keepOld(target->path, old) || !rewriteWhole(*target, old, fresh)))
        return false;
    const timespec times[2] = {{0, UTIME_OMIT}, info.st_mtim};
    ::futimens(target->file.get(), times);
    return true;
}

bool PosixFiles::placeCopy(const Descriptor& source, const struct stat& info, const QByteArray& path)
{
    if (!m_undo.willPrepare(path))
        return false;
    const QByteArray scratch = scratchName(path);
    ::unlink(scratch.constData());
    const Descriptor fresh(::open(scratch.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY | O_NOFOLLOW,
                                  info.st_mode & 0666U));
    const timespec times[2] = {{0, UTIME_OMIT}, info.st_mtim};
    const bool done = fresh.isOpen() && streamCopy(source, fresh, info.st_size) &&
                      ::futimens(fresh.get(), times) == 0 && ::fsync(fresh.get()) == 0 &&
                      m_undo.willPlace(path, fresh) && placeAnew(scratch, path);
    if (!done) {
        const int error = errno;
        ::unlink(scratch.constData());
        errno = error;
    }
    return done;
}

bool PosixFiles::remove(const QString& path)
{
    const NameLookup::Found found = m_names.find(path);
    if (isMissing(found.error) || (found.error == 0 && S_ISDIR(found.info.st_mode)))
        return false;
    return act([&] { return removeFile(found); });
}

bool PosixFiles::removeFile(const NameLookup::Found& found)
{
    struct stat entry = {};
    if (found.error != 0 || ::lstat(found.path.constData(), &entry) != 0)
        return false;
    const QByteArray whole = absolutePath(found.path);
    // What a link leads to stays.
    if (S_ISLNK(entry.st_mode) && !m_undo.willRemoveLink(whole))
        return false;
    if (S_ISREG(entry.st_mode)) {
        const Descriptor file = openRegular(found.path, O_RDONLY, entry);
        QByteArray copy;
        if (!file.isOpen() || (entry.st_size > 0 && !m_store.keep(whole, file, {0, entry.st_size}, &copy)) ||
            !m_undo.willRemove(whole, copy))
            return false;
    }
    return ::unlink(found.path.constData()) == 0;
}

bool PosixFiles::keepPassages(const QByteArray& path, const std::vector<Passage>& passages)
{
    struct stat info = {};
    const bool any = std::any_of(passages.begin(), passages.end(), [](const Passage& each) { return each.length > 0; });
    if (!any)
        return true;
    const Descriptor file = openRegular(path, O_RDONLY, info);
    return file.isOpen() &&
           std::all_of(passages.begin(), passages.end(),
                       [&](const Passage& each) {
                           const QByteArray name = path + '.' + QByteArray::number(each.offset);
                           return each.length == 0 || m_store.keep(name, file, each);
                       }) &&
           m_store.settle();
}

bool PosixFiles::replaceAnew(const QString& path, const std::vector<Passage>& gone,
                             const std::function<bool(const QByteArray& scratch)>& change)
{
    const NameLookup::Found found = m_names.find(path);
    if (found.error != 0 && !isMissing(found.error))
        return false;
    return act([&] {
        if (found.error == 0) {
            // The new file stands beside the one that a link leads to.
            const QByteArray real = realPath(absolutePath(found.path));
            return !real.isEmpty() && keepPassages(real, gone) && m_undo.willPrepare(real) && change(scratchName(real));
        }
        const std::optional<QByteArray> fresh = m_names.creationPath(path);
        if (!fresh)
            errno = ENOENT;
        return fresh && m_undo.willPrepare(absolutePath(*fresh)) && change(scratchName(absolutePath(*fresh)));
    });
}

bool PosixFiles::makeFolder(const QString& path)
{
    QString name = path;
    while (name.size() > 1 && (name.endsWith(u'/') || name.endsWith(u'\\')))
        name.chop(1);
    if (m_names.find(name).error == 0)
        return false;
    const std::optional<QByteArray> fresh = m_names.creationPath(name);
    if (!fresh || ::mkdir(fresh->constData(), 0777) != 0)
        return false;
    // Where the disk takes no sync the folder stands all the same.
    const QByteArray whole = absolutePath(*fresh);
    static_cast<void>(syncPath(whole.first(whole.lastIndexOf('/') + 1)));
    return true;
}

bool PosixFiles::clearAttributes(const QString& path)
{
    const NameLookup::Found found = m_names.find(path);
    return found.error == 0 && ::chmod(found.path.constData(), (found.info.st_mode & 07777U) | S_IWUSR) == 0;
}

QByteArray PosixFiles::encode(const QString& text) const
{
    return m_options.codePage.encode(text);
}

QString PosixFiles::decode(const QByteArray& bytes) const
{
    return m_options.codePage.decode(bytes);
}

} // namespace orvantine
