#include "siblings/ResetDatabase.h"

#include "desktop/posix/PrivateFolder.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString Lists = u"*.m3u;*.m3u8;*.pls;*.nml;*.bak"_s;

bool prepareTrash(const QString& trash)
{
    const QByteArray path = trash.toUtf8();
    return !path.isEmpty() && makePrivateFolder(path) && makePrivateFolder(path + "/files") &&
           makePrivateFolder(path + "/info");
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
        return files.exists(trash + u"/files/"_s + wanted) ||
               files.exists(trash + u"/info/"_s + wanted + u".trashinfo"_s);
    };
    QString wanted = plain;
    for (int number = 2; isTaken(wanted); ++number)
        wanted = plain.left(dot) + u' ' + QString::number(number) + plain.mid(dot);
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
    return files.writeBytes(places.trash + u"/info/"_s + name + u".trashinfo"_s, info) &&
           files.copy(path, places.trash + u"/files/"_s + name) && files.remove(path);
}

} // namespace

bool resetDatabase(Files& files, const ResetPlaces& places)
{
    if (!FileDirPath::isAbsolute(places.dataFolder))
        return false;
    const QString database = FileDirPath::join(places.dataFolder, u"Orvantine.dat");
    const QString lists = FileDirPath::join(places.dataFolder, u"Playlisten");
    if (!files.size(database) || files.isLink(lists) || !prepareTrash(places.trash))
        return false;
    WholeChange together(files);
    const QStringList names = files.list(lists, Lists);
    for (const QString& name : names)
        if (!moveToTrash(files, places, FileDirPath::join(lists, name)))
            together.fail();
    // The program that runs looks at this one.
    if (!together.failed() && !files.writeBytes(database, {}))
        together.fail();
    return together.end();
}

} // namespace orvantine
