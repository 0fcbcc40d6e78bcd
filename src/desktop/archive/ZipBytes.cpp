#include "desktop/archive/ZipBytes.h"

#include "desktop/archive/DiskFault.h"
#include "desktop/posix/HostFile.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>

namespace orvantine {
namespace {

/// Handed to the disk at once.
constexpr qsizetype blockSize = qsizetype{1} << 20;

/// What is there, up to `length` bytes; −1 with `errno`.
qint64 readInto(const Descriptor& file, qint64 offset, void* data, zip_uint64_t length)
{
    ssize_t count = -1;
    do
        count = ::pread(file.get(), data, static_cast<std::size_t>(length), offset);
    while (count < 0 && errno == EINTR);
    return count;
}

zip_int64_t tellStat(void* data, zip_uint64_t length, qint64 size)
{
    auto* const stat = static_cast<zip_stat_t*>(data);
    if (length < sizeof *stat)
        return -1;
    zip_stat_init(stat);
    stat->size = static_cast<zip_uint64_t>(size);
    stat->valid |= ZIP_STAT_SIZE;
    return sizeof *stat;
}

} // namespace

ZipBytes::ZipBytes(const Descriptor* from, qint64 size, const Descriptor* to, ReadCount* count)
    : m_from(from), m_to(to), m_count(count), m_size(from != nullptr ? size : 0)
{
    zip_error_init(&m_error);
}

ZipBytes::~ZipBytes()
{
    zip_error_fini(&m_error);
}

zip_t* ZipBytes::open(int flags)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = zip_source_function_create(&ZipBytes::answer, this, &error);
    zip_t* archive = nullptr;
    if (source != nullptr) {
        archive = zip_open_from_source(source, flags, &error);
        if (archive == nullptr)
            zip_source_free(source);
    }
    zip_error_fini(&error);
    if (archive == nullptr)
        errno = m_readError != 0 ? m_readError : UnsoundArchive;
    return archive;
}

zip_int64_t ZipBytes::answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    return static_cast<ZipBytes*>(self)->answer(data, length, command);
}

zip_int64_t ZipBytes::answer(void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_OPEN:
        m_readAt = 0;
        return 0;
    case ZIP_SOURCE_READ:
        return read(data, length);
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_REMOVE:
        return 0;
    case ZIP_SOURCE_STAT:
        return tellStat(data, length, m_size);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, data, length);
    case ZIP_SOURCE_SEEK: {
        const zip_int64_t offset = zip_source_seek_compute_offset(
            static_cast<zip_uint64_t>(m_readAt), static_cast<zip_uint64_t>(m_size), data, length, &m_error);
        m_readAt = offset < 0 ? m_readAt : offset;
        return offset < 0 ? -1 : 0;
    }
    case ZIP_SOURCE_TELL:
        return m_readAt;
    case ZIP_SOURCE_BEGIN_WRITE:
        m_writeAt = m_written = 0;
        m_pending.clear();
        return 0;
    case ZIP_SOURCE_WRITE:
        return write(data, length);
    case ZIP_SOURCE_SEEK_WRITE: {
        if (!flush())
            return -1;
        const zip_int64_t offset = zip_source_seek_compute_offset(
            static_cast<zip_uint64_t>(m_writeAt), static_cast<zip_uint64_t>(m_written), data, length, &m_error);
        m_writeAt = offset < 0 ? m_writeAt : offset;
        return offset < 0 ? -1 : 0;
    }
    case ZIP_SOURCE_TELL_WRITE:
        return m_writeAt;
    case ZIP_SOURCE_COMMIT_WRITE:
        return flush() ? 0 : -1;
    case ZIP_SOURCE_SUPPORTS:
        if (m_to == nullptr)
            return ZIP_SOURCE_SUPPORTS_SEEKABLE;
        return ZIP_SOURCE_SUPPORTS_WRITABLE;
    default:
        zip_error_set(&m_error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

zip_int64_t ZipBytes::read(void* data, zip_uint64_t length)
{
    if (m_from == nullptr || m_readAt >= m_size)
        return 0;
    const qint64 count =
        readInto(*m_from, m_readAt, data, std::min(length, static_cast<zip_uint64_t>(m_size - m_readAt)));
    if (count < 0) {
        m_readError = errno;
        zip_error_set(&m_error, ZIP_ER_READ, errno);
        return -1;
    }
    m_readAt += count;
    if (m_count != nullptr)
        m_count->bytes += count;
    return count;
}

zip_int64_t ZipBytes::write(const void* data, zip_uint64_t length)
{
    m_pending.append(static_cast<const char*>(data), static_cast<qsizetype>(length));
    m_writeAt += static_cast<qint64>(length);
    m_written = std::max(m_written, m_writeAt);
    if (m_pending.size() >= blockSize && !flush())
        return -1;
    return static_cast<zip_int64_t>(length);
}

bool ZipBytes::flush()
{
    const bool done =
        m_to != nullptr && (m_pending.isEmpty() || writeAt(*m_to, m_writeAt - m_pending.size(), m_pending));
    if (!done) {
        m_writeError = m_to != nullptr && errno != 0 ? errno : EIO;
        zip_error_set(&m_error, ZIP_ER_WRITE, m_writeError);
    }
    m_pending.clear();
    return done;
}

FileBytes::FileBytes(QByteArray path, ReadCount* count) : m_path(std::move(path)), m_count(count)
{
    zip_error_init(&m_error);
}

FileBytes::~FileBytes()
{
    zip_error_fini(&m_error);
}

zip_source_t* FileBytes::source()
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = zip_source_function_create(&FileBytes::answer, this, &error);
    zip_error_fini(&error);
    return source;
}

zip_int64_t FileBytes::answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    return static_cast<FileBytes*>(self)->answer(data, length, command);
}

zip_int64_t FileBytes::fail()
{
    m_failed = true;
    zip_error_set(&m_error, ZIP_ER_READ, errno);
    return -1;
}

zip_int64_t FileBytes::answer(void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    struct stat info = {};
    switch (command) {
    case ZIP_SOURCE_OPEN:
        m_readAt = 0;
        m_file = openRegular(m_path, O_RDONLY, info);
        return m_file.isOpen() ? 0 : fail();
    case ZIP_SOURCE_READ: {
        const qint64 count = readInto(m_file, m_readAt, data, length);
        if (count < 0)
            return fail();
        m_readAt += count;
        m_count->bytes += count;
        return count;
    }
    case ZIP_SOURCE_CLOSE:
        m_file.close();
        return 0;
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_STAT:
        return ::stat(m_path.constData(), &info) == 0 ? tellStat(data, length, info.st_size) : fail();
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, data, length);
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_READABLE;
    default:
        zip_error_set(&m_error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

} // namespace orvantine
