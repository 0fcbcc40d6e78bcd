#include "desktop/posix/XdgFolders.h"

#include "desktop/posix/AtomicFile.h"
#include "desktop/posix/PrivateFolder.h"

#include <QList>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

QString withoutEnd(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

// Relative paths in the environment do not count.
QString folderOr(const QMap<QString, QString>& environment, const QString& name, const QString& otherwise)
{
    const QString value = environment.value(name);
    return value.startsWith(u'/') ? withoutEnd(value) : otherwise;
}

bool isFolder(const QString& path)
{
    struct stat info = {};
    return ::stat(path.toUtf8().constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

// A line of `user-dirs.dirs`: XDG_MUSIC_DIR="$HOME/Musik", or an absolute path; "\" escapes.
QString userFolder(const QString& lines, const QString& name, const QString& home, const QString& otherwise)
{
    QString result = otherwise;
    for (const QString& line : lines.split(u'\n')) {
        const QString text = line.trimmed();
        if (!text.startsWith(name + u"=\""_s) || !text.endsWith(u'"') || text.size() < name.size() + 3)
            continue;
        QString value;
        for (const QChar unit : text.sliced(name.size() + 2).chopped(1)) {
            if (unit != u'\\' || value.endsWith(u'\\'))
                value += unit;
        }
        if (value.startsWith(u"$HOME/"_s) || value == u"$HOME"_s)
            result = withoutEnd(home + value.sliced(5));
        else if (value.startsWith(u'/'))
            result = withoutEnd(value);
    }
    return result;
}

/// A folder that somebody else has put there is nobody's home, and there is no other.
QString withoutHome(const QString& temp)
{
    const QString home = temp + u"/orvanten-manager-"_s + QString::number(::getuid());
    const bool foreign = isFolder(home) && !isPrivateFolder(home.toUtf8());
    return foreign ? u"/dev/null/orvanten-manager"_s : home;
}

} // namespace

QMap<QString, QString> processEnvironment()
{
    QMap<QString, QString> result;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const QString text = QString::fromLocal8Bit(*entry);
        const qsizetype equals = text.indexOf(u'=');
        if (equals > 0)
            result.insert(text.first(equals), text.sliced(equals + 1));
    }
    return result;
}

XdgFolders xdgFolders(const QMap<QString, QString>& environment)
{
    XdgFolders folders;
    folders.temp = folderOr(environment, u"TMPDIR"_s, u"/tmp"_s);
    if (!isFolder(folders.temp))
        folders.temp = u"/tmp"_s;
    folders.home = folderOr(environment, u"HOME"_s, QString());
    const bool hasHome = !folders.home.isEmpty();
    if (!hasHome)
        folders.home = withoutHome(folders.temp);
    folders.dataHome = folderOr(environment, u"XDG_DATA_HOME"_s, folders.home + u"/.local/share"_s);
    folders.configHome = folderOr(environment, u"XDG_CONFIG_HOME"_s, folders.home + u"/.config"_s);
    folders.stateHome =
        folderOr(environment, u"XDG_STATE_HOME"_s, hasHome ? folders.home + u"/.local/state"_s : QString());
    folders.runtime = folderOr(environment, u"XDG_RUNTIME_DIR"_s, QString());
    folders.autostart = folders.configHome + u"/autostart"_s;
    QByteArray bytes;
    QString lines;
    if (readSmallFile((folders.configHome + u"/user-dirs.dirs"_s).toUtf8(), bytes))
        lines = QString::fromUtf8(bytes);
    folders.documents = userFolder(lines, u"XDG_DOCUMENTS_DIR"_s, folders.home, folders.home + u"/Documents"_s);
    folders.music = userFolder(lines, u"XDG_MUSIC_DIR"_s, folders.home, folders.home + u"/Music"_s);
    return folders;
}

StandardFolders standardFolders(const XdgFolders& folders, const QString& programFolder)
{
    StandardFolders result;
    result.program = withoutEnd(programFolder);
    result.applicationData = folders.dataHome;
    result.documents = folders.documents;
    result.music = folders.music;
    result.windows = folders.dataHome + u"/orvanten-manager/windows"_s;
    result.temp = folders.temp;
    return result;
}

bool prepareWindowsFolder(const XdgFolders& folders)
{
    const QByteArray windows = (folders.dataHome + u"/orvanten-manager/windows"_s).toUtf8();
    const QByteArray fonts = (folders.dataHome + u"/fonts"_s).toUtf8();
    if (!makePrivateFolder(windows) || !makePrivateFolder(fonts))
        return false;
    return ::symlink(fonts.constData(), (windows + "/FONTS").constData()) == 0 || errno == EEXIST;
}

} // namespace orvantine
