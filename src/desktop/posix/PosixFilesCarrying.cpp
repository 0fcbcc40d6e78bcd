#include "desktop/posix/CarryJob.h"
#include "desktop/posix/HostFile.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/PrivateFolder.h"

#include <QByteArrayList>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr unsigned anyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
// Between two looks at the work, and so between two times that events are served.
constexpr std::chrono::milliseconds look{15};

using Work = std::function<bool(const CarryStep& told)>;

/// What the thread that works and the one that serves events tell one another.
struct Exchange
{
    std::mutex mutex;
    std::condition_variable ready;
    qint64 done = 0;
    bool stop = false;
    bool finished = false;
    bool result = false;
};

/// A medium may hang in any call for minutes: the work is done on a thread of its own, and this one asks `goOn`.
bool runBeside(const Work& work, const CarryStep& goOn)
{
    Exchange exchange;
    std::thread worker;
    try {
        worker = std::thread([&exchange, &work] {
            const bool result = work([&exchange](qint64 done) {
                const std::lock_guard lock(exchange.mutex);
                exchange.done = done;
                return !exchange.stop;
            });
            const std::lock_guard lock(exchange.mutex);
            exchange.result = result;
            exchange.finished = true;
            exchange.ready.notify_one();
        });
    } catch (const std::system_error&) {
        return work(goOn);
    }
    std::unique_lock lock(exchange.mutex);
    while (!exchange.ready.wait_for(lock, look, [&exchange] { return exchange.finished; })) {
        const qint64 done = exchange.done;
        const bool stopped = exchange.stop;
        lock.unlock();
        const bool goesOn = stopped || goOn(done);
        lock.lock();
        exchange.stop = exchange.stop || !goesOn;
    }
    lock.unlock();
    worker.join();
    return exchange.result;
}

bool isEntry(const char* name)
{
    const QByteArrayView view(name);
    return view != "." && view != "..";
}

