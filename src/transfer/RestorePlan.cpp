#include "transfer/RestorePlan.h"

#include "platform/FileDirPath.h"

#include <QSet>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestPart = 255;
constexpr qsizetype LongestName = 3000;

bool isGoodPart(QStringView part)
{
    return !part.isEmpty() && part != u"."_s && part != u".."_s && part.toUtf8().size() <= LongestPart &&
           FileDirPath::canBeFileName(part) && std::none_of(part.begin(), part.end(), [](QChar unit) {
               return unit == QChar(0x7f) || unit == QChar::ReplacementCharacter ||
                      (unit.unicode() >= 0x80 && unit.unicode() < 0xa0);
           });
}

bool isPicture(const QString& name)
{
    constexpr auto Anyhow = Qt::CaseInsensitive;
    return name.endsWith(u".jpg"_s, Anyhow) || name.endsWith(u".gif"_s, Anyhow) || name.endsWith(u".bmp"_s, Anyhow);
}

/// Packed like nothing that an honest program has packed. A plain picture, or a list of one track over and over, comes
/// close to the most that the method can do.
bool isBomb(const ArchiveEntry& entry)
{
    constexpr qint64 Harmless = qint64{1024} * 1024;
    constexpr qint64 Large = 64 * Harmless;
    constexpr qint64 MostRatio = 1040;
    constexpr qint64 MostRatioOfLarge = 200;
    const qint64 most = entry.size > Large ? MostRatioOfLarge : MostRatio;
    return entry.size > Harmless && entry.size / most > entry.packedSize;
}

/// The names that are taken in the two folders.
class Places
{
public:
    bool takeFile(bool picture, const QString& name)
    {
        for (qsizetype cut = name.indexOf(u'/'); cut >= 0; cut = name.indexOf(u'/', cut + 1))
            if (!takeFolder(picture, name.left(cut)))
                return false;
        const QString key = keyOf(picture, name);
        return !m_folders.contains(key) && insert(m_files, key);
    }
    /// One that comes twice is one.
    bool takeFolder(bool picture, const QString& name)
    {
        const QString key = keyOf(picture, name);
        m_folders.insert(key);
        return !m_files.contains(key);
    }

private:
    static QString keyOf(bool picture, const QString& name)
    {
        return (picture ? u"Resource/"_s : u"Playlisten/"_s) + FileDirPath::compared(name);
    }
    static bool insert(QSet<QString>& set, const QString& key)
    {
        const qsizetype before = set.size();
        set.insert(key);
        return set.size() > before;
    }

    QSet<QString> m_files;
    QSet<QString> m_folders;
};

} // namespace

bool isRestorableName(const QString& name)
{
    const QString path = name.endsWith(u'/') ? name.chopped(1) : name;
    const QList<QStringView> parts = QStringView(path).split(u'/');
    return name.size() <= LongestName && std::all_of(parts.begin(), parts.end(), isGoodPart);
}

std::variant<RestorePlan, RestoreObstacle> planRestore(const std::vector<ArchiveEntry>& entries, qint64 archiveSize,
                                                       qint64 room)
{
    using Kind = RestoreObstacle::Kind;
    if (entries.empty())
        return RestoreObstacle{Kind::Unsound, {}};
    if (static_cast<qint64>(entries.size()) > MostRestoredEntries)
        return RestoreObstacle{Kind::TooMuch, {}};
    RestorePlan plan;
    Places places;
    qint64 bytes = 0;
    qint64 packed = 0;
    for (std::size_t number = 0; number < entries.size(); ++number) {
        const ArchiveEntry& entry = entries[number];
        if (entry.kind == ArchiveEntry::Kind::Other || !isRestorableName(entry.name) || entry.size < 0 ||
            entry.packedSize < 0 || entry.packedSize > archiveSize - packed || isBomb(entry) ||
            entry.name.endsWith(u'/') != (entry.kind == ArchiveEntry::Kind::Folder))
            return RestoreObstacle{Kind::Unsound, entry.name};
        if (entry.size > MostRestoredBytes - bytes)
            return RestoreObstacle{Kind::TooMuch, entry.name};
        if (entry.size > room - bytes)
            return RestoreObstacle{Kind::NoRoom, entry.name};
        bytes += entry.size;
        packed += entry.packedSize;
        if (entry.kind == ArchiveEntry::Kind::Folder) {
            if (!places.takeFolder(false, entry.name.chopped(1)))
                return RestoreObstacle{Kind::Unsound, entry.name};
            plan.folders.append(entry.name.chopped(1));
            continue;
        }
        const bool picture = isPicture(entry.name);
        if (!places.takeFile(picture, entry.name))
            return RestoreObstacle{Kind::Unsound, entry.name};
        plan.files.push_back({number, picture, entry.name});
        if (FileDirPath::compared(entry.name) == FileDirPath::compared(u"Orvantine.dat"_s))
            plan.database = number;
    }
    std::sort(plan.folders.begin(), plan.folders.end());
    return plan;
}

} // namespace orvantine
