#include "app/Root.h"
#include "desktop/archive/LibzipArchive.h"
#include "desktop/media/MpvPlayer.h"
#include "desktop/mpris/MprisBus.h"
#include "desktop/mpris/RemoteWish.h"
#include "desktop/posix/DriveMap.h"
#include "desktop/posix/KeptVersions.h"
#include "desktop/posix/LockInstance.h"
#include "desktop/posix/NicePriority.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/PosixFolderWalks.h"
#include "desktop/posix/PosixVolumes.h"
#include "desktop/posix/RegSettings.h"
#include "desktop/posix/ResetFolder.h"
#include "desktop/posix/XdgFolders.h"
#include "desktop/qt/services/QtChoosers.h"
#include "desktop/qt/services/QtDesktop.h"
#include "desktop/qt/services/QtEvents.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/services/QtLauncher.h"
#include "desktop/qt/services/QtMessages.h"
#include "desktop/qt/services/QtTray.h"
#include "desktop/qt/services/SessionEnd.h"
#include "desktop/qt/widgets/Emblem.h"
#include "desktop/qt/widgets/FileUris.h"
#include "desktop/qt/widgets/PlainTips.h"
#include "desktop/qt/widgets/Theme.h"
#include "desktop/qt/window/MainWindow.h"
#include "desktop/sound/PulseMixer.h"
#include "desktop/sound/PulseSound.h"
#include "desktop/tags/TagLibTags.h"
#include "platform/CommandLine.h"
#include "platform/Version.h"
#include "shell/Assemble.h"
#include "shell/FormLoad.h"
#include "shell/Shutdown.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QTimer>
#include <QTranslator>

#include <clocale>
#include <cstdio>
#include <optional>

#include <unistd.h>

using namespace orvantine;
using namespace Qt::StringLiterals;