/// A folder without the links on the way to it: whoever puts one in its place gets nothing emptied behind it.
Descriptor openFolder(int above, const char* name)
{
    return Descriptor(::openat(above, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

QByteArrayList entriesOf(const Descriptor& folder)
{
    QByteArrayList names;
    const int again = ::fcntl(folder.get(), F_DUPFD_CLOEXEC, 0);
    DIR* const stream = again < 0 ? nullptr : ::fdopendir(again);
    if (stream == nullptr) {
        if (again >= 0)
            ::close(again);
        return names;
    }
    ::rewinddir(stream);
    while (const dirent* const entry = ::readdir(stream))
        if (isEntry(entry->d_name))
            names += QByteArray(entry->d_name);
    ::closedir(stream);
    return names;
}

bool isFolderAt(const Descriptor& above, const QByteArray& name)
{
    struct stat info = {};
    return ::fstatat(above.get(), name.constData(), &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(info.st_mode);
}

/// True if nothing but folders is left.
bool unlinkFiles(const Descriptor& folder)
{
    bool all = true;
    const QByteArrayList names = entriesOf(folder);
    for (const QByteArray& name : names)
        if (!isFolderAt(folder, name))
            all = ::unlinkat(folder.get(), name.constData(), 0) == 0 && all;
    return all;
}

} // namespace

/// The part that is on its way is noted, so that the next start can take away what a killed program has left. Without a
/// sync: a loss of power may leave a part, but no file under its name that is not whole.
class PosixFiles::PartNote
{
public:
    /// Locked: another program of the user's leaves it alone meanwhile.
    explicit PartNote(const QByteArray& folder, int flags = 0)
    {
        const QByteArray path = folder + "/Carried";
        struct stat info = {};
        m_file =
            Descriptor(::open(path.constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags, 0600));
        if (m_file.isOpen() && (::fstat(m_file.get(), &info) != 0 || !S_ISREG(info.st_mode) || info.st_nlink != 1 ||
                                ::flock(m_file.get(), LOCK_EX | LOCK_NB) != 0))
            m_file.close();
    }
    void set(const QByteArray& part) const
    {
        if (m_file.isOpen() && ::ftruncate(m_file.get(), 0) == 0 && !part.isEmpty())
            static_cast<void>(writeAt(m_file, 0, part));
    }
    [[nodiscard]] QByteArray part() const
    {
        constexpr qint64 LongestPath = qint64{64} * 1024;
        QByteArray path;
        return m_file.isOpen() && readAt(m_file, 0, LongestPath, path) ? path : QByteArray();
    }

private:
    Descriptor m_file;
};

void PosixFiles::removeLeftPart()
{
    const QByteArray folder = m_options.recoveryFolder.toUtf8();
    if (!isPrivateFolder(folder))
        return;
    const PartNote note(folder);
    const QByteArray part = note.part();
    struct stat info = {};
    if (part.startsWith('/') && part.endsWith(CarriedEnding) && ::lstat(part.constData(), &info) == 0 &&
        S_ISREG(info.st_mode) && info.st_uid == ::geteuid() && info.st_nlink == 1)
        ::unlink(part.constData());
    note.set({});
}

std::optional<PosixFiles::Place> PosixFiles::placeFor(const QString& to)
{
    // Nothing is put back of what is carried, so it belongs to no change; nor does it go where nothing may be written.
    if (m_undo.running() || trouble()) {
        m_fault = WriteFault::NoSafePlace;
        return {};
    }
    const NameLookup::Found existing = m_names.find(to);
    if (existing.error == 0) {
        if (!S_ISREG(existing.info.st_mode) || (existing.info.st_mode & anyWriteBit) == 0) {
            noteError(EACCES);
            return {};
        }
        // The new file stands in the place of the one that a link leads to.
        return Place{realPath(absolutePath(existing.path)), existing.info};
    }
    const std::optional<QByteArray> fresh = isMissing(existing.error) ? m_names.creationPath(to) : std::nullopt;
    if (!fresh) {
        noteError(isMissing(existing.error) ? ENOENT : existing.error);
        return {};
    }
    return Place{absolutePath(*fresh), std::nullopt};
}

bool PosixFiles::carry(const QString& from, const QString& to, const CarryStep& goOn)
{
    const NameLookup::Found source = m_names.find(from);
    if (isMissing(source.error) || (source.error == 0 && !S_ISREG(source.info.st_mode)))
        return false;
    struct stat info = {};
    Descriptor reading = source.error == 0 ? openRegular(source.path, O_RDONLY, info) : Descriptor();
    if (!reading.isOpen()) {
        noteError(source.error == 0 ? errno : source.error);
        return false;
    }
    const std::optional<Place> place = placeFor(to);
    if (!place)
        return false;
    if (place->older && place->older->st_dev == info.st_dev && place->older->st_ino == info.st_ino)
        return true;
    CarryJob job(std::move(reading), info, place->path);
    return carry(job, place->path, goOn);
}

bool PosixFiles::carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn)
{
    const std::optional<Place> place = placeFor(to);
    if (!place)
        return false;
    CarryJob job(bytes, place->path);
    return carry(job, place->path, goOn);
}

bool PosixFiles::carry(CarryJob& job, const QByteArray& target, const CarryStep& goOn)
{
    if (!goOn(0))
        return false;
    const QByteArray folder = m_options.recoveryFolder.toUtf8();
    if (!preparePrivateFolder(folder)) {
        m_fault = WriteFault::NoSafePlace;
        return false;
    }
    const PartNote note(folder, O_CREAT);
    if (!job.begin([&note](const QByteArray& part) { note.set(part); })) {
        // What a foreign file system says of a name that it does not take.
        noteError(errno == EINVAL ? ENOENT : errno);
        note.set({});
        return false;
    }
    const Work work = [&job](const CarryStep& told) { return job.run(told); };
    const bool whole = m_options.carriesBeside ? runBeside(work, goOn) : work(goOn);
    if (!whole && job.error() != ECANCELED)
        noteError(job.error());
    const bool done = whole && goOn(job.size()) && placeCarried(job, target);
    job.drop();
    note.set({});
    return done;
}

bool PosixFiles::placeCarried(CarryJob& job, const QByteArray& target)
{
    errno = 0;
    struct stat older = {};
    mode_t mode = 0;
    // Events were served since: what stands there now counts.
    if (::lstat(target.constData(), &older) == 0) {
        if (!S_ISREG(older.st_mode) || (older.st_mode & anyWriteBit) == 0) {
            noteError(EACCES);
            return false;
        }
        mode = older.st_mode;
        const Descriptor file = openRegular(target, O_RDONLY, older);
        if (older.st_size > 0 && older.st_size <= LargestKept &&
            (!file.isOpen() ||
             (!job.isSame(file) && !(m_store.keep(target, file, {0, older.st_size}) && m_store.settle())))) {
            m_fault = WriteFault::NoSafePlace;
            return false;
        }
    }
    if (job.place(mode))
        return true;
    noteError(errno);
    return false;
}

bool PosixFiles::settle(const QString& folder, const CarryStep& goOn)
{
    const std::optional<QByteArray> path = nativePath(folder);
    const Descriptor file(path ? ::open(path->constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1);
    if (!file.isOpen())
        return false;
    int error = 0;
    const Work work = [&file, &error](const CarryStep&) {
        // A foreign file system may take no sync of a folder.
        error = ::fsync(file.get()) == 0 || errno == EINVAL ? 0 : errno;
        return error == 0;
    };
    if (m_options.carriesBeside ? runBeside(work, goOn) : work(goOn))
        return true;
    noteError(error);
    return false;
}

QString PosixFiles::privateFolder(const QString& path)
{
    const std::optional<QByteArray> native =
        m_names.find(path).error == 0 ? nativePath(path) : m_names.creationPath(path);
    if (!native)
        return {};
    // One that stands with rights for others is somebody else's, or may hold what somebody else has put there.
    if ((::mkdir(native->constData(), 0700) == 0 || errno == EEXIST) && isPrivateFolder(*native))
        return path;
    // The same one each time, so that what a run leaves in it goes with the next.
    const QByteArray ending = '.' + QByteArray::number(::geteuid());
    const QByteArray own = *native + ending;
    if ((::mkdir(own.constData(), 0700) == 0 || errno == EEXIST) && isPrivateFolder(own))
        return path + QString::fromLatin1(ending);
    QByteArray other = *native + ".XXXXXX";
    if (::mkdtemp(other.data()) == nullptr)
        return {};
    return path + QString::fromLatin1(other.last(7));
}

bool PosixFiles::emptyPrivate(const QString& folder, const std::function<bool()>& goOn)
{
    const std::optional<QByteArray> path = nativePath(folder);
    const Descriptor top = path && isPrivateFolder(*path) ? openFolder(AT_FDCWD, path->constData()) : Descriptor();
    if (!top.isOpen())
        return false;
    bool all = true;
    const QByteArrayList names = entriesOf(top);
    for (const QByteArray& name : names) {
        if (!isFolderAt(top, name))
            continue;
        const Descriptor below = openFolder(top.get(), name.constData());
        all = below.isOpen() && unlinkFiles(below) && all;
        all = ::unlinkat(top.get(), name.constData(), AT_REMOVEDIR) == 0 && all;
        if (!goOn())
            return false;
    }
    return unlinkFiles(top) && all;
}

} // namespace orvantine
