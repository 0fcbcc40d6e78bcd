#pragma once

#include "ArchiveContract.h"
#include "desktop/archive/LibzipArchive.h"
#include "desktop/posix/PosixFiles.h"

#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {

/// The real service on a real disk.
class DiskWorld : public ArchiveWorld
{
public:
    /// Names that are not UTF-8 are beyond QTemporaryDir.
    ~DiskWorld() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder.path().toStdString(), ignored);
    }

    [[nodiscard]] Files& files() override { return m_files; }
    [[nodiscard]] ZipArchive& zip() override { return m_zip; }
    [[nodiscard]] QString folder() const override { return m_folder.path(); }
    [[nodiscard]] QString recovery() const { return m_recovery.path() + QStringLiteral("/recovery"); }
    void setModified(const QString& path, const QDateTime& time) override
    {
        const timespec times[2] = {{0, UTIME_OMIT}, {time.toSecsSinceEpoch(), 0}};
        ::utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0);
    }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_recovery;
    PosixFiles m_files{{.recoveryFolder = recovery()}};
    LibzipArchive m_zip{m_files, recovery()};
};

} // namespace orvantine
