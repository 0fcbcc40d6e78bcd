#include "desktop/posix/HostFile.h"
#include "desktop/posix/InPlace.h"
#include "desktop/posix/JournalFolders.h"
#include "desktop/posix/RecoveryStore.h"
#include "desktop/posix/UndoJournal.h"

#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace orvantine {
namespace {

constexpr qint64 longestReadable = qint64{512} << 20;
constexpr qint64 copyChunk = qint64{1} << 20;

bool isPlaced(const JournalNote& note, const struct stat& info)
{
    return info.st_ino == note.inode && info.st_size == note.length && info.st_mtim.tv_sec == note.modifiedSeconds &&
           info.st_mtim.tv_nsec == note.modifiedNanoseconds;
}

/// Nobody has taken the rights away since.
bool mayWriteAgain(const struct stat& info)
{
    constexpr mode_t ownRights = S_IRUSR | S_IWUSR;
    return (info.st_mode & ownRights) == ownRights;
}

/// False where the folder may be away, and the file with it.
bool folderIsKnown(const QByteArray& path, const FileHistory& history)
{
    QByteArray folder = folderOf(path);
    struct stat info = {};
    struct statfs system = {};
    bool stands = true;
    while (::stat(folder.constData(), &info) != 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            return false;
        stands = false;
        folder = folderOf(folder);
    }
    if (::statfs(folder.constData(), &system) != 0 || static_cast<quint32>(system.f_type) != history.fileSystem())
        return false;
    // Where it is missing its disk must be there.
    if (!stands)
        return info.st_dev == history.folderDevice();
    return history.folderInode() == 0 || history.folderInode() == info.st_ino || !inodesSurvive(history.fileSystem());
}

void setTimes(const Descriptor& file, const std::optional<JournalNote>& origin)
{
    if (!origin)
        return stampNow(file);
    const timespec times[2] = {{0, UTIME_OMIT}, {origin->modifiedSeconds, origin->modifiedNanoseconds}};
    ::futimens(file.get(), times);
}

bool synced(const Descriptor& file)
{
    return ::fsync(file.get()) == 0 || errno == EINVAL;
}

bool copyWhole(const Descriptor& from, qint64 size, const Descriptor& to)
{
    QByteArray chunk;
    for (qint64 done = 0; done < size; done += chunk.size())
        if (!readAt(from, done, std::min(copyChunk, size - done), chunk) || chunk.isEmpty() ||
            !writeAt(to, done, chunk))
            return false;
    return true;
}

/// Puts a file where none stands. A return that is broken off leaves at most a file under a name that the next one
/// takes first.
bool makeAnew(const QByteArray& path, const FileHistory& history, const RecoveryStore& store)
{
    const QByteArray temporary = scratchName(path);
    if (::unlink(temporary.constData()) != 0 && errno != ENOENT)
        return false;
    const Descriptor file(
        ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY, 0600));
    if (!file.isOpen())
        return false;
    const auto& kept = history.kept();
    bool done =
        kept ? copyWhole(store.openCopy(kept->bytes), kept->length, file) : writeAt(file, 0, history.target().tail);
    // A disk without rights takes none.
    done = done &&
           (::fchmod(file.get(), static_cast<mode_t>(history.mode().value_or(0600)) & 0777U) == 0 || errno == EPERM);
    if (done)
        setTimes(file, history.origin());
    done = done && ::fsync(file.get()) == 0;
    if (done && placeAnew(temporary, path))
        return true;
    // What has come into being there meanwhile is somebody else's.
    const bool theirs = done && errno == EEXIST;
    const int error = errno;
    ::unlink(temporary.constData());
    errno = error;
    return theirs;
}

/// The link stands again, or something of somebody else.
bool linkAgain(const QByteArray& path, const FileHistory& history)
{
    return !history.link() || ::symlink(history.link()->constData(), path.constData()) == 0 || errno == EEXIST ||
           isMissing(errno);
}

} // namespace

std::optional<ReadNote> UndoJournal::read(qint64 at, bool& failed) const
{
    const JournalBytes source = [this](qint64 offset, qint64 length, QByteArray& bytes) {
        return readAt(m_file, offset, length, bytes);
    };
    return noteAt(source, at, m_length, failed);
}

