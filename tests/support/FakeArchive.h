#pragma once

#include "platform/Files.h"
#include "platform/ZipArchive.h"
#include "support/CallLog.h"

#include <QMap>

namespace orvantine::fake {

/// Archives on any disk, in a form of their own: a checksum over all, no compression.
class FakeArchive final : public ZipArchive
{
public:
    /// `staging` is made when it is needed.
    FakeArchive(CallLog& log, Files& files, QString staging) : m_log(log), m_files(files), m_staging(std::move(staging))
    {
    }

    [[nodiscard]] ArchiveOutcome add(const ArchiveJob& job, const ArchiveProgress& progress) override;
    [[nodiscard]] std::unique_ptr<OpenedArchive> open(const QString& archive, qint64 mostEntries) override;

    /// Gives a file that was unpacked its time.
    std::function<void(const QString& path, const QDateTime& time)> SetModified = [](const QString&, const QDateTime&) {
    };

    struct Packed
    {
        ArchiveEntry entry;
        QByteArray bytes;
        bool operator==(const Packed& other) const
        {
            return entry.name.compare(other.entry.name, Qt::CaseInsensitive) == 0;
        }
    };

    // For the test
    /// An archive with any entries: names that lead elsewhere, sizes that are lies.
    [[nodiscard]] static QByteArray packed(const QList<Packed>& entries);
    [[nodiscard]] static std::optional<QList<Packed>> unpacked(const QByteArray& bytes);

private:
    struct Tree
    {
        QList<Packed> files;
        QStringList leftOut;
    };
    [[nodiscard]] bool isRefused(const ArchiveJob& job, const QString& path, const QString& name) const;
    void read(const ArchiveJob& job, const ArchiveTree& tree, const QString& below, Tree& found) const;

    CallLog& m_log;
    Files& m_files;
    QString m_staging;
};

} // namespace orvantine::fake
