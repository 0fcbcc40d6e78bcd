#include "desktop/qt/services/FolderPlaces.h"

#include "desktop/qt/widgets/MountFields.h"

#include <QDir>
#include <QFile>
#include <QList>

#include <unistd.h>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Mount
{
    QString folder;
    QByteArray type;
};

/// Read as text: asking the file systems themselves could wait for a server that has gone.
QList<Mount> mountsOf(const QByteArray& table)
{
    QList<Mount> mounts;
    const QList<QByteArray> lines = table.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() > 2)
            mounts.append({QFile::decodeName(withoutMountEscapes(fields[1])), fields[2]});
    }
    return mounts;
}

bool isMedium(const Mount& mount)
{
    return mount.folder.startsWith(u"/media/") || mount.folder.startsWith(u"/run/media/") ||
           mount.folder.startsWith(u"/mnt/");
}

void addOnce(QStringList& folders, const QString& folder)
{
    if (!folder.isEmpty() && !folders.contains(folder))
        folders += folder;
}

FolderPlaces ofComputer(const QList<Mount>& mounts)
{
    FolderPlaces places{.start = u"/"_s, .beside = {u"/"_s}};
    addOnce(places.beside, QDir::homePath());
    for (const Mount& mount : mounts)
        if (isMedium(mount) && !isNetworkFileSystem(mount.type))
            addOnce(places.beside, mount.folder);
    return places;
}

FolderPlaces ofNetwork(const QList<Mount>& mounts)
{
    FolderPlaces places;
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    QStringList candidates;
    if (session.startsWith(u'/'))
        candidates += QDir::cleanPath(session) + u"/gvfs"_s;
    addOnce(candidates, u"/run/user/%1/gvfs"_s.arg(::getuid()));
    candidates += {u"/net"_s, u"/mnt"_s};
    for (const QString& candidate : std::as_const(candidates))
        if (QDir(candidate).exists())
            places.beside += candidate;

    const auto filled = std::find_if(places.beside.cbegin(), places.beside.cend(),
                                     [](const QString& folder) { return !QDir(folder).isEmpty(); });
    if (filled != places.beside.cend())
        places.start = *filled;
    else
        places.start = places.beside.value(0, u"/"_s);

    for (const Mount& mount : mounts)
        if (isNetworkFileSystem(mount.type))
            addOnce(places.beside, mount.folder);
    return places;
}

} // namespace

FolderPlaces folderPlaces(FolderRoot root, const QByteArray& mounts)
{
    switch (root) {
    case FolderRoot::Computer:
        return ofComputer(mountsOf(mounts));
    case FolderRoot::Network:
        return ofNetwork(mountsOf(mounts));
    }
    return {};
}

QByteArray mountTable()
{
    QFile table(u"/proc/self/mounts"_s);
    return table.open(QFile::ReadOnly) ? table.readAll() : QByteArray();
}

} // namespace orvantine