std::optional<UndoJournal::Index> UndoJournal::index() const
{
    Index files;
    QHash<QByteArray, std::size_t> places;
    if (m_length > longestReadable)
        return {};
    bool failed = false;
    qint64 at = 0;
    while (const std::optional<ReadNote> note = read(at, failed)) {
        const auto place = places.constFind(note->note.path);
        const std::size_t number = place != places.constEnd() ? *place : files.size();
        if (number == files.size()) {
            files.emplace_back(note->note.path, std::vector<qint64>());
            places.insert(note->note.path, number);
        }
        files[number].second.push_back(at);
        at = note->end;
    }
    return failed ? std::nullopt : std::optional(std::move(files));
}

bool UndoJournal::rememberCovered()
{
    m_covered.clear();
    m_touched.clear();
    m_folders.clear();
    m_names.clear();
    bool failed = false;
    qint64 at = 0;
    while (const std::optional<ReadNote> read = UndoJournal::read(at, failed)) {
        const JournalNote& note = read->note;
        at = read->end;
        remember(note);
        if (note.kind == JournalNote::Kind::Before && m_covered.contains(note.path)) {
            Covered& covered = m_covered[note.path];
            covered.from = std::min(covered.from, note.offset);
            covered.to.reset();
        } else if (note.kind == JournalNote::Kind::Before || note.kind == JournalNote::Kind::Created) {
            const qint64 end = note.offset + note.bytes.size();
            m_covered.insert(note.path,
                             {note.offset, note.length > end ? std::optional(end) : std::nullopt, note.length});
        } else if (note.kind == JournalNote::Kind::Removed || note.kind == JournalNote::Kind::Kept) {
            m_covered.remove(note.path);
        } else if (note.kind == JournalNote::Kind::Step) {
            m_names.insert({note.device, note.inode}, note.path);
        }
    }
    return !failed && at == m_length;
}

bool UndoJournal::putBack(qint64 start)
{
    const auto files = index();
    if (!files)
        return false;
    m_away.clear();
    m_failedReturn = true;
    m_rewrites = std::exchange(m_syncFailed, false) || m_rewrites || m_recovers;
    bool done = true;
    bool othersDone = true;
    QSet<QByteArray> folders;
    for (const auto& [path, places] : *files) {
        FileHistory history;
        for (const qint64 at : places) {
            bool failed = false;
            const std::optional<ReadNote> note = read(at, failed);
            if (!note)
                return false;
            history.take(note->note);
            if (note->end <= start)
                history.setTarget();
        }
        if (!history.changedSinceTarget())
            continue;
        // Notes that contradict one another lead nowhere, but they stay for whoever looks.
        if (!history.isSound()) {
            othersDone = m_store.keep(m_folder + m_name, m_file, {0, m_length}) && m_store.settle() && othersDone;
            continue;
        }
        // The others are put back all the same: the sooner, the less is mixed.
        done = restore(path, history);
        othersDone = othersDone && (done || m_away.contains(path));
        folders.insert(folderOf(path));
    }
    for (const QByteArray& folder : std::as_const(folders))
        m_syncFailed = m_syncFailed || (!syncPath(folder) && !isMissing(errno));
    m_failedReturn = !othersDone || m_syncFailed;
    return !m_failedReturn && m_away.isEmpty();
}

