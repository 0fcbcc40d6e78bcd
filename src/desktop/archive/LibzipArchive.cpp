#include "desktop/archive/LibzipArchive.h"

#include "desktop/archive/DiskFault.h"
#include "desktop/archive/Heartbeat.h"
#include "desktop/archive/OpenedZip.h"
#include "desktop/archive/PackedTree.h"
#include "desktop/archive/ZipBytes.h"
#include "desktop/posix/HostFile.h"
#include "platform/CaseFold.h"
#include "platform/FileDirPath.h"

#include <QHash>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool shrinks(const QString& name)
{
    static const QStringList stored{u"mp3"_s,  u"wma"_s,  u"wav"_s, u"m4a"_s, u"aac"_s, u"ogg"_s, u"oga"_s,
                                    u"opus"_s, u"flac"_s, u"mpc"_s, u"ape"_s, u"wv"_s,  u"asf"_s, u"mp4"_s,
                                    u"jpg"_s,  u"jpeg"_s, u"gif"_s, u"png"_s, u"zip"_s, u"gz"_s,  u"bz2"_s,
                                    u"xz"_s,   u"7z"_s,   u"rar"_s, u"zst"_s};
    return !stored.contains(folded(name.mid(name.lastIndexOf(u'.') + 1)));
}

bool setTime(zip_t* archive, zip_uint64_t number, qint64 seconds)
{
    constexpr zip_uint16_t field = 0x5455;
    constexpr zip_flags_t both = ZIP_FL_LOCAL | ZIP_FL_CENTRAL;
    zip_file_extra_field_delete_by_id(archive, number, field, ZIP_EXTRA_FIELD_ALL, both);
    if (zip_file_set_mtime(archive, number, seconds, 0) != 0)
        return false;
    if (seconds < 0 || seconds > std::numeric_limits<qint32>::max())
        return true;
    zip_uint8_t bytes[5] = {1};
    for (int i = 0; i < 4; ++i)
        bytes[i + 1] = static_cast<zip_uint8_t>((seconds >> (8 * i)) & 0xff);
    return zip_file_extra_field_set(archive, number, field, ZIP_EXTRA_FIELD_NEW, bytes, sizeof bytes, both) == 0;
}

/// What stands in the archive under another spelling of the name goes.
class OldNames
{
public:
    explicit OldNames(zip_t* archive) : m_archive(archive)
    {
        const zip_int64_t count = zip_get_num_entries(archive, 0);
        for (zip_int64_t i = 0; i < count; ++i)
            if (const char* const name = zip_get_name(archive, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS))
                m_numbers.insert(entryKey(QString::fromUtf8(name)), {static_cast<zip_uint64_t>(i), QByteArray(name)});
    }

    bool dropOtherSpelling(const QString& name)
    {
        const auto old = m_numbers.constFind(entryKey(name));
        return old == m_numbers.constEnd() || old->second == name.toUtf8() || zip_delete(m_archive, old->first) == 0;
    }

private:
    zip_t* m_archive;
    QHash<QString, std::pair<zip_uint64_t, QByteArray>> m_numbers;
};

/// Tells the archive what to take; nothing is read yet.
bool addEntry(zip_t* archive, const PackedFile& file, FileBytes& bytes, Compression compression)
{
    const QByteArray name = file.name.toUtf8();
    zip_int64_t number = zip_name_locate(archive, name.constData(), ZIP_FL_ENC_UTF_8);
    if (file.folder) {
        if (number < 0)
            number = zip_dir_add(archive, name.constData(), ZIP_FL_ENC_UTF_8);
        return number >= 0 && setTime(archive, static_cast<zip_uint64_t>(number), file.modifiedSeconds);
    }
    zip_source_t* const source = bytes.source();
    if (source == nullptr)
        return false;
    number = zip_file_add(archive, name.constData(), source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8);
    if (number < 0) {
        zip_source_free(source);
        return false;
    }
    const auto entry = static_cast<zip_uint64_t>(number);
    const bool small = shrinks(file.name);
    return zip_set_file_compression(archive, entry, small ? ZIP_CM_DEFLATE : ZIP_CM_STORE,
                                    small ? static_cast<zip_uint32_t>(compression) : 0) == 0 &&
           setTime(archive, entry, file.modifiedSeconds);
}

struct Work
{
    const Descriptor& old;
    qint64 oldSize;
    const Descriptor& fresh;
    Compression compression;
};

struct Beats
{
    Heartbeat& heartbeat;
    ReadCount& count;
};

int isCancelled(zip_t*, void* beats)
{
    const auto* const running = static_cast<Beats*>(beats);
    return running->heartbeat.reach(running->count.bytes) ? 0 : 1;
}

enum class Packed { Done, Failed, SourceFailed };

