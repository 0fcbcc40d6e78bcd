#include "desktop/posix/UndoJournal.h"

#include "desktop/posix/InPlace.h"
#include "desktop/posix/JournalFolders.h"
#include "desktop/posix/PrivateFolder.h"
#include "desktop/posix/RecoveryStore.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace orvantine {
namespace {

constexpr qint64 longestJournal = qint64{256} << 20;

/// Nobody else can have written it: the folder is private, and no other name leads to the file.
bool isOwnFile(const struct stat& info)
{
    return S_ISREG(info.st_mode) && info.st_uid == ::geteuid() && info.st_nlink == 1 && (info.st_mode & 0077) == 0;
}

/// The folder that a file stands in, or would.
bool tellFolder(JournalNote& note)
{
    const QByteArray folder = folderOf(note.path);
    struct stat info = {};
    struct stat above = {};
    struct statfs system = {};
    if (::stat(folder.constData(), &info) != 0 || ::stat((folder + "/..").constData(), &above) != 0 ||
        ::statfs(folder.constData(), &system) != 0)
        return false;
    note.folderInode = info.st_dev != above.st_dev ? info.st_ino : 0;
    note.folderDevice = info.st_dev;
    note.fileSystem = static_cast<quint32>(system.f_type);
    return true;
}

/// Notes on their way to the journal: small ones together, the bytes of large ones as they lie in memory.
class NoteWriter
{
public:
    NoteWriter(const Descriptor& file, qint64 at) : m_file(file), m_at(at) {}

    bool add(const JournalNote& note)
    {
        constexpr qsizetype large = qsizetype{1} << 20;
        m_gathered += encodedHead(note);
        if (end() + note.bytes.size() > longestJournal) {
            errno = EFBIG;
            return false;
        }
        if (note.bytes.size() < large) {
            m_gathered += note.bytes;
            return true;
        }
        if (!finish() || !writeAt(m_file, m_at, note.bytes))
            return false;
        m_at += note.bytes.size();
        return true;
    }
    bool finish()
    {
        if (!writeAt(m_file, m_at, m_gathered))
            return false;
        m_at += m_gathered.size();
        m_gathered.clear();
        return true;
    }
    [[nodiscard]] qint64 end() const { return m_at + m_gathered.size(); }

private:
    const Descriptor& m_file;
    qint64 m_at;
    QByteArray m_gathered;
};

} // namespace

UndoJournal::UndoJournal(QByteArray folder, RecoveryStore& store, const char* name)
    : m_folder(std::move(folder)), m_name(name), m_store(store)
{
    const Opened opened = openStanding();
    m_stuck = m_recovers = opened == Opened::No || (opened == Opened::Yes && m_length > 0);
}

UndoJournal::UndoJournal(QByteArray folder, RecoveryStore& store) : UndoJournal(std::move(folder), store, "/Undo")
{
    openWaiting();
    m_stuck = m_stuck || (m_waiting->m_stuck && !m_waiting->onlyWaits());
    tryAgain();
}

UndoJournal::~UndoJournal() = default;

void UndoJournal::openWaiting()
{
    m_waiting.reset(new UndoJournal(m_folder, m_store, "/Waiting"));
    if (m_waiting->m_stuck)
        static_cast<void>(m_waiting->settle());
}

QList<QByteArray> UndoJournal::waiting() const
{
    QList<QByteArray> paths = m_waiting->m_stuck ? m_waiting->m_away.values() : QList<QByteArray>();
    paths.removeIf(isScratchName);
    std::sort(paths.begin(), paths.end());
    return paths;
}

