#pragma once

#include "desktop/archive/ZipBytes.h"
#include "platform/Files.h"
#include "platform/ZipArchive.h"

#include <functional>

namespace orvantine {

struct ZipCloser
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using ZipHandle = std::unique_ptr<zip_t, ZipCloser>;

/// Reads one entry to its end, piece by piece. False, with `errno`, if its length or checksum is not as told, it could
/// not be read, or `take` stops it.
[[nodiscard]] bool readEntry(zip_t* archive, std::size_t number, qint64 size,
                             const std::function<bool(QByteArrayView piece)>& take);

class OpenedZip final : public OpenedArchive
{
public:
    /// Null, with `errno`, for what is no whole archive, has too many entries or cannot be read. What is unpacked goes
    /// into `staging`, which is emptied and made; its parent is the user's alone.
    [[nodiscard]] static std::unique_ptr<OpenedZip> open(Files& files, const QByteArray& path, qint64 mostEntries,
                                                         const QByteArray& staging);
    /// The same for a file that is open.
    [[nodiscard]] static std::unique_ptr<OpenedZip> read(Files& files, Descriptor file, qint64 size, qint64 mostEntries,
                                                         const QByteArray& staging);
    OpenedZip(Files& files, Descriptor file, qint64 size, QByteArray staging);
    ~OpenedZip() override;

    [[nodiscard]] const std::vector<ArchiveEntry>& entries() const override { return m_entries; }
    [[nodiscard]] qint64 size() const override { return m_size; }
    [[nodiscard]] bool unpack(const std::vector<std::size_t>& numbers, const ArchiveProgress& progress) override;
    [[nodiscard]] QString unpackedFile(std::size_t number) const override;

private:
    [[nodiscard]] bool readEntries(qint64 mostEntries);
    /// False with `errno`, also where the disk is sound and the archive is not.
    [[nodiscard]] bool unpackOne(std::size_t number, const std::function<bool(qint64 bytes)>& goesOn);
    /// False with `errno`.
    [[nodiscard]] bool prepareStaging();
    void emptyStaging() const;

    Files& m_files;
    Descriptor m_file;
    qint64 m_size;
    QByteArray m_staging;
    ZipBytes m_bytes;
    ZipHandle m_archive;
    std::vector<ArchiveEntry> m_entries;
    bool m_staged = false;
    /// `errno` of a read in front of the library's own, or 0.
    int m_headError = 0;
};

} // namespace orvantine
