#include "desktop/posix/UndoJournal.h"

#include "desktop/posix/Checksum.h"
#include "desktop/posix/InPlace.h"
#include "desktop/posix/PrivateFolder.h"
#include "desktop/posix/RecoveryStore.h"

#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr qint64 longestJournal = qint64{1} << 30;

QByteArray folderOf(const QByteArray& path)
{
    return path.first(std::max<qsizetype>(path.lastIndexOf('/'), 1));
}

bool syncPath(const QByteArray& path)
{
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    // What has gone has nothing to be brought to the disk. A folder of a foreign file system may take no sync.
    return file.isOpen() ? ::fsync(file.get()) == 0 || errno == EINVAL : errno == ENOENT || errno == ENOTDIR;
}

/// Nobody else can have written it: the folder is private, and no other name leads to the file.
bool isOwnFile(const struct stat& info)
{
    return S_ISREG(info.st_mode) && info.st_uid == ::geteuid() && info.st_nlink == 1 && (info.st_mode & 0077) == 0;
}

quint64 currentBoot()
{
    static const quint64 boot = [] {
        const Descriptor file(::open("/proc/sys/kernel/random/boot_id", O_RDONLY | O_CLOEXEC));
        QByteArray text;
        return file.isOpen() && readAt(file, 0, 64, text) ? checksum(1, text) : 0;
    }();
    return boot;
}

qint64 bootSeconds()
{
    timespec wall = {};
    timespec sinceBoot = {};
    ::clock_gettime(CLOCK_REALTIME, &wall);
    ::clock_gettime(CLOCK_BOOTTIME, &sinceBoot);
    return wall.tv_sec - sinceBoot.tv_sec;
}

bool isPlaced(const JournalNote& note, const struct stat& info)
{
    return info.st_size == note.length && info.st_mtim.tv_sec == note.modifiedSeconds &&
           info.st_mtim.tv_nsec == note.modifiedNanoseconds;
}

/// Nobody has taken the rights away since.
bool mayWriteAgain(const struct stat& info)
{
    constexpr mode_t ownRights = S_IRUSR | S_IWUSR;
    return (info.st_mode & ownRights) == ownRights;
}

void setTimes(const Descriptor& file, const std::optional<JournalNote>& origin)
{
    if (!origin)
        return stampNow(file);
    const timespec times[2] = {{0, UTIME_OMIT}, {origin->modifiedSeconds, origin->modifiedNanoseconds}};
    ::futimens(file.get(), times);
}

/// Puts a file where none stands. A return that is broken off leaves at most a file under a name that the next one
/// takes first.
bool makeAnew(const QByteArray& path, const FileHistory& history)
{
    const QByteArray temporary = scratchName(path);
    if (::unlink(temporary.constData()) != 0 && errno != ENOENT)
        return false;
    const Descriptor file(
        ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY, 0600));
    if (!file.isOpen())
        return false;
    bool done = writeAt(file, 0, history.target().tail);
    // A disk without rights takes none.
    done = done && (::fchmod(file.get(), static_cast<mode_t>(history.mode()) & 0777U) == 0 || errno == EPERM);
    if (done)
        setTimes(file, history.origin());
    done = done && ::fsync(file.get()) == 0;
    struct stat info = {};
    done = done && ::lstat(path.constData(), &info) != 0 && errno == ENOENT;
    done = done && ::rename(temporary.constData(), path.constData()) == 0;
    if (!done) {
        const int error = errno;
        ::unlink(temporary.constData());
        errno = error;
    }
    return done;
}

} // namespace

UndoJournal::UndoJournal(QByteArray folder, RecoveryStore& store) : m_folder(std::move(folder)), m_store(store)
{
    if (!open(false) || m_length == 0)
        return;
    m_stuck = m_recovers = true;
    static_cast<void>(settle());
}

bool UndoJournal::hasPlace() const
{
    if (m_file.isOpen() || isPrivateFolder(m_folder))
        return true;
    struct stat info = {};
    QByteArray above = m_folder;
    while (above.size() > 1 && ::lstat(above.constData(), &info) != 0 && errno == ENOENT)
        above = folderOf(above);
    if (above.size() == m_folder.size())
        return !m_folder.isEmpty() && S_ISDIR(info.st_mode) && info.st_uid == ::geteuid();
    return ::access(above.constData(), W_OK | X_OK) == 0;
}

bool UndoJournal::open(bool create)
{
    if (m_file.isOpen())
        return true;
    if (create ? !preparePrivateFolder(m_folder) : !isPrivateFolder(m_folder))
        return false;
    const QByteArray path = m_folder + "/Undo";
    const int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | (create ? O_CREAT : 0);
    Descriptor file(::open(path.constData(), flags, 0600));
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0)
        return false;
    if (!isOwnFile(info)) {
        errno = EACCES;
        return false;
    }
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return false;
    // A new name in the folder.
    if (info.st_size == 0 && create && !syncPath(m_folder))
        return false;
    m_length = info.st_size;
    m_file = std::move(file);
    return true;
}

