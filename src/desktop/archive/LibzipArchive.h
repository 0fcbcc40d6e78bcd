#pragma once

#include "platform/Files.h"
#include "platform/ZipArchive.h"

#include <QByteArray>

namespace orvantine {

/// Archives on the host's disk, by libzip.
class LibzipArchive final : public ZipArchive
{
public:
    /// `privateFolder`: what is unpacked lies in a folder of it; it is made with mode 0700 when it is needed. "" for
    /// none: then nothing is unpacked.
    LibzipArchive(Files& files, const QString& privateFolder);

    [[nodiscard]] ArchiveOutcome add(const ArchiveJob& job, const ArchiveProgress& progress) override;
    [[nodiscard]] std::unique_ptr<OpenedArchive> open(const QString& archive, qint64 mostEntries) override;

private:
    void noteUnlessUnsound(int error);

    Files& m_files;
    QByteArray m_staging;
};

} // namespace orvantine
