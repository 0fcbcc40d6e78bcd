#pragma once

#include "FilesContract.h"
#include "desktop/posix/KeptVersions.h"
#include "desktop/posix/PosixFiles.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace orvantine {

/// The real disk in a temporary folder; the recovery folder lies beside it.
class TempWorld : public FilesWorld
{
public:
    explicit TempWorld(PosixFilesOptions options = {}) : m_files(completed(std::move(options))) {}

    /// Names that are not UTF-8 are beyond QTemporaryDir.
    ~TempWorld() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder.path().toStdString(), ignored);
    }

    [[nodiscard]] PosixFiles& files() override { return m_files; }
    [[nodiscard]] QString folder() const override { return m_folder.path(); }
    [[nodiscard]] QString recovery() const { return m_recovery.path() + QStringLiteral("/Sicherung"); }
    [[nodiscard]] QByteArrayList kept() const override
    {
        QByteArrayList result;
        QFile contents(recovery() + QStringLiteral("/Contents"));
        if (!contents.open(QIODevice::ReadOnly))
            return result;
        const QByteArrayList lines = contents.readAll().split('\n');
        for (const QByteArray& line : lines) {
            const QByteArrayList parts = line.split('\t');
            QFile copy(recovery() + QLatin1Char('/') +
                       QString::fromUtf8(QByteArray::fromPercentEncoding(parts.value(1))));
            if (parts.size() >= 3 && copy.open(QIODevice::ReadOnly))
                result += copy.readAll();
        }
        return result;
    }
    [[nodiscard]] const KeptVersions& versions() const override { return m_versions; }
    /// No copy can be entered any more; the journal stays what it is.
    void breakStore() override
    {
        const std::string folder = recovery().toStdString();
        std::filesystem::create_directories(folder);
        ASSERT_EQ(::chmod(folder.c_str(), 0700), 0);
        std::filesystem::remove(folder + "/Contents");
        ASSERT_EQ(::mkdir((folder + "/Contents").c_str(), 0700), 0);
    }
    /// The host's path of a name in the folder.
    [[nodiscard]] std::string native(const QByteArray& name) const
    {
        return (m_folder.path().toUtf8() + '/' + name).toStdString();
    }
    /// Past the service, as another program would.
    void put(const QByteArray& name, const QByteArray& bytes) const
    {
        std::FILE* const file = std::fopen(native(name).c_str(), "wb");
        ASSERT_NE(file, nullptr) << name.toStdString();
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), file);
        std::fclose(file);
    }
    [[nodiscard]] QByteArray bytes(const QByteArray& name) const
    {
        QByteArray result;
        if (std::FILE* const file = std::fopen(native(name).c_str(), "rb")) {
            char chunk[65536];
            for (std::size_t count = 1; count > 0; result.append(chunk, static_cast<qsizetype>(count)))
                count = std::fread(chunk, 1, sizeof chunk, file);
            std::fclose(file);
        }
        return result;
    }
    [[nodiscard]] struct stat info(const QByteArray& name) const
    {
        struct stat result = {};
        ::stat(native(name).c_str(), &result);
        return result;
    }

private:
    PosixFilesOptions completed(PosixFilesOptions options) const
    {
        if (options.recoveryFolder.isEmpty())
            options.recoveryFolder = recovery();
        return options;
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_recovery;
    PosixFiles m_files;
    KeptVersions m_versions{recovery()};
};

} // namespace orvantine
