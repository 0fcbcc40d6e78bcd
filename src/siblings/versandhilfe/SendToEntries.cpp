#include "siblings/versandhilfe/SendToEntries.h"

#include "desktop/posix/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

/// By this line an entry of ours is known.
constexpr char mark[] = "X-Orvanten-Senden=1";

QString audioTypes()
{
    return u"audio/mpeg;audio/x-wav;audio/wav;audio/vnd.wave;audio/x-ms-wma;audio/x-mpegurl;audio/mpegurl;"_s;
}

/// For an Exec line: quoted, the shell's own characters and the field codes escaped, then the escapes of the file.
QString execArgument(const QString& text)
{
    QString argument;
    for (const QChar unit : text) {
        if (u"\"`$\\"_s.contains(unit))
            argument += u'\\';
        argument += unit;
        if (unit == u'%')
            argument += u'%';
    }
    return u'"' + argument.replace(u'\\', u"\\\\"_s) + u'"';
}

QString shellArgument(QString text)
{
    return u'\'' + text.replace(u'\'', u"'\\''"_s) + u'\'';
}

QString desktopEntry(const QString& run, const QString& types)
{
    return u"[Desktop Entry]\nType=Application\nName=Send to Orvanten Manager\n"
           u"Name[de]=Senden an Orvanten Manager\nIcon=orvanten-manager\nTerminal=false\nNoDisplay=true\nExec="_s +
           run + u" %F\nMimeType="_s + types + u'\n' + QString::fromLatin1(mark) + u'\n';
}

bool isOurs(const QString& path)
{
    QByteArray bytes;
    return QFileInfo(path).isFile() && !QFileInfo(path).isSymLink() && readSmallFile(path.toUtf8(), bytes) &&
           bytes.contains(mark);
}

/// "Open with" is answered from a list that only this program of the desktop makes anew. Without it nothing is lost but
/// that some file managers learn of the entries later.
void refreshOpenWith(const QString& dataHome)
{
    constexpr int PatienceMs = 10000;
    const QString program = QStandardPaths::findExecutable(u"update-desktop-database"_s);
    const QString folder = dataHome + u"/applications"_s;
    if (dataHome.isEmpty() || program.isEmpty() || !QFileInfo(folder).isDir())
        return;
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, {folder});
    process.waitForFinished(PatienceMs);
}

} // namespace

SendToEntries::SendToEntries(QString dataHome, QString configHome, QString sender)
    : m_dataHome(std::move(dataHome)), m_configHome(std::move(configHome)), m_sender(std::move(sender))
{
}

std::vector<SendToEntries::Entry> SendToEntries::entries() const
{
    const QString run = execArgument(m_sender) + u" --senden"_s;
    const QString marked = QString::fromLatin1(mark);
    const QString script =
        u"#!/bin/sh\n# "_s + marked + u"\nexec "_s + shellArgument(m_sender) + u" --senden \"$@\"\n"_s;
    const QString folders = u"inode/directory;"_s;
    std::vector<Entry> all;
    if (!m_dataHome.isEmpty()) {
        // "Open with" of every file manager. Not for folders, whose own program must not be driven out.
        all.push_back(
            {m_dataHome + u"/applications/orvanten-manager-senden.desktop"_s, desktopEntry(run, audioTypes())});
        all.push_back(
            {m_dataHome + u"/Thunar/sendto/orvanten-manager.desktop"_s, desktopEntry(run, audioTypes() + folders)});
        all.push_back({m_dataHome + u"/kio/servicemenus/orvanten-manager-senden.desktop"_s,
                       u"[Desktop Entry]\nType=Service\nX-KDE-ServiceTypes=KonqPopupMenu/Plugin\nMimeType="_s +
                           audioTypes() + folders + u"\nActions=senden;\n"_s + marked +
                           u"\n\n[Desktop Action senden]\nName=Send to Orvanten Manager\n"
                           u"Name[de]=Senden an Orvanten Manager\nIcon=orvanten-manager\nExec="_s +
                           run + u" %F\n"_s,
                       true});
        all.push_back({m_dataHome + u"/nemo/actions/orvanten-manager-senden.nemo_action"_s,
                       u"[Nemo Action]\nName=Senden an Orvanten Manager\n"
                       u"Comment=Sounddateien, Ordner und Playlisten übergeben\nIcon-Name=orvanten-manager\n"
                       u"Selection=notnone\nExtensions=dir;mp3;wma;wav;m3u;\nQuote=double\nExec="_s +
                           run + u" %F\n"_s + marked + u'\n'});
        all.push_back({m_dataHome + u"/nautilus/scripts/Senden an Orvanten Manager"_s, script, true});
    }
    if (!m_configHome.isEmpty())
        all.push_back({m_configHome + u"/caja/scripts/Senden an Orvanten Manager"_s, script, true});
    return all;
}

bool SendToEntries::installed() const
{
    const std::vector<Entry> all = entries();
    return std::any_of(all.begin(), all.end(), [](const Entry& entry) { return isOurs(entry.path); });
}

bool SendToEntries::install() const
{
    for (const Entry& entry : entries()) {
        const QFileInfo there(entry.path);
        if ((there.exists() || there.isSymLink()) && !isOurs(entry.path))
            continue;
        if (QDir().mkpath(there.path()) && writeAtomically(entry.path.toUtf8(), entry.text.toUtf8()) && entry.program)
            ::chmod(entry.path.toUtf8().constData(), 0755);
    }
    refreshOpenWith(m_dataHome);
    return installed();
}

bool SendToEntries::remove() const
{
    for (const Entry& entry : entries())
        if (isOurs(entry.path))
            ::unlink(entry.path.toUtf8().constData());
    refreshOpenWith(m_dataHome);
    return !installed();
}

} // namespace orvantine