bool UndoJournal::moveAway()
{
    m_waiting.reset();
    QByteArray bytes;
    bool failedToRead = false;
    {
        UndoJournal standing(m_folder, m_store, "/Waiting");
        bool failed = false;
        qint64 at = 0;
        while (const std::optional<ReadNote> note = standing.read(at, failed)) {
            at = note->end;
            // Those that were moved before the program died once more come from here.
            if (m_away.contains(note->note.path))
                continue;
            bytes += encodedNote(note->note);
        }
        if (failed || (standing.m_stuck && !standing.m_file.isOpen()))
            failedToRead = true;
    }
    bool failed = false;
    qint64 at = 0;
    while (const std::optional<ReadNote> note = read(at, failed)) {
        at = note->end;
        if (m_away.contains(note->note.path))
            bytes += encodedNote(note->note);
    }
    const QByteArray place = m_folder + "/Waiting";
    const QByteArray fresh = place + ".neu";
    ::unlink(fresh.constData());
    const Descriptor file(::open(fresh.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
    const timespec times[2] = {{0, UTIME_OMIT}, m_lastWritten};
    const bool moved = !failed && !failedToRead && file.isOpen() && writeAt(file, 0, bytes) &&
                       ::futimens(file.get(), times) == 0 && ::fsync(file.get()) == 0 &&
                       ::rename(fresh.constData(), place.constData()) == 0 && syncPath(m_folder);
    openWaiting();
    return moved;
}

bool UndoJournal::isUntouched(const FileHistory& history, const struct stat& info) const
{
    // Behind a loss of power the notes of the last steps may be missing.
    constexpr qint64 secondsBehindLastNote = 60;
    return history.boot() != currentBoot() && !history.wasMade() && info.st_uid == ::geteuid() &&
           info.st_ctim.tv_sec <= m_lastWritten.tv_sec + secondsBehindLastNote;
}

bool UndoJournal::noteFound(const QByteArray& path, const QByteArray& found)
{
    JournalNote note;
    note.kind = JournalNote::Kind::Found;
    note.path = path;
    note.bytes = found;
    note.boot = currentBoot();
    const QByteArray bytes = encodedNote(note);
    const timespec times[2] = {{0, UTIME_OMIT}, m_lastWritten};
    if (!writeAt(m_file, m_length, bytes) || ::futimens(m_file.get(), times) != 0 || ::fdatasync(m_file.get()) != 0)
        return false;
    m_length += bytes.size();
    return true;
}

bool UndoJournal::restore(const QByteArray& path, const FileHistory& history)
{
    struct stat info = {};
    if (history.link()) {
        const bool stands = ::lstat(path.constData(), &info) == 0;
        if (!stands && !isMissing(errno))
            return false;
        if (!stands && !folderIsKnown(path, history)) {
            m_away.insert(path);
            return false;
        }
        if (!stands && !linkAgain(path, history))
            return false;
        // What it leads to was not changed.
        if (!history.target().exists && (!stands || S_ISLNK(info.st_mode)))
            return true;
    }
    if (::stat(path.constData(), &info) == 0)
        return restoreStanding(path, history, info);
    if (!isMissing(errno))
        return false;
    if (!folderIsKnown(path, history)) {
        m_away.insert(path);
        return false;
    }
    // With its folder it has gone by somebody else's hand.
    if (!history.target().exists || !history.explains({}, true) || ::access(folderOf(path).constData(), F_OK) != 0)
        return true;
    return makeAnew(path, history, m_store);
}

bool UndoJournal::restoreStanding(const QByteArray& path, const FileHistory& history, const struct stat& info)
{
    const FileHistory::State& target = history.target();
    if (!S_ISREG(info.st_mode))
        return true;
    if (isScratchName(path))
        return ::unlink(path.constData()) == 0;
    if (history.placed())
        return !isPlaced(*history.placed(), info) || ::unlink(path.constData()) == 0;
    const bool isNumbered = history.inode() == info.st_ino;
    // It has not gone yet.
    if (history.kept() && !history.wasMade() && isNumbered && info.st_size == history.kept()->length)
        return true;
    const bool sameFile = isNumbered || history.inode() == 0 || !inodesSurvive(history.fileSystem());
    const bool untouched = sameFile && isUntouched(history, info);
    // Nothing of ours has given it another size.
    if (history.fixedSize() && history.fixedSize() != info.st_size)
        return true;
    const qint64 length = history.fixedSize() ? history.longestTail() : info.st_size - history.base();
    if (!mayWriteAgain(info) || length < 0 || (length > history.longestTail() && !untouched))
        return true;
    const Descriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    QByteArray found;
    if (!file.isOpen() || !readAt(file, history.base(), length, found) || found.size() != length)
        return false;
    const bool explained = history.explains(found, sameFile);
    // Somebody else has changed it, and what was there before is in the store.
    if (!explained && !untouched)
        return true;
    const bool safe =
        !m_recovers || info.st_size == 0 || (m_store.keep(path, file, {0, info.st_size}) && m_store.settle());
    if (!explained && (!safe || !noteFound(path, found)))
        return false;
    if (!target.exists || history.kept())
        return ::unlink(path.constData()) == 0 &&
               (target.exists ? makeAnew(path, history, m_store) : linkAgain(path, history));
    if ((m_rewrites || found != target.tail) && !replaceTail(file, history.base(), found, {target.tail, {}}))
        return false;
    if (history.mode())
        ::fchmod(file.get(), static_cast<mode_t>(*history.mode()) & 0777U);
    setTimes(file, history.origin());
    const bool safelyBack = synced(file);
    m_syncFailed = m_syncFailed || !safelyBack;
    return safelyBack;
}

} // namespace orvantine