void UndoJournal::tryAgain()
{
    if (m_stuck && !m_readWhileStuck)
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

UndoJournal::Opened UndoJournal::openStanding()
{
    const auto failed = [] { return errno == ENOENT || errno == ENOTDIR ? Opened::Missing : Opened::No; };
    struct stat info = {};
    if (m_folder.isEmpty())
        return Opened::Missing;
    if (::lstat(m_folder.constData(), &info) != 0)
        return failed();
    // Where others may write is no place for a journal, and what lies there is not believed.
    const bool mayBeOurs = S_ISDIR(info.st_mode) && info.st_uid == ::geteuid();
    const QByteArray path = m_folder + m_name;
    if (!isPrivateFolder(m_folder)) {
        if (!mayBeOurs || ::lstat(path.constData(), &info) != 0)
            return mayBeOurs ? failed() : Opened::Missing;
        errno = EACCES;
        return Opened::No;
    }
    Descriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0)
        return failed();
    if (!isOwnFile(info)) {
        errno = EACCES;
        return Opened::No;
    }
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return Opened::No;
    m_length = info.st_size;
    m_lastWritten = info.st_mtim;
    m_file = std::move(file);
    return Opened::Yes;
}

bool UndoJournal::openForNotes()
{
    if (m_file.isOpen())
        return true;
    if (!preparePrivateFolder(m_folder))
        return false;
    Opened opened = openStanding();
    if (opened == Opened::Missing) {
        const Descriptor fresh(::open((m_folder + m_name).constData(),
                                      O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY, 0600));
        // A new name in the folder.
        if (!fresh.isOpen() || !syncPath(m_folder))
            return false;
        opened = openStanding();
    }
    if (opened != Opened::Yes || m_length == 0)
        return opened == Opened::Yes;
    // What stands there is of another run, whatever kept the start from seeing it.
    m_stuck = m_recovers = m_readWhileStuck = true;
    errno = EIO;
    return false;
}

bool UndoJournal::settle()
{
    if (m_waiting && m_waiting->m_stuck && !m_waiting->onlyWaits()) {
        openWaiting();
        if (m_waiting->m_stuck && !m_waiting->onlyWaits())
            return false;
    }
    if (m_stuck && !m_file.isOpen() && openStanding() == Opened::Missing)
        m_stuck = m_recovers = false;
    if (m_stuck && m_file.isOpen() && (putBack(0) || (m_waiting && onlyWaits() && moveAway())) && cutTo(0))
        m_stuck = m_recovers = m_rewrites = false;
    return !m_stuck;
}

void UndoJournal::begin()
{
    if (m_depth++ == 0)
        tryAgain();
}

bool UndoJournal::end()
{
    if (m_depth == 0 || --m_depth > 0)
        return !m_failed;
    const bool settled = m_store.settle();
    bool done = !m_failed && !m_stuck && settled && syncTouched() && cutTo(0);
    const int error = errno;
    if (!done && m_length > 0 && !m_stuck) {
        m_stuck = true;
        m_readWhileStuck = false;
        tryAgain();
    }
    m_failed = false;
    m_touched.clear();
    m_folders.clear();
    m_covered.clear();
    m_names.clear();
    errno = error;
    return done;
}

void UndoJournal::beginPart()
{
    begin();
    // Behind a step that failed nothing is done, in a part neither.
    m_parts.push_back({m_length, m_failed});
}

bool UndoJournal::endPart()
{
    const Part part = m_parts.back();
    m_parts.pop_back();
    if (m_depth == 1)
        return end();
    if (part.failedBefore) {
        end();
        return false;
    }
    const bool done = !m_failed;
    if (!done && m_length > part.start) {
        const int error = errno;
        // Where the part cannot be put back the whole change is.
        m_failed = !putBack(part.start) || !cutTo(part.start) || !rememberCovered();
        errno = error;
    } else {
        m_failed = false;
    }
    return end() && done;
}

