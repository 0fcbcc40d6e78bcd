#include "desktop/posix/PosixVolumes.h"

#include <QDir>
#include <QList>
#include <QStorageInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

bool isDrive(const QString& path)
{
    return path.size() >= 2 && path[1] == u':' && path[0].isLetter();
}

QString slashed(const QString& path)
{
    return QString(path).replace(u'\\', u'/');
}

// "/media/user/STICK/Musik" -> "/media/user/STICK"; "" for a path that lies elsewhere.
QString removableRoot(const QString& path)
{
    struct Place
    {
        QStringView prefix;
        qsizetype parts;
    };
    for (const Place& place : {Place{u"/media/", 2}, Place{u"/run/media/", 2}, Place{u"/mnt/", 1}}) {
        if (!path.startsWith(place.prefix))
            continue;
        const QStringList parts = path.sliced(place.prefix.size()).split(u'/', Qt::SkipEmptyParts);
        if (parts.size() >= place.parts)
            return place.prefix.toString() + parts.first(place.parts).join(u'/');
    }
    return {};
}

} // namespace

std::optional<VolumeInfo> mountedVolume(const QString& path)
{
    const QStorageInfo info(path);
    if (!info.isValid() || !info.isReady())
        return std::nullopt;
    return VolumeInfo{info.rootPath(), QString::fromLatin1(info.fileSystemType()),
                      static_cast<quint64>(qMax(info.bytesAvailable(), qint64{0})),
                      static_cast<quint64>(qMax(info.bytesTotal(), qint64{0}))};
}

PosixVolumes::PosixVolumes(const QMap<QString, QString>& drives, VolumeQuery query) : m_query(std::move(query))
{
    for (auto drive = drives.cbegin(); drive != drives.cend(); ++drive)
        m_drives.insert(drive.key().left(2).toUpper(), drive.value());
}

QString PosixVolumes::rootOf(const QString& path) const
{
    if (path.isEmpty() || isDrive(path))
        return path.left(3);
    const QString absolute = QDir::cleanPath(QDir::current().absoluteFilePath(slashed(path)));
    QString removable = removableRoot(absolute);
    if (!removable.isEmpty())
        return removable;
    QString existing = absolute;
    while (existing.size() > 1 && !QFileInfo::exists(existing))
        existing = existing.left(qMax(existing.lastIndexOf(u'/'), qsizetype{1}));
    const std::optional<VolumeInfo> info = m_query(existing);
    return info ? info->root : QString();
}

std::optional<VolumeInfo> PosixVolumes::volume(const QString& root) const
{
    QString folder = slashed(root);
    if (isDrive(root)) {
        folder = m_drives.value(root.left(2).toUpper());
        if (!folder.isEmpty())
            folder += slashed(root.sliced(2));
    }
    if (folder.isEmpty() || !QFileInfo::exists(folder))
        return std::nullopt;
    return m_query(folder);
}

QString PosixVolumes::fileSystem(const QString& root) const
{
    const std::optional<VolumeInfo> info = volume(root);
    if (!info)
        return {};
    const QString type = info->type.toUpper();
    return type == u"VFAT"_s || type == u"MSDOS"_s ? u"FAT32"_s : type;
}

std::optional<quint64> PosixVolumes::freeBytes(const QString& root) const
{
    const std::optional<VolumeInfo> info = volume(root);
    return info ? std::optional(info->freeBytes) : std::nullopt;
}

std::optional<quint64> PosixVolumes::totalBytes(const QString& root) const
{
    const std::optional<VolumeInfo> info = volume(root);
    return info ? std::optional(info->totalBytes) : std::nullopt;
}

} // namespace orvantine
