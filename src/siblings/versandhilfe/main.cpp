#include "desktop/posix/LockInstance.h"
#include "desktop/posix/XdgFolders.h"
#include "siblings/versandhilfe/SendToEntries.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>
#include <QUrl>
#include <QVariantMap>

#include <cstdio>

using namespace orvantine;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 PatienceMs = 15000;
constexpr unsigned long BetweenMs = 250;

/// To the desktop, and to whoever started it in a terminal.
void tell(const QString& text)
{
    std::printf("%s\n", qPrintable(text));
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                                       u"org.freedesktop.Notifications"_s, u"Notify"_s);
    call << u"Orvanten Manager"_s << 0U << u"orvanten-manager"_s << u"Orvanten Manager"_s << text << QStringList()
         << QVariantMap() << -1;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected())
        bus.call(call, QDBus::Block, 2000);
}

/// Adds the entries, or takes them away where they stand.
int turn(const XdgFolders& folders)
{
    const SendToEntries entries(folders.dataHome, folders.configHome, QCoreApplication::applicationFilePath());
    const bool removes = entries.installed();
    const bool done = removes ? entries.remove() : entries.install();
    if (!done)
        tell(u"Die Funktion „Senden an“ konnte nicht geändert werden."_s);
    else if (removes)
        tell(u"„Senden an Orvanten Manager“ wurde aus den Dateimanagern entfernt."_s);
    else
        tell(u"„Senden an Orvanten Manager“ steht jetzt in den Menüs Ihrer Dateimanager."_s);
    return done ? 0 : 1;
}

QStringList pathsOf(const QStringList& arguments)
{
    QStringList paths;
    for (const QString& argument : arguments) {
        const QUrl url(argument);
        const QString path = url.isLocalFile() ? url.toLocalFile() : argument;
        if (!path.isEmpty())
            paths += QDir::cleanPath(QDir::current().absoluteFilePath(path));
    }
    return paths;
}

/// Hands the files over, to a program that is started for it where none runs.
int send(const XdgFolders& folders, const QStringList& paths)
{
    if (paths.isEmpty())
        return 0;
    LockInstance instance(folders.stateHome.isEmpty() ? QString() : folders.stateHome + u"/Orvanten Manager"_s,
                          folders.temp);
    QElapsedTimer watch;
    watch.start();
    bool started = false;
    while (watch.elapsed() < PatienceMs) {
        const LockInstance::Handing handed = instance.hand(u"Orvanten Manager"_s, paths);
        if (handed == LockInstance::Handing::Taken)
            return 0;
        if (handed == LockInstance::Handing::Nobody && !started) {
            QProcess::startDetached(QCoreApplication::applicationDirPath() + u"/Orvantine"_s, {});
            started = true;
        }
        QThread::msleep(BetweenMs);
    }
    tell(u"Der Orvanten Manager ist gerade beschäftigt. Bitte senden Sie die Dateien später noch einmal."_s);
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const XdgFolders folders = xdgFolders(processEnvironment());
    if (arguments.value(1) == u"--senden"_s)
        return send(folders, pathsOf(arguments.mid(2)));
    return turn(folders);
}