bool UndoJournal::willWrite(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView old,
                            qint64 length, QByteArrayView fresh)
{
    struct stat info = {};
    if (::fstat(file.get(), &info) != 0)
        return false;
    // One file is told of under one name, whatever other ones lead to it.
    const auto firstName = m_names.constFind({info.st_dev, info.st_ino});
    struct stat there = {};
    if (firstName != m_names.constEnd() && *firstName != path && ::stat(firstName->constData(), &there) == 0 &&
        there.st_dev == info.st_dev && there.st_ino == info.st_ino)
        return willWrite(file, *firstName, offset, old, length, fresh);
    const auto known = m_covered.constFind(path);
    std::optional<Covered> covered = known != m_covered.constEnd() ? std::optional(*known) : std::nullopt;
    std::vector<JournalNote> notes;
    const bool moves = old.size() != length || fresh.size() != length;
    if (!noteOld(file, info, {offset, old, moves}, covered, notes))
        return false;
    for (JournalNote& note : notes)
        note.path = path;
    JournalNote step;
    step.kind = JournalNote::Kind::Step;
    step.path = path;
    step.device = info.st_dev;
    step.inode = info.st_ino;
    step.offset = offset;
    step.length = length;
    step.bytes = QByteArray::fromRawData(fresh.data(), fresh.size());
    // What fills a new file is known behind a loss of power too.
    const Sync sync = notes.empty() && info.st_size > 0 ? Sync::No : Sync::Yes;
    notes.push_back(std::move(step));
    if (!add(std::move(notes), sync))
        return false;
    m_covered.insert(path, *covered);
    m_names.insert({info.st_dev, info.st_ino}, path);
    return true;
}

bool UndoJournal::noteOld(const Descriptor& file, const struct stat& info, const OldBytes& old,
                          std::optional<Covered>& covered, std::vector<JournalNote>& notes)
{
    const auto note = [&](qint64 from, qint64 to, QByteArrayView known, qint64 size) {
        JournalNote before;
        before.kind = JournalNote::Kind::Before;
        before.device = info.st_dev;
        before.inode = info.st_ino;
        before.modifiedSeconds = info.st_mtim.tv_sec;
        before.modifiedNanoseconds = info.st_mtim.tv_nsec;
        before.offset = from;
        before.length = size;
        before.bytes = QByteArray::fromRawData(known.data(), std::min<qsizetype>(known.size(), to - from));
        const qint64 told = from + before.bytes.size();
        QByteArray behind;
        if (told < to && (!readAt(file, told, to - told, behind) || behind.size() != to - told))
            return false;
        before.bytes += behind;
        notes.push_back(std::move(before));
        return true;
    };
    const qint64 end = old.offset + old.bytes.size();
    if (!covered) {
        // Of a few bytes in the middle of a large file only they are noted.
        const bool inside = !old.move && end < info.st_size;
        covered = {old.offset, inside ? std::optional(end) : std::nullopt, info.st_size};
        return note(old.offset, inside ? end : info.st_size, old.bytes, inside ? info.st_size : 0);
    }
    if (covered->to && (old.move || old.offset < covered->from || end > *covered->to)) {
        // Somebody else may have written there meanwhile.
        errno = EIO;
        if (info.st_size != covered->size || !note(*covered->to, info.st_size, {}, 0))
            return false;
        covered->to.reset();
    }
    // What is noted already is not noted once more: a command notes no more than the whole file.
    if (old.offset < covered->from) {
        if (!note(old.offset, covered->from, old.bytes, 0))
            return false;
        covered->from = old.offset;
    }
    return true;
}

bool UndoJournal::willCreate(const QByteArray& path)
{
    JournalNote note;
    note.kind = JournalNote::Kind::Created;
    note.path = path;
    if (!add({std::move(note)}, Sync::Yes))
        return false;
    m_covered.insert(path, {});
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
    note.device = info.st_dev;
    note.inode = info.st_ino;
    note.modifiedSeconds = info.st_mtim.tv_sec;
    note.modifiedNanoseconds = info.st_mtim.tv_nsec;
    return add({std::move(note)}, Sync::Yes);
}