bool UndoJournal::settle()
{
    if (m_stuck && putBack(0) && cutTo(0))
        m_stuck = m_recovers = false;
    return !m_stuck;
}

void UndoJournal::begin()
{
    if (m_depth++ == 0)
        static_cast<void>(settle());
}

bool UndoJournal::end()
{
    if (m_depth == 0 || --m_depth > 0)
        return !m_failed;
    bool done = !m_failed && !m_stuck && syncTouched() && cutTo(0);
    const int error = errno;
    if (!done && m_length > 0 && !m_stuck) {
        m_stuck = true;
        static_cast<void>(settle());
    }
    m_failed = false;
    m_touched.clear();
    m_coveredFrom.clear();
    errno = error;
    return done;
}

void UndoJournal::beginPart()
{
    begin();
    m_parts.push_back({m_length, std::exchange(m_failed, false)});
}

bool UndoJournal::endPart()
{
    const Part part = m_parts.back();
    m_parts.pop_back();
    if (m_depth == 1)
        return end();
    const bool done = !m_failed;
    if (!done && m_length > part.start) {
        const int error = errno;
        // Where the part cannot be put back the whole change is.
        m_failed = !putBack(part.start) || !cutTo(part.start) || !rememberCovered();
        errno = error;
    } else {
        m_failed = false;
    }
    m_failed = m_failed || part.failedBefore;
    return end() && done;
}

bool UndoJournal::willWrite(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView old,
                            qint64 length, QByteArrayView fresh)
{
    struct stat info = {};
    if (::fstat(file.get(), &info) != 0)
        return false;
    std::vector<JournalNote> notes;
    const auto known = m_coveredFrom.constFind(path);
    const qint64 covered = known != m_coveredFrom.constEnd() ? *known : info.st_size;
    if (known == m_coveredFrom.constEnd() || offset < covered) {
        JournalNote before;
        before.kind = JournalNote::Kind::Before;
        before.path = path;
        before.device = info.st_dev;
        before.inode = info.st_ino;
        before.modifiedSeconds = info.st_mtim.tv_sec;
        before.modifiedNanoseconds = info.st_mtim.tv_nsec;
        before.offset = offset;
        // What is noted already is not noted once more: a command notes no more than the whole file.
        before.bytes = old.first(std::min<qsizetype>(old.size(), covered - offset)).toByteArray();
        const qint64 told = offset + before.bytes.size();
        QByteArray behind;
        if (told < covered && (!readAt(file, told, covered - told, behind) || behind.size() != covered - told))
            return false;
        before.bytes += behind;
        notes.push_back(std::move(before));
    }
    JournalNote step;
    step.kind = JournalNote::Kind::Step;
    step.path = path;
    step.offset = offset;
    step.length = length;
    step.bytes = fresh.toByteArray();
    const Sync sync = notes.empty() ? Sync::No : Sync::Yes;
    notes.push_back(std::move(step));
    if (!add(std::move(notes), sync))
        return false;
    m_coveredFrom.insert(path, std::min(offset, covered));
    return true;
}

bool UndoJournal::willCreate(const QByteArray& path)
{
    JournalNote note;
    note.kind = JournalNote::Kind::Created;
    note.path = path;
    if (!add({std::move(note)}, Sync::Yes))
        return false;
    m_coveredFrom.insert(path, 0);
    return true;
}

bool UndoJournal::willPrepare(const QByteArray& path)
{
    JournalNote note;
    note.kind = JournalNote::Kind::Scratch;
    note.path = scratchName(path);
    return add({std::move(note)}, Sync::Yes);
}

bool UndoJournal::willPlace(const QByteArray& path, const Descriptor& prepared)
{
    struct stat info = {};
    if (::fstat(prepared.get(), &info) != 0)
        return false;
    JournalNote note;
    note.kind = JournalNote::Kind::Placed;
    note.path = path;
    note.length = info.st_size;
    note.modifiedSeconds = info.st_mtim.tv_sec;
    note.modifiedNanoseconds = info.st_mtim.tv_nsec;
    return add({std::move(note)}, Sync::Yes);
}

bool UndoJournal::willRemove(const QByteArray& path)
{
    struct stat info = {};
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
    JournalNote note;
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0 || info.st_size > longestJournal ||
        !readAt(file, 0, info.st_size, note.bytes) || note.bytes.size() != info.st_size)
        return false;
    note.kind = JournalNote::Kind::Removed;
    note.path = path;
    note.mode = info.st_mode & 0777U;
    note.modifiedSeconds = info.st_mtim.tv_sec;
    note.modifiedNanoseconds = info.st_mtim.tv_nsec;
    if (!add({std::move(note)}, Sync::Yes))
        return false;
    m_coveredFrom.remove(path);
    return true;
}

