#include "desktop/qt/widgets/TreePlaces.h"

#include "desktop/posix/NameLookup.h"
#include "desktop/qt/widgets/MountFields.h"

#include <QDir>
#include <QFile>
#include <QList>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <tuple>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool startsWithAny(const QByteArray& text, std::initializer_list<const char*> starts)
{
    return std::any_of(starts.begin(), starts.end(), [&text](const char* start) { return text.startsWith(start); });
}

/// Volumes that people put files on; not what the system mounts for itself.
bool isVolume(const QByteArray& type, const QByteArray& source, const QByteArray& point)
{
    if (type == "squashfs" || source.startsWith("/dev/loop"))
        return false;
    return source.startsWith("/dev/") || startsWithAny(type, {"fuse.", "fuseblk", "zfs", "btrfs"}) ||
           startsWithAny(point, {"/media/", "/run/media/", "/mnt/"});
}

bool isSystems(const QByteArray& point)
{
    if (startsWithAny(point, {"/run/media/", "/run/user/"}))
        return false;
    const QByteArray folder = point + '/';
    return startsWithAny(
        folder, {"/proc/", "/sys/", "/dev/", "/run/", "/boot/", "/etc/", "/snap/", "/var/", "/usr/", "/tmp/", "/efi/"});
}

QByteArray lastPart(const QByteArray& path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

/// "36 35 98:0 /root /point options … - type source super-options"
std::optional<TreePlace> placeOfLine(const QByteArray& line)
{
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype dash = fields.indexOf("-");
    if (dash < 5 || dash + 2 >= fields.size())
        return std::nullopt;
    const QByteArray point = withoutMountEscapes(fields[4]);
    const QByteArray& type = fields[dash + 1];
    if (point == "/" || isSystems(point))
        return std::nullopt;
    TreePlace place{folderText(lastPart(point)), point, u"drive-harddisk"_s, isNetworkFileSystem(type)};
    if (type == "fuse.gvfsd-fuse")
        place.name = u"Netzwerkordner"_s;
    else if (!place.network && !isVolume(type, withoutMountEscapes(fields[dash + 2]), point))
        return std::nullopt;
    if (place.network)
        place.icon = u"folder-remote"_s;
    else if (startsWithAny(point, {"/media/", "/run/media/", "/mnt/"}))
        place.icon = u"drive-removable-media"_s;
    return place;
}

QByteArray joined(const QByteArray& folder, const QByteArray& name)
{
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

using Identity = std::pair<dev_t, ino_t>;

/// The folders from "/" down to `path`.
std::vector<Identity> identitiesAbove(const QByteArray& path)
{
    std::vector<Identity> above;
    for (QByteArray folder = path; !folder.isEmpty();) {
        struct stat info = {};
        if (::stat(folder.constData(), &info) == 0)
            above.emplace_back(info.st_dev, info.st_ino);
        const qsizetype slash = folder.lastIndexOf('/');
        if (folder == "/" || slash < 0)
            break;
        folder.truncate(std::max<qsizetype>(slash, 1));
    }
    return above;
}

} // namespace

std::vector<TreePlace> treePlaces(const QByteArray& home, const QByteArray& mountTable)
{
    std::vector<TreePlace> places;
    if (!home.isEmpty() && home != "/")
        places.push_back({u"Persönlicher Ordner"_s, home, u"user-home"_s});
    places.push_back({u"Dateisystem"_s, "/", u"drive-harddisk"_s});

    std::vector<TreePlace> mounts;
    for (const QByteArray& line : mountTable.split('\n')) {
        std::optional<TreePlace> place = placeOfLine(line);
        const bool known =
            place && (place->path == home || std::any_of(mounts.begin(), mounts.end(), [&](const TreePlace& other) {
                          return other.path == place->path;
                      }));
        if (place && !known)
            mounts.push_back(*std::move(place));
    }
    std::sort(mounts.begin(), mounts.end(), [](const TreePlace& left, const TreePlace& right) {
        return std::tuple(left.network, left.name.toCaseFolded(), left.path) <
               std::tuple(right.network, right.name.toCaseFolded(), right.path);
    });
    std::move(mounts.begin(), mounts.end(), std::back_inserter(places));
    return places;
}

std::vector<TreePlace> treePlaces()
{
    QFile table(u"/proc/self/mountinfo"_s);
    const QByteArray mounts = table.open(QIODevice::ReadOnly) ? table.readAll() : QByteArray();
    return treePlaces(QFile::encodeName(QDir::homePath()), mounts);
}

FolderListing readFolder(const QByteArray& path)
{
    FolderListing listing;
    DIR* const folder = ::opendir(path.constData());
    if (folder == nullptr)
        return listing;
    listing.readable = true;
    std::vector<Identity> above;
    std::vector<std::pair<QString, FolderEntry>> found;
    while (const dirent* entry = ::readdir(folder)) {
        FolderEntry child{QByteArray(entry->d_name)};
        if (child.name.startsWith('.'))
            continue;
        if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            struct stat info = {};
            // A link that leads nowhere, or round in a circle, is no folder.
            if (::stat(joined(path, child.name).constData(), &info) != 0 || !S_ISDIR(info.st_mode))
                continue;
            if (above.empty())
                above = identitiesAbove(path);
            child.loop = std::find(above.begin(), above.end(), Identity(info.st_dev, info.st_ino)) != above.end();
        } else if (entry->d_type != DT_DIR) {
            continue;
        }
        found.emplace_back(folderText(child.name).toCaseFolded(), std::move(child));
    }
    ::closedir(folder);
    std::sort(found.begin(), found.end(), [](const auto& left, const auto& right) {
        return std::tie(left.first, left.second.name) < std::tie(right.first, right.second.name);
    });
    for (auto& entry : found)
        listing.folders.push_back(std::move(entry.second));
    return listing;
}

QString folderText(const QByteArray& path)
{
    QStringList parts;
    for (const QByteArray& part : path.split('/'))
        parts += NameLookup::textOf(part);
    return parts.join(u'/');
}

} // namespace orvantine
