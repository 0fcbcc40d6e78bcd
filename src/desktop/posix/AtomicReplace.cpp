#include "desktop/posix/AtomicReplace.h"

#include <QList>

#include <algorithm>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/xattr.h>

namespace orvantine {
namespace {

constexpr qint64 blockSize = qint64{1} << 20;

/// Unlinked unless it was put in its place.
class TemporaryFile
{
public:
    explicit TemporaryFile(QByteArray path) : m_path(std::move(path))
    {
        constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY;
        // What an earlier try has left.
        ::unlink(m_path.constData());
        m_file = Descriptor(::open(m_path.constData(), flags, 0600));
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile()
    {
        if (m_file.isOpen() && !m_placed)
            ::unlink(m_path.constData());
    }

    [[nodiscard]] const Descriptor& file() const { return m_file; }
    bool placeAt(const QByteArray& path)
    {
        m_placed = ::rename(m_path.constData(), path.constData()) == 0;
        return m_placed;
    }

private:
    QByteArray m_path;
    Descriptor m_file;
    bool m_placed = false;
};

bool copyBytes(const Descriptor& from, qint64 begin, qint64 length, const Descriptor& to)
{
    QByteArray block;
    for (qint64 done = 0; done < length; done += block.size()) {
        const qint64 wanted = std::min(blockSize, length - done);
        if (!readAt(from, begin + done, wanted, block) || block.size() != wanted || !writeAt(to, done, block))
            return false;
    }
    return true;
}

bool haveSameBytes(const Descriptor& one, qint64 begin, const Descriptor& other, qint64 length)
{
    QByteArray left;
    QByteArray right;
    for (qint64 done = 0; done < length; done += left.size()) {
        const qint64 wanted = std::min(blockSize, length - done);
        if (!readAt(one, begin + done, wanted, left) || !readAt(other, done, wanted, right) || left.size() != wanted ||
            left != right)
            return false;
    }
    return true;
}

bool endsWith(const Descriptor& file, qint64 offset, const QByteArray& tail)
{
    QByteArray bytes;
    return readAt(file, offset, tail.size() + 1, bytes) && bytes == tail;
}

/// Ratings and comments of file managers. A disk that takes none is no reason to fail.
void copyAttributes(const Descriptor& from, const Descriptor& to)
{
    const ssize_t length = ::flistxattr(from.get(), nullptr, 0);
    if (length <= 0)
        return;
    QByteArray names(length, '\0');
    if (::flistxattr(from.get(), names.data(), static_cast<std::size_t>(length)) != length)
        return;
    const QList<QByteArray> list = names.split('\0');
    for (const QByteArray& name : list) {
        const ssize_t size = name.isEmpty() ? -1 : ::fgetxattr(from.get(), name.constData(), nullptr, 0);
        if (size < 0)
            continue;
        QByteArray value(size, '\0');
        if (::fgetxattr(from.get(), name.constData(), value.data(), static_cast<std::size_t>(size)) == size)
            ::fsetxattr(to.get(), name.constData(), value.constData(), static_cast<std::size_t>(size), 0);
    }
}

/// Owner, attributes, mode and times, in this order: each of the first three may change those behind it.
bool takeOver(const Descriptor& from, const struct stat& info, const Descriptor& to)
{
    struct stat fresh = {};
    if (::fstat(to.get(), &fresh) != 0)
        return false;
    const bool sameOwner = fresh.st_uid == info.st_uid && fresh.st_gid == info.st_gid;
    if (!sameOwner && ::fchown(to.get(), info.st_uid, info.st_gid) != 0)
        return false;
    copyAttributes(from, to);
    const timespec times[2] = {info.st_atim, info.st_mtim};
    return ::fchmod(to.get(), info.st_mode & 07777U) == 0 && ::futimens(to.get(), times) == 0;
}

} // namespace

AtomicReplace::AtomicReplace(const QByteArray& path) : m_path(realPath(path))
{
    if (m_path.isEmpty())
        return;
    m_file = Descriptor(::open(m_path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    // The superuser may write everything; a write protection counts for him too.
    m_possible = m_file.isOpen() && ::fstat(m_file.get(), &m_info) == 0 && S_ISREG(m_info.st_mode) &&
                 (m_info.st_mode & anyWrite) != 0 && ::faccessat(AT_FDCWD, m_path.constData(), W_OK, AT_EACCESS) == 0;
}

bool AtomicReplace::replace(const QByteArray& scratch, qint64 keptFrom, qint64 keptTo, const QByteArray& tail)
{
    if (!m_possible || keptFrom < 0 || keptTo < keptFrom || keptTo > size())
        return false;
    const QByteArray folder = m_path.left(m_path.lastIndexOf('/'));
    const qint64 kept = keptTo - keptFrom;
    TemporaryFile fresh(scratch);
    if (!fresh.file().isOpen() || !copyBytes(m_file, keptFrom, kept, fresh.file()) ||
        !writeAt(fresh.file(), kept, tail))
        return false;
    if (!haveSameBytes(m_file, keptFrom, fresh.file(), kept) || !endsWith(fresh.file(), kept, tail) ||
        !takeOver(m_file, m_info, fresh.file()) || ::fsync(fresh.file().get()) != 0)
        return false;
    if (!isUntouched() || !fresh.placeAt(m_path))
        return false;
    const Descriptor directory(::open(folder.isEmpty() ? "/" : folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen())
        ::fsync(directory.get());
    return true;
}

bool AtomicReplace::isUntouched() const
{
    struct stat now = {};
    return ::lstat(m_path.constData(), &now) == 0 && now.st_dev == m_info.st_dev && now.st_ino == m_info.st_ino &&
           now.st_size == m_info.st_size && now.st_mtim.tv_sec == m_info.st_mtim.tv_sec &&
           now.st_mtim.tv_nsec == m_info.st_mtim.tv_nsec && now.st_ctim.tv_sec == m_info.st_ctim.tv_sec &&
           now.st_ctim.tv_nsec == m_info.st_ctim.tv_nsec;
}

} // namespace orvantine