bool UndoJournal::willRemove(const QByteArray& path, const QByteArray& copy)
{
    struct stat info = {};
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0)
        return false;
    JournalNote note;
    note.path = path;
    note.device = info.st_dev;
    note.inode = info.st_ino;
    note.length = info.st_size;
    note.mode = info.st_mode & 0777U;
    note.modifiedSeconds = info.st_mtim.tv_sec;
    note.modifiedNanoseconds = info.st_mtim.tv_nsec;
    if (!copy.isEmpty() && !m_touched.contains(path)) {
        note.kind = JournalNote::Kind::Kept;
        note.bytes = copy;
    } else {
        note.kind = JournalNote::Kind::Removed;
        errno = EFBIG;
        if (info.st_size > longestJournal || !readAt(file, 0, info.st_size, note.bytes) ||
            note.bytes.size() != info.st_size)
            return false;
    }
    if (!add({std::move(note)}, Sync::Yes))
        return false;
    m_covered.remove(path);
    return true;
}

bool UndoJournal::willRemoveLink(const QByteArray& path)
{
    JournalNote note;
    note.kind = JournalNote::Kind::Link;
    note.path = path;
    note.bytes.resize(PATH_MAX);
    const ssize_t length = ::readlink(path.constData(), note.bytes.data(), PATH_MAX);
    if (length <= 0)
        return false;
    note.bytes.truncate(length);
    return add({std::move(note)}, Sync::Yes);
}

bool UndoJournal::takeBack(qint64 mark)
{
    return cutTo(mark) && rememberCovered();
}

bool UndoJournal::add(std::vector<JournalNote> notes, Sync sync)
{
    const bool waits = m_waiting->m_stuck && std::any_of(notes.begin(), notes.end(), [this](const JournalNote& note) {
                           return m_waiting->m_away.contains(note.path);
                       });
    if (m_stuck || m_failed || !running() || waits) {
        errno = EIO;
        return false;
    }
    struct stat info = {};
    const bool gone = m_file.isOpen() && (::fstat(m_file.get(), &info) != 0 || info.st_nlink != 1);
    if (gone && m_length > 0) {
        errno = EIO;
        return false;
    }
    if (gone)
        m_file.close();
    if (!openForNotes())
        return false;
    NoteWriter writer(m_file, m_length);
    bool written = true;
    for (JournalNote& note : notes) {
        note.boot = currentBoot();
        written = written && (note.kind == JournalNote::Kind::Step || tellFolder(note)) && writer.add(note);
    }
    if (!written || !writer.finish() || (sync == Sync::Yes && ::fdatasync(m_file.get()) != 0)) {
        const int error = errno;
        static_cast<void>(truncateTo(m_file, m_length));
        errno = error;
        return false;
    }
    m_length = writer.end();
    for (const JournalNote& note : notes)
        remember(note);
    return true;
}

void UndoJournal::remember(const JournalNote& note)
{
    m_touched.insert(note.path, note.kind);
    // What is written in place changes no folder.
    if (note.kind != JournalNote::Kind::Before && note.kind != JournalNote::Kind::Step)
        m_folders.insert(folderOf(note.path));
}

bool UndoJournal::syncTouched()
{
    if (m_touched.size() > 1)
        std::for_each(m_touched.keyBegin(), m_touched.keyEnd(), beginSync);
    m_syncFailed = m_syncFailed || !std::all_of(m_touched.keyBegin(), m_touched.keyEnd(), [&](const QByteArray& path) {
                       using Kind = JournalNote::Kind;
                       const Kind last = m_touched.value(path);
                       const bool mayBeMissing = last == Kind::Removed || last == Kind::Kept || last == Kind::Link ||
                                                 last == Kind::Scratch || last == Kind::Created;
                       return syncPath(path) || (mayBeMissing && errno == ENOENT);
                   });
    m_syncFailed = m_syncFailed || !std::all_of(m_folders.begin(), m_folders.end(), syncPath);
    return !m_syncFailed;
}

bool UndoJournal::cutTo(qint64 length)
{
    if (m_file.isOpen() && m_length > length) {
        if (!truncateTo(m_file, length))
            return false;
        m_length = length;
        // Where that fails a loss of power may bring the notes back: what was done since is not explained by them.
        ::fdatasync(m_file.get());
    }
    return true;
}

} // namespace orvantine
