#include "desktop/posix/CarryJob.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <utility>

#include <fcntl.h>

namespace orvantine {
namespace {

constexpr qint64 pieceSize = qint64{1} << 20;
// As much may be on its way to the medium. What is told counts none of it.
constexpr qint64 ahead = 8 * pieceSize;
// Somebody else's files of that name are left alone.
constexpr int mostNames = 100;

/// A name that leaves no room for the ending is shortened, and stays one of its own.
QByteArray partName(const QByteArray& target, int number)
{
    const qsizetype cut = target.lastIndexOf('/') + 1;
    const QByteArray ending =
        number == 1 ? QByteArray(CarriedEnding) : '.' + QByteArray::number(number) + CarriedEnding;
    QByteArray name = target.sliced(cut);
    if (name.size() + ending.size() > NAME_MAX) {
        constexpr qsizetype HashLength = 12;
        const QByteArray sum = QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex().first(HashLength);
        qsizetype length = NAME_MAX / 2;
        // A character is not cut in two.
        while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0U) == 0x80U)
            --length;
        name = name.first(length) + '.' + sum;
    }
    return target.first(cut) + name + ending;
}

} // namespace

CarryJob::CarryJob(Descriptor source, const struct stat& info, QByteArray target)
    : m_source(std::move(source)), m_info(info), m_size(info.st_size), m_target(std::move(target))
{
}

CarryJob::CarryJob(QByteArray bytes, QByteArray target)
    : m_bytes(std::move(bytes)), m_size(m_bytes.size()), m_target(std::move(target))
{
    m_info.st_mode = S_IFREG | 0666;
}

CarryJob::~CarryJob()
{
    drop();
}

void CarryJob::drop()
{
    if (m_part.isEmpty())
        return;
    const int error = errno;
    ::unlink(m_part.constData());
    m_part.clear();
    errno = error;
}

bool CarryJob::begin(const std::function<void(const QByteArray& part)>& willMake)
{
    for (int number = 1; number <= mostNames; ++number) {
        const QByteArray name = partName(m_target, number);
        struct stat info = {};
        if (::lstat(name.constData(), &info) == 0)
            continue;
        willMake(name);
        if (open(name))
            return true;
        if (errno != EEXIST)
            return false;
    }
    errno = EEXIST;
    return false;
}

bool CarryJob::open(const QByteArray& name)
{
    m_file = Descriptor(::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY,
                               m_info.st_mode & 0666U));
    if (m_file.isOpen())
        m_part = name;
    return m_file.isOpen();
}

bool CarryJob::run(const CarryStep& goOn)
{
    errno = 0;
    const bool done = write(goOn);
    m_error = done ? 0 : errno;
    return done;
}

bool CarryJob::write(const CarryStep& goOn)
{
    QByteArray piece;
    for (qint64 offset = 0; offset < m_size; offset += piece.size()) {
        if (!goOn(std::max<qint64>(offset - ahead, 0))) {
            errno = ECANCELED;
            return false;
        }
        if (!nextPiece(offset, piece) || !writeAt(m_file, offset, piece))
            return false;
        // The medium works all along, and the sync at the end has little left to do. A file system may know nothing of
        // it: then that sync does all.
        static_cast<void>(::sync_file_range(m_file.get(), offset, piece.size(), SYNC_FILE_RANGE_WRITE));
        // What is told here of bytes that the medium has not taken, no later sync tells again.
        if (offset >= ahead &&
            ::sync_file_range(m_file.get(), offset - ahead, pieceSize, SYNC_FILE_RANGE_WAIT_BEFORE) != 0 &&
            (errno == EIO || errno == ENOSPC || errno == EDQUOT))
            return false;
    }
    const timespec times[2] = {{0, UTIME_OMIT}, m_info.st_mtim};
    if (m_source.isOpen())
        ::futimens(m_file.get(), times);
    struct stat written = {};
    if (::fsync(m_file.get()) != 0 || ::fstat(m_file.get(), &written) != 0)
        return false;
    if (written.st_size != m_size || !isUntouched()) {
        errno = EIO;
        return false;
    }
    return true;
}

bool CarryJob::nextPiece(qint64 offset, QByteArray& piece) const
{
    const qint64 length = std::min(pieceSize, m_size - offset);
    if (!m_source.isOpen()) {
        piece = m_bytes.sliced(offset, length);
        return true;
    }
    if (!readAt(m_source, offset, length, piece))
        return false;
    // It has become shorter since.
    if (piece.size() != length)
        errno = EIO;
    return piece.size() == length;
}

bool CarryJob::isUntouched() const
{
    struct stat now = {};
    return !m_source.isOpen() ||
           (::fstat(m_source.get(), &now) == 0 && now.st_size == m_info.st_size &&
            now.st_mtim.tv_sec == m_info.st_mtim.tv_sec && now.st_mtim.tv_nsec == m_info.st_mtim.tv_nsec);
}

bool CarryJob::isSame(const Descriptor& other) const
{
    QByteArray mine;
    QByteArray its;
    return readAt(m_file, 0, m_size, mine) && readAt(other, 0, m_size + 1, its) && mine == its;
}

bool CarryJob::place(mode_t mode)
{
    // A medium without rights takes none.
    if (mode != 0 && ::fchmod(m_file.get(), mode & 0777U) != 0 && errno != EPERM)
        return false;
    if (::rename(m_part.constData(), m_target.constData()) != 0)
        return false;
    m_part.clear();
    return true;
}

} // namespace orvantine
