#include "desktop/archive/CentralDirectory.h"
#include "platform/FileDirPath.h"
#include "transfer/RestorePlan.h"

#include <QSet>

#include <cstdint>
#include <cstdlib>

using namespace orvantine;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestInput = 65536;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// One line an entry: kind, two digits of size and packed size, name.
std::vector<ArchiveEntry> entriesOf(const QByteArray& bytes)
{
    std::vector<ArchiveEntry> entries;
    const QByteArrayList lines = bytes.split('\n');
    for (const QByteArray& line : lines) {
        if (line.size() < 3)
            continue;
        ArchiveEntry entry;
        entry.kind = static_cast<ArchiveEntry::Kind>(static_cast<unsigned char>(line[0]) % 3);
        entry.size = qint64{1} << (static_cast<unsigned char>(line[1]) % 63);
        entry.packedSize = qint64{1} << (static_cast<unsigned char>(line[2]) % 63);
        entry.name = QString::fromUtf8(line.sliced(3));
        entries.push_back(entry);
    }
    return entries;
}

/// Where a name leads, as a disk goes through it.
QString placeOf(const QString& folder, const QString& name)
{
    QStringList parts{folder};
    for (const QString& part : QString(name).replace(u'\\', u'/').split(u'/')) {
        if (part == u".."_s) {
            if (!parts.isEmpty())
                parts.removeLast();
        } else if (!part.isEmpty() && part != u"."_s) {
            parts.append(part);
        }
    }
    return parts.join(u'/');
}

/// Into memory: all of it, each place once and beneath its folder, and no more than there is room for.
void restore(const std::vector<ArchiveEntry>& entries, const RestorePlan& plan, qint64 room)
{
    QSet<QString> places;
    qint64 bytes = 0;
    for (const RestoredFile& file : plan.files) {
        const QString folder = file.picture ? u"Resource"_s : u"Playlisten"_s;
        const QString place = placeOf(folder, file.name);
        require(place == folder + u'/' + file.name);
        require(!places.contains(FileDirPath::compared(place)));
        places.insert(FileDirPath::compared(place));
        require(entries[file.number].kind == ArchiveEntry::Kind::File);
        bytes += entries[file.number].size;
        require(bytes <= room);
    }
    for (const QString& folder : plan.folders) {
        require(placeOf(u"Playlisten"_s, folder) == u"Playlisten/"_s + folder);
        require(!places.contains(FileDirPath::compared(u"Playlisten/"_s + folder)));
    }
    std::size_t files = 0;
    for (const ArchiveEntry& entry : entries)
        files += entry.kind == ArchiveEntry::Kind::File ? 1 : 0;
    require(files == plan.files.size());
}

} // namespace

/// The names of a backup lead nowhere else, and bytes that pretend to be an archive are read within their bounds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (bytes.size() > LongestInput)
        return 0;
    (void)namesAreClean([&bytes](qint64 offset, qint64 length) { return bytes.mid(offset, length); }, bytes.size());
    const std::vector<ArchiveEntry> entries = entriesOf(bytes);
    constexpr qint64 Room = qint64{1} << 24;
    const auto planned = planRestore(entries, qint64{1} << 30, Room);
    if (const auto* const plan = std::get_if<RestorePlan>(&planned))
        restore(entries, *plan, Room);
    return 0;
}
