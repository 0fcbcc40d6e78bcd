#pragma once

#include "desktop/posix/Descriptor.h"

#include <QByteArray>

#include <zip.h>

namespace orvantine {

/// Counts what has been read for an archive on its way.
struct ReadCount
{
    qint64 bytes = 0;
};

/// The bytes of an archive as libzip asks for them: read from one file, written to another, so that nothing of the
/// first changes. Outlives the archive that is opened over it.
class ZipBytes
{
public:
    /// Without a file to read from it is an empty archive; without one to write to it is for reading alone.
    ZipBytes(const Descriptor* from, qint64 size, const Descriptor* to = nullptr, ReadCount* count = nullptr);
    ~ZipBytes();
    ZipBytes(const ZipBytes&) = delete;
    ZipBytes& operator=(const ZipBytes&) = delete;

    /// Null with `errno`: no whole archive, or it could not be read.
    [[nodiscard]] zip_t* open(int flags);
    /// `errno` of the write that failed, or 0.
    [[nodiscard]] int writeError() const { return m_writeError; }
    /// `errno` of the read that failed, or 0.
    [[nodiscard]] int readError() const { return m_readError; }

private:
    static zip_int64_t answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t answer(void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t read(void* data, zip_uint64_t length);
    zip_int64_t write(const void* data, zip_uint64_t length);
    [[nodiscard]] bool flush();

    const Descriptor* m_from;
    const Descriptor* m_to;
    ReadCount* m_count;
    qint64 m_size;
    qint64 m_readAt = 0;
    qint64 m_writeAt = 0;
    qint64 m_written = 0;
    /// Written and not yet handed to the disk; it ends at m_writeAt.
    QByteArray m_pending;
    int m_writeError = 0;
    int m_readError = 0;
    zip_error_t m_error;
};

/// A file on its way into an archive. Outlives the archive.
class FileBytes
{
public:
    FileBytes(QByteArray path, ReadCount* count);
    ~FileBytes();
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    [[nodiscard]] zip_source_t* source();
    /// It has vanished, or could not be read.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    static zip_int64_t answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t answer(void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t fail();

    QByteArray m_path;
    ReadCount* m_count;
    Descriptor m_file;
    qint64 m_readAt = 0;
    bool m_failed = false;
    zip_error_t m_error;
};

} // namespace orvantine