/// Writes the archive once. Files that fail go from the tree.
Packed pack(const Work& work, PackedTree& tree, Heartbeat& heartbeat)
{
    ReadCount count;
    Beats beats{heartbeat, count};
    // What libzip reads of lives longer than its archive.
    std::vector<std::unique_ptr<FileBytes>> sources;
    ZipBytes bytes(work.old.isOpen() ? &work.old : nullptr, work.oldSize, &work.fresh, &count);
    ZipHandle archive(bytes.open(ZIP_CREATE));
    if (!archive)
        return Packed::Failed;
    OldNames oldNames(archive.get());
    for (const PackedFile& file : tree.files) {
        sources.push_back(std::make_unique<FileBytes>(file.path, &count));
        if (!oldNames.dropOtherSpelling(file.name) ||
            !addEntry(archive.get(), file, *sources.back(), work.compression)) {
            errno = EINVAL;
            return Packed::Failed;
        }
    }
    if (zip_get_num_entries(archive.get(), 0) == 0) {
        errno = EINVAL;
        return Packed::Failed;
    }
    zip_register_cancel_callback_with_state(archive.get(), isCancelled, nullptr, &beats);
    if (zip_close(archive.get()) == 0) {
        (void)archive.release();
        return Packed::Done;
    }
    archive.reset();
    Packed outcome = Packed::Failed;
    std::vector<PackedFile> good;
    for (std::size_t i = 0; i < tree.files.size(); ++i) {
        if (sources[i]->failed()) {
            tree.leftOut.append(tree.files[i].name);
            outcome = Packed::SourceFailed;
        } else {
            good.push_back(tree.files[i]);
        }
    }
    tree.files = std::move(good);
    errno = bytes.writeError() != 0 ? bytes.writeError() : EIO;
    return outcome;
}

/// Every entry has its length and checksum.
bool isWhole(const Descriptor& file, Heartbeat& heartbeat)
{
    struct stat info = {};
    if (::fstat(file.get(), &info) != 0)
        return false;
    ZipBytes bytes(&file, info.st_size);
    const ZipHandle archive(bytes.open(ZIP_RDONLY | ZIP_CHECKCONS));
    if (!archive)
        return false;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto number = static_cast<zip_uint64_t>(i);
        zip_stat_t stat;
        if (zip_stat_index(archive.get(), number, 0, &stat) != 0 ||
            !readEntry(archive.get(), number, static_cast<qint64>(stat.size),
                       [&heartbeat](QByteArrayView piece) { return heartbeat.add(piece.size()); }))
            return false;
    }
    return true;
}

/// Looks at its build alone. False with `errno`.
bool isArchive(const Descriptor& file, qint64 size)
{
    ZipBytes bytes(&file, size);
    errno = UnsoundArchive;
    return size > 0 && ZipHandle(bytes.open(ZIP_RDONLY | ZIP_CHECKCONS)) != nullptr;
}

