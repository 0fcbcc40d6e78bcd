#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace orvantine {

/// Bytes of work done of all. Comes several times a second, and may serve events; false stops the work, which then
/// leaves nothing behind.
using ArchiveProgress = std::function<bool(qint64 done, qint64 total)>;

/// The levels that an option of the program chooses between.
enum class Compression : int { Simple = 3, Moderate = 6, Strong = 9 };

/// A folder whose files, those below it included, go into an archive under names relative to it.
struct ArchiveTree
{
    /// With or without a trailing separator. One that does not exist has no files.
    QString folder;
    /// The folders below it get entries of their own, so that empty ones come back as well.
    bool foldersToo = true;
};

/// A file that goes in under a name of its own.
struct ArchiveFile
{
    QString path;
    QString name;
};

struct ArchiveEntry
{
    enum class Kind {
        File,
        Folder,
        /// A link, a device, or encrypted: nothing that can be unpacked.
        Other
    };

    /// As the archive has it, whatever it holds. That of a folder ends in "/".
    QString name;
    Kind kind = Kind::File;
    /// What the archive says of itself.
    qint64 size = 0;
    qint64 packedSize = 0;
    QDateTime modified;
};

struct ArchiveJob
{
    QString archive;
    /// One after the other: of two files with one name the later one stays.
    std::vector<ArchiveTree> trees;
    Compression compression = Compression::Strong;
    /// Asked for each file and folder by its name in the archive; empty takes all. Nothing below a folder is looked at
    /// that is not taken.
    std::function<bool(const QString& name)> takes;
    /// Behind the trees.
    std::vector<ArchiveFile> files = {};
    /// Links to files go in as the files that they lead to. Else all links are left out, and named.
    bool followsLinks = true;
    /// Asked for all that the finished archive of `size` bytes holds, before it takes its place; empty accepts all.
    std::function<bool(const std::vector<ArchiveEntry>& entries, qint64 size)> accepts = {};
};

struct ArchiveOutcome
{
    /// The archive holds all that could be read, and what it held before; it was read again to its last byte.
    bool done = false;
    /// Files and folders, by their names in the archive, that were not taken or could not be read. A whole tree has the
    /// name of its folder.
    QStringList leftOut;
};

/// An archive that is open for reading. What was unpacked of it goes with this.
class OpenedArchive
{
public:
    virtual ~OpenedArchive() = default;

    [[nodiscard]] virtual const std::vector<ArchiveEntry>& entries() const = 0;
    /// Bytes of the archive itself.
    [[nodiscard]] virtual qint64 size() const = 0;
    /// Unpacks these entries, files all of them, into a folder that is nobody else's. False if one is not as large as
    /// told, or its checksum is wrong; also, with a fault at the service of files, where the disk fails.
    [[nodiscard]] virtual bool unpack(const std::vector<std::size_t>& numbers, const ArchiveProgress& progress) = 0;
    /// The unpacked file of an entry, with its time.
    [[nodiscard]] virtual QString unpackedFile(std::size_t number) const = 0;
};

/// Zip archives: names in UTF-8, of any size, with the times of the files. Audio files, pictures and archives do not
/// shrink, so they are stored.
class ZipArchive
{
public:
    virtual ~ZipArchive() = default;

    /// Makes an archive, or adds to one that stands there; an entry of the same name is replaced. Special files, links
    /// to folders and the archive itself are left out silently. The archive stands under its name only when it is whole
    /// and on the disk: where the work fails the older one stays, as does a file that is no whole archive. A fault of
    /// the disk is noted at the service of files.
    [[nodiscard]] virtual ArchiveOutcome add(const ArchiveJob& job, const ArchiveProgress& progress) = 0;

    /// Null for what is no whole archive, or has more entries than that; also, with a fault at the service of files,
    /// where the disk fails.
    [[nodiscard]] virtual std::unique_ptr<OpenedArchive> open(const QString& archive, qint64 mostEntries) = 0;
};

} // namespace orvantine