bool UndoJournal::add(std::vector<JournalNote> notes, Sync sync)
{
    if (m_stuck || m_failed || !running() || !open(true))
        return false;
    QByteArray bytes;
    for (JournalNote& note : notes) {
        note.boot = currentBoot();
        bytes += encodedNote(note);
    }
    if (m_length + bytes.size() > longestJournal) {
        errno = EFBIG;
        return false;
    }
    if (!writeAt(m_file, m_length, bytes) || (sync == Sync::Yes && ::fdatasync(m_file.get()) != 0)) {
        const int error = errno;
        static_cast<void>(truncateTo(m_file, m_length));
        errno = error;
        return false;
    }
    m_length += bytes.size();
    for (const JournalNote& note : notes)
        if (!m_touched.contains(note.path))
            m_touched.append(note.path);
    return true;
}

bool UndoJournal::syncTouched() const
{
    QSet<QByteArray> folders;
    for (const QByteArray& path : m_touched) {
        if (!syncPath(path))
            return false;
        folders.insert(folderOf(path));
    }
    return std::all_of(folders.begin(), folders.end(), syncPath);
}

bool UndoJournal::cutTo(qint64 length)
{
    if (m_file.isOpen() && m_length > length) {
        if (!truncateTo(m_file, length))
            return false;
        m_length = length;
    }
    return true;
}

std::optional<std::vector<ReadNote>> UndoJournal::notes() const
{
    QByteArray content;
    if (m_length > longestJournal || !readAt(m_file, 0, m_length, content))
        return {};
    return decodedNotes(content);
}

bool UndoJournal::rememberCovered()
{
    m_coveredFrom.clear();
    const auto standing = notes();
    if (!standing)
        return false;
    for (const ReadNote& read : *standing) {
        const JournalNote& note = read.note;
        if (note.kind == JournalNote::Kind::Before || note.kind == JournalNote::Kind::Created)
            m_coveredFrom.insert(note.path, note.offset);
        else if (note.kind == JournalNote::Kind::Removed)
            m_coveredFrom.remove(note.path);
    }
    return true;
}

bool UndoJournal::putBack(qint64 start)
{
    const auto standing = notes();
    if (!standing)
        return false;
    std::vector<std::pair<QByteArray, FileHistory>> files;
    QHash<QByteArray, std::size_t> places;
    for (const ReadNote& read : *standing) {
        const auto place = places.constFind(read.note.path);
        const std::size_t number = place != places.constEnd() ? *place : files.size();
        if (number == files.size()) {
            files.emplace_back(read.note.path, FileHistory());
            places.insert(read.note.path, number);
        }
        files[number].second.take(read.note);
        if (read.end <= start)
            files[number].second.setTarget();
    }
    bool done = true;
    for (const auto& [path, history] : files) {
        if (!history.isSound() || !history.changedSinceTarget())
            continue;
        if (!m_touched.contains(path))
            m_touched.append(path);
        // The others are put back all the same: the sooner, the less is mixed.
        done = restore(path, history) && done;
    }
    return done && syncTouched();
}

bool UndoJournal::restore(const QByteArray& path, const FileHistory& history)
{
    const FileHistory::State& target = history.target();
    struct stat info = {};
    if (::stat(path.constData(), &info) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        if (!missing || !target.exists || !history.explains({}))
            return missing;
        return makeAnew(path, history);
    }
    if (!S_ISREG(info.st_mode) || info.st_uid != ::geteuid())
        return true;
    if (isScratchName(path))
        return ::unlink(path.constData()) == 0;
    if (history.placed())
        return !isPlaced(*history.placed(), info) || ::unlink(path.constData()) == 0;
    // Behind a loss of power the notes of the last steps may be missing: what nobody has touched since is ours.
    const bool untouched = history.boot() != currentBoot() && info.st_ctim.tv_sec < bootSeconds();
    const qint64 length = info.st_size - history.base();
    if (!mayWriteAgain(info) || (history.inode() != 0 && history.inode() != info.st_ino) || length < 0 ||
        (length > history.longestTail() && !untouched))
        return true;
    const Descriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    QByteArray found;
    if (!file.isOpen() || !readAt(file, history.base(), length, found))
        return false;
    // Somebody else has changed it, and what was there before is in the store.
    if (!untouched && !history.explains(found))
        return true;
    if (m_recovers && info.st_size > 0)
        (void)m_store.keep(path, file, info.st_size);
    if (!target.exists)
        return ::unlink(path.constData()) == 0;
    if (found != target.tail && !replaceTail(file, history.base(), found, {target.tail, {}}))
        return false;
    setTimes(file, history.origin());
    return true;
}

} // namespace orvantine