bool isAccepted(Files& files, const Descriptor& file, const ArchiveJob& job)
{
    struct stat info = {};
    Descriptor again(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
    if (!job.accepts || !again.isOpen() || ::fstat(again.get(), &info) != 0)
        return !job.accepts;
    const auto opened =
        OpenedZip::read(files, std::move(again), info.st_size, std::numeric_limits<qint64>::max(), QByteArray());
    return opened && job.accepts(opened->entries(), opened->size());
}

bool writeWhole(const Work& work, PackedTree& tree, const ArchiveProgress& progress)
{
    qint64 total = work.oldSize;
    for (const PackedFile& file : tree.files)
        total += file.size;
    // Read once to be packed and once to be checked.
    Heartbeat heartbeat(progress, 2 * total);
    Packed packed = Packed::SourceFailed;
    while (packed == Packed::SourceFailed)
        packed = ::ftruncate(work.fresh.get(), 0) == 0 ? pack(work, tree, heartbeat) : Packed::Failed;
    return packed == Packed::Done && heartbeat.reach(total) && isWhole(work.fresh, heartbeat) &&
           ::fsync(work.fresh.get()) == 0 && heartbeat.finish();
}

/// A file on its way to its place, without a name where the disk can do that: then a killed program leaves nothing.
class ScratchFile
{
public:
    ScratchFile(QByteArray scratch, QByteArray target) : m_scratch(std::move(scratch)), m_target(std::move(target))
    {
        const QByteArray folder = m_target.first(m_target.lastIndexOf('/') + 1);
        m_file = Descriptor(::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666));
        m_named = !m_file.isOpen() || ::access(ownName().constData(), F_OK) != 0;
        if (m_named) {
            // What an earlier try has left.
            ::unlink(m_scratch.constData());
            constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY;
            m_file = Descriptor(::open(m_scratch.constData(), flags, 0666));
        }
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile()
    {
        if (m_named && m_file.isOpen())
            ::unlink(m_scratch.constData());
    }

    [[nodiscard]] const Descriptor& file() const { return m_file; }
    [[nodiscard]] const QByteArray& target() const { return m_target; }
    bool place()
    {
        if (!m_named) {
            ::unlink(m_scratch.constData());
            m_named =
                ::linkat(AT_FDCWD, ownName().constData(), AT_FDCWD, m_scratch.constData(), AT_SYMLINK_FOLLOW) == 0;
        }
        if (!m_named || ::rename(m_scratch.constData(), m_target.constData()) != 0)
            return false;
        m_named = false;
        return true;
    }

private:
    [[nodiscard]] QByteArray ownName() const { return "/proc/self/fd/" + QByteArray::number(m_file.get()); }

    QByteArray m_scratch;
    QByteArray m_target;
    Descriptor m_file;
    bool m_named = false;
};

bool isAsBefore(const QByteArray& path, bool stood, const struct stat& before)
{
    struct stat now = {};
    const bool stands = ::lstat(path.constData(), &now) == 0;
    return stands == stood && (!stood || stampOf(now) == stampOf(before));
}

bool syncFolderOf(const QByteArray& path)
{
    const QByteArray folder = path.first(std::max<qsizetype>(path.lastIndexOf('/'), 1));
    const Descriptor directory(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return directory.isOpen() && (::fsync(directory.get()) == 0 || errno == EINVAL);
}

} // namespace

LibzipArchive::LibzipArchive(Files& files, const QString& privateFolder)
    : m_files(files), m_staging(privateFolder.isEmpty() ? QByteArray() : privateFolder.toUtf8() + "/Unpacked")
{
}

ArchiveOutcome LibzipArchive::add(const ArchiveJob& job, const ArchiveProgress& progress)
{
    constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat info = {};
    const std::optional<QByteArray> existing = m_files.nativePath(job.archive);
    errno = UnsoundArchive;
    const Descriptor old = existing ? openRegular(*existing, O_RDONLY, info) : Descriptor();
    if (existing && (!old.isOpen() || !isArchive(old, info.st_size))) {
        noteUnlessUnsound(errno);
        return {};
    }
    if (existing && (info.st_mode & anyWrite) == 0) {
        m_files.noteFault(WriteFault::NoRights);
        return {};
    }

    PackedTree tree;
    for (const ArchiveTree& wanted : job.trees)
        if (const std::optional<QByteArray> folder = m_files.nativePath(wanted.folder))
            addTree(*folder, {wanted.foldersToo, job.followsLinks, job.takes, existing ? &info : nullptr}, tree);

    for (const ArchiveFile& file : job.files)
        if (const std::optional<QByteArray> path = m_files.nativePath(file.path))
            addFile(*path, file.name, tree);

    ArchiveOutcome outcome;
    // Events are served while it is written: what others change meanwhile is no part of this.
    std::optional<ScratchFile> fresh;
    if (!m_files.replaceAnew(job.archive, {}, [&fresh, &job, &existing](const QByteArray& scratch) {
            const QByteArray name = FileDirPath::FileNameOf(job.archive).toUtf8();
            const QByteArray folder = scratch.first(scratch.lastIndexOf('/') + 1);
            fresh.emplace(scratch, existing ? realPath(*existing) : folder + name);
            return fresh->file().isOpen();
        }))
        return {};
    errno = 0;
    if (!writeWhole({old, info.st_size, fresh->file(), job.compression}, tree, progress)) {
        noteUnlessUnsound(errno);
        return {};
    }
    if (!isAccepted(m_files, fresh->file(), job))
        return {};
    outcome.done = m_files.replaceAnew(job.archive, {}, [&](const QByteArray&) {
        return (!existing || ::fchmod(fresh->file().get(), info.st_mode & 0777U) == 0 || errno == EPERM) &&
               isAsBefore(fresh->target(), existing.has_value(), info) && fresh->place() &&
               syncFolderOf(fresh->target());
    });
    outcome.leftOut = tree.leftOut;
    return outcome;
}

std::unique_ptr<OpenedArchive> LibzipArchive::open(const QString& archive, qint64 mostEntries)
{
    const std::optional<QByteArray> native = m_files.nativePath(archive);
    auto opened = native ? OpenedZip::open(m_files, *native, mostEntries, m_staging) : nullptr;
    if (native && !opened)
        noteUnlessUnsound(errno);
    return opened;
}

void LibzipArchive::noteUnlessUnsound(int error)
{
    if (error != UnsoundArchive && !isMissing(error))
        m_files.noteFault(diskFault(error));
}

} // namespace orvantine
