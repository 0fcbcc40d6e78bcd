#pragma once

#include "desktop/archive/ZipBytes.h"
#include "platform/ZipArchive.h"

#include <functional>

namespace orvantine {

struct ZipCloser
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using ZipHandle = std::unique_ptr<zip_t, ZipCloser>;

/// Reads one entry to its end, piece by piece. False if its length or checksum is not as told, or `take` stops it.
[[nodiscard]] bool readEntry(zip_t* archive, std::size_t number, qint64 size,
                             const std::function<bool(QByteArrayView piece)>& take);

class OpenedZip final : public OpenedArchive
{
public:
    /// Null for what is no whole archive or has too many entries. What is unpacked goes into `staging`, which is
    /// emptied and made; its parent is the user's alone.
    [[nodiscard]] static std::unique_ptr<OpenedZip> open(const QByteArray& path, qint64 mostEntries,
                                                         const QByteArray& staging);
    OpenedZip(Descriptor file, qint64 size, QByteArray staging);
    ~OpenedZip() override;

    [[nodiscard]] const std::vector<ArchiveEntry>& entries() const override { return m_entries; }
    [[nodiscard]] qint64 size() const override { return m_size; }
    /// False with `errno`.
    [[nodiscard]] bool unpack(const std::vector<std::size_t>& numbers, const ArchiveProgress& progress) override;
    [[nodiscard]] QString unpackedFile(std::size_t number) const override;

private:
    [[nodiscard]] bool readEntries(qint64 mostEntries);
    [[nodiscard]] bool unpackOne(std::size_t number, const std::function<bool(qint64 bytes)>& goesOn);
    void emptyStaging() const;

    Descriptor m_file;
    qint64 m_size;
    QByteArray m_staging;
    ZipBytes m_bytes;
    ZipHandle m_archive;
    std::vector<ArchiveEntry> m_entries;
    bool m_staged = false;
};

} // namespace orvantine