namespace {

/// Tells when the window stands: QT_LOGGING_RULES="orvantine.start=true".
Q_LOGGING_CATEGORY(startLog, "orvantine.start", QtWarningMsg)

RegSettingsOptions settingsOptions(const XdgFolders& folders)
{
    return {.file = folders.configHome + u"/Orvanten Manager/settings.reg"_s,
            .autostartFolder = folders.autostart,
            .program = QCoreApplication::applicationFilePath(),
            .shellFolders = {
                {u"My Music"_s, folders.music}, {u"Personal"_s, folders.documents}, {u"AppData"_s, folders.dataHome}}};
}

/// Without a home there is no place that is the user's alone, and nothing is written.
QString recoveryFolder(const XdgFolders& folders)
{
    return folders.stateHome.isEmpty() ? QString() : folders.stateHome + u"/Orvanten Manager/recovery"_s;
}

PosixFilesOptions filesOptions(const XdgFolders& folders, const QMap<QString, QString>& drives)
{
    PosixFilesOptions options;
    options.drives = drives;
    options.recoveryFolder = recoveryFolder(folders);
    return options;
}

/// The real services, each made once.
struct Desktop
{
    Errand errand;
    XdgFolders folders = xdgFolders(processEnvironment());
    /// Goes last: who waits for its lock finds the files free.
    LockInstance instance{folders.stateHome.isEmpty() ? QString() : folders.stateHome + u"/Orvanten Manager"_s,
                          folders.temp, errand};
    RegSettings settings{settingsOptions(folders)};
    QMap<QString, QString> drives = driveMap(settings);
    PosixFiles files{filesOptions(folders, drives)};
    ProfileStore profiles{files};
    PosixVolumes volumes{drives};
    PosixFolderWalks walks{drives};
    NicePriority priority;
    LibzipArchive zip{files, recoveryFolder(folders)};
    KeptVersions earlierVersions{recoveryFolder(folders)};
    QtEvents events;
    QtMessages messages;
    QtChoosers choosers{files};
    QtForms forms;
    QtClipboard clipboard;
    QtScreen screen;
    QtFonts fonts;
    QtTray tray;
    QtLauncher launcher{files};
    MpvPlayer mediaplayer{files};
    MpvPlayer mediaInfo{files};
    PulseMixer mixer;
    PulseSound sound;
    TagLibTags tags{files};
};

StartContext startContext()
{
    return {.command = QCoreApplication::arguments().mid(1).join(u' '),
            .stem = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName()};
}

/// Asked before the toolkit does, which takes it out of the environment.
QByteArray activationToken()
{
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

int run(const Errand& errand)
{
    settleReset(xdgFolders(processEnvironment()));
    Desktop desktop{.errand = errand};
    prepareWindowsFolder(desktop.folders);
    Services services{.files = desktop.files,
                      .profiles = desktop.profiles,
                      .settings = desktop.settings,
                      .messages = desktop.messages,
                      .choosers = desktop.choosers,
                      .forms = desktop.forms,
                      .events = desktop.events,
                      .mediaplayer = desktop.mediaplayer,
                      .mediaInfo = desktop.mediaInfo,
                      .mixer = desktop.mixer,
                      .sound = desktop.sound,
                      .tags = desktop.tags,
                      .tray = desktop.tray,
                      .clipboard = desktop.clipboard,
                      .launcher = desktop.launcher,
                      .volumes = desktop.volumes,
                      .instance = desktop.instance,
                      .fonts = desktop.fonts,
                      .screen = desktop.screen,
                      .walks = desktop.walks,
                      .priority = desktop.priority,
                      .zip = desktop.zip,
                      .earlierVersions = desktop.earlierVersions,
                      .folders = standardFolders(desktop.folders, QCoreApplication::applicationDirPath()),
                      .system = {},
                      .start = startContext()};

    Root root(services);
    assemble(root);
    MainWindow window(root);
    desktop.forms.setMainWindow(&root, &window);
    RemoteControl face(root, [] { return QApplication::activeModalWidget() != nullptr; });
    MprisBus bus(face, QCoreApplication::applicationName(), QGuiApplication::desktopFileName());
    const PlainTips plainTips;
    const SessionEnd sessionEnd([&window] { window.endSession(); });
    QTimer::singleShot(0, &window, [&root, &window, &bus] {
        Form_Load(root);
        // A command that is chosen from an open menu must find what stood there when it was opened.
        Instance& instance = root.services.instance;
        instance.TakesFiles = [takesFiles = instance.TakesFiles] {
            return QApplication::activePopupWidget() == nullptr && takesFiles();
        };
        // Behind the events that draw it.
        QTimer::singleShot(0, &window, [&root, &bus] {
            qCDebug(startLog, "window visible");
            if (root.services.events.ended())
                return;
            bus.start();
            qCDebug(startLog, "on the bus");
        });
    });
    const int result = QApplication::exec();

    desktop.forms.dropAll();
    desktop.forms.setMainWindow(nullptr, nullptr);
    desktop.launcher.closeAll();
    return result;
}

/// Asks the running program for a step of its player.
bool askRunning(int argc, char** argv, const QString& step)
{
    const QCoreApplication application(argc, argv);
    return orvantine::askRunning(step);
}

/// The exit code where the command line asks for something that needs no window; nothing where the program is to start.
std::optional<int> answerWord(int argc, char** argv)
{
    QStringList arguments;
    for (int number = 1; number < argc; ++number)
        arguments += QString::fromLocal8Bit(argv[number]);
    const LineWish wish = lineWish(arguments);
    switch (wish) {
    case LineWish::Start:
        return {};
    case LineWish::Help:
        std::fputs(helpText().toUtf8().constData(), stdout);
        return 0;
    case LineWish::Version:
        std::printf("Orvanten Manager %s\n", VersionText);
        return 0;
    case LineWish::Play:
        if (askRunning(argc, argv, u"Play"_s))
            return 0;
        // A fresh start: an application object was here already.
        ::execl("/proc/self/exe", argv[0], "/play", nullptr);
        return 1;
    case LineWish::Pause:
    case LineWish::Next:
        if (askRunning(argc, argv, wish == LineWish::Pause ? u"Pause"_s : u"Next"_s))
            return 0;
        std::fputs("Der Orvanten Manager läuft nicht.\n", stderr);
        return 1;
    }
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    if (const std::optional<int> answer = answerWord(argc, argv))
        return *answer;

    QCoreApplication::setApplicationName(u"Orvanten Manager"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(VersionText));
    QGuiApplication::setDesktopFileName(u"orvanten-manager"_s);
    // A menu bar outside the window would be asked for over the session bus before anything is seen.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    const QByteArray token = activationToken();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // The player's library reads numbers with a point, whatever the user's language is.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));

    QTranslator german;
    if (german.load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&german);
    Theme::setUpIcons();
    QApplication::setWindowIcon(emblemIcon());
    return run({.paths = argumentPaths(QList<QByteArray>(argv + qMin(1, argc), argv + argc)), .token = token});
}
