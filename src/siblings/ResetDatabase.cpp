#include "siblings/ResetDatabase.h"

#include "desktop/posix/JournalNotes.h"
#include "desktop/posix/NameLookup.h"
#include "desktop/posix/PrivateFolder.h"
#include "platform/FileDirPath.h"

#include <algorithm>
#include <cerrno>

#include <dirent.h>
#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Behind the name of a file in the trash.
const QString Details = u".trashinfo"_s;
const QStringList ListTypes{u".m3u"_s, u".m3u8"_s, u".pls"_s, u".nml"_s, u".bak"_s};

bool isList(const QByteArray& path, const QString& name)
{
    struct stat info = {};
    return std::any_of(ListTypes.begin(), ListTypes.end(),
                       [&name](const QString& type) { return name.endsWith(type, Qt::CaseInsensitive); }) &&
           !isScratchName(path) && ::stat(path.constData(), &info) == 0 && S_ISREG(info.st_mode);
}

/// The playlists of a folder, those whose names begin with a dot as well. Nothing where it could not be read to its
/// end: what is not seen would stay behind an empty database.
std::optional<QStringList> listsOf(const QByteArray& folder)
{
    DIR* const open = ::opendir(folder.constData());
    if (open == nullptr)
        return {};
    QStringList names;
    errno = 0;
    while (const dirent* const entry = ::readdir(open)) {
        const QByteArray path = folder + '/' + entry->d_name;
        if (const QString name = NameLookup::textOf(entry->d_name); isList(path, name))
            names.append(name);
        errno = 0;
    }
    const bool whole = errno == 0;
    ::closedir(open);
    names.sort();
    return whole ? std::optional(names) : std::nullopt;
}

bool prepareTrash(const QString& trash)
{
    const QByteArray path = trash.toUtf8();
    return !path.isEmpty() && makePrivateFolder(path) && makePrivateFolder(path + "/files") &&
           makePrivateFolder(path + "/info");
}

/// `stem` + `end`, as far as the file of its details can bear such a name.
QString fitting(QString stem, const QString& end)
{
    constexpr qsizetype LongestName = 255;
    const qsizetype room = LongestName - (end + Details).toUtf8().size();
    while (stem.toUtf8().size() > room)
        stem.chop(stem.size() > 1 && stem.back().isLowSurrogate() ? 2 : 1);
    return stem + end;
}

/// A name that nothing in the trash has, in the form "Rock 2.m3u".
QString freeName(const Files& files, const QString& trash, const QString& name)
{
    QString plain = name;
    for (QChar& unit : plain)
        if (!FileDirPath::canBeFileName(QStringView(&unit, 1)))
            unit = u'_';
    const qsizetype dot = plain.lastIndexOf(u'.');
    const auto isTaken = [&files, &trash](const QString& wanted) {
        return files.exists(trash + u"/files/"_s + wanted) || files.exists(trash + u"/info/"_s + wanted + Details);
    };
    QString wanted = fitting(plain.left(dot), plain.mid(dot));
    for (int number = 2; isTaken(wanted); ++number)
        wanted = fitting(plain.left(dot), u' ' + QString::number(number) + plain.mid(dot));
    return wanted;
}

bool moveToTrash(Files& files, const ResetPlaces& places, const QString& path)
{
    const std::optional<QByteArray> native = files.nativePath(path);
    if (!native)
        return false;
    const QString name = freeName(files, places.trash, FileDirPath::FileNameOf(path));
    const QByteArray info = "[Trash Info]\nPath=" + native->toPercentEncoding("/") +
                            "\nDeletionDate=" + places.now.toString(u"yyyy-MM-ddTHH:mm:ss"_s).toUtf8() + '\n';
    return files.writeBytes(places.trash + u"/info/"_s + name + Details, info) &&
           files.copy(path, places.trash + u"/files/"_s + name) && files.remove(path);
}

} // namespace

bool resetDatabase(Files& files, const ResetPlaces& places)
{
    if (!FileDirPath::isAbsolute(places.dataFolder))
        return false;
    const QString database = FileDirPath::join(places.dataFolder, u"Orvantine.dat");
    const QString lists = FileDirPath::join(places.dataFolder, u"Playlisten");
    const bool hasDatabase = files.size(database).has_value();
    // Without one it may have been removed; what is none, or cannot be read, is another matter.
    if ((!hasDatabase && (files.exists(database) || !files.isFolder(lists))) || files.isLink(lists) ||
        !prepareTrash(places.trash))
        return false;
    const std::optional<QByteArray> folder = files.nativePath(lists);
    const std::optional<QStringList> names = folder ? listsOf(*folder) : QStringList();
    if (!names)
        return false;
    WholeChange together(files);
    for (const QString& name : *names)
        if (!moveToTrash(files, places, FileDirPath::join(lists, name)))
            together.fail();
    if (hasDatabase && !together.failed() && !files.writeBytes(database, {}))
        together.fail();
    return together.end();
}

} // namespace orvantine
