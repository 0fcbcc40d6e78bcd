#include "system/app/Desk.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include <sys/prctl.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds Patience{45};
constexpr std::chrono::milliseconds LookAgainAfter{40};

/// The first line that a server writes once it is ready, which tells where it is.
QString readAddress(Process& server)
{
    EXPECT_TRUE(await([&server] { return server.canReadLine() || server.state() == QProcess::NotRunning; }))
        << server.program().toStdString();
    return QString::fromUtf8(server.readLine()).trimmed();
}

} // namespace

bool await(const std::function<bool()>& holds)
{
    const QDeadlineTimer deadline{Patience};
    QTimer lookAgain;
    lookAgain.start(LookAgainAfter);
    while (!holds()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

Process::Process(const QProcessEnvironment& environment)
{
    setProcessEnvironment(environment);
    setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

Process::~Process()
{
    end();
}

void Process::end()
{
    if (state() == NotRunning)
        return;
    terminate();
    if (!waitForFinished(10'000)) {
        kill();
        waitForFinished();
    }
}

Desk::Desk(const DeskOptions& options) : m_folder(QDir::tempPath() + u"/desk-XXXXXX"_s)
{
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    for (const QString& name : {u"PATH"_s, u"ASAN_OPTIONS"_s, u"UBSAN_OPTIONS"_s, u"LSAN_OPTIONS"_s})
        if (own.contains(name))
            environment.insert(name, own.value(name));
    environment.insert(u"LANG"_s, u"C.UTF-8"_s);
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    environment.insert(u"QT_LOGGING_RULES"_s, u"orvantine.start=true"_s);
    // Without a sound server there is no sound card either.
    environment.insert(u"PULSE_SERVER"_s, u"unix:"_s + path(u"no-sound"_s));
    environment.insert(u"GSETTINGS_BACKEND"_s, u"memory"_s);
    const std::pair<QString, QString> folders[] = {{u"HOME"_s, u"home"_s},
                                                   {u"XDG_DATA_HOME"_s, u"data"_s},
                                                   {u"XDG_CONFIG_HOME"_s, u"config"_s},
                                                   {u"XDG_STATE_HOME"_s, u"state"_s},
                                                   {u"XDG_CACHE_HOME"_s, u"cache"_s},
                                                   {u"XDG_RUNTIME_DIR"_s, u"runtime"_s},
                                                   {u"TMPDIR"_s, u"tmp"_s}};
    for (const auto& [name, folder] : folders) {
        environment.insert(name, path(folder));
        QDir().mkpath(path(folder));
        QFile::setPermissions(path(folder), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    startDisplay(options.screen);
    if (options.sessionBus)
        startBus();
    startWindowManager(options.windowManagerSettings);
}

Desk::~Desk()
{
    m_windowManager.reset();
    m_bus.reset();
    m_display.reset();
}

QString Desk::path(const QString& name) const
{
    return m_folder.filePath(name);
}

QString Desk::dataPath(const QString& name) const
{
    return path(u"data/Orvanten Manager/"_s + name);
}

void Desk::write(const QString& path, const QByteArray& bytes) const
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray Desk::bytes(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void Desk::settle(const QStringList& moreSettings) const
{
    QStringList lines{u"Windows Registry Editor Version 5.00"_s, QString(),
                      u"[HKEY_CURRENT_USER\\Software\\Verdanis]"_s, QString(),
                      u"[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]"_s, u"\"Version\"=\"2.3\""_s,
                      u"\"Info\"=\"1\""_s, u"\"Index\"=hex:01,00,00,00"_s, u"\"NoUpdate\"=dword:00000001"_s,
                      // The tips would stand in front of the commands.
                      u"\"HelpDirekt\"=dword:00000001"_s};
    lines += moreSettings;
    write(path(u"config/Orvanten Manager/settings.reg"_s), (lines.join(u"\r\n"_s) + u"\r\n"_s).toUtf8());
    for (const QString& font : {u"MAIAN.TTF"_s, u"OCR_B.TTF"_s})
        write(path(u"data/fonts/"_s + font), "stands for a font");
}

void Desk::writeCatalogue(const QStringList& playlists) const
{
    QString text = u"[Options]\r\nCopyDate=\r\n[Index]\r\n"_s;
    for (qsizetype i = 0; i < playlists.size(); ++i)
        text += u"%1a=%2\r\n%1b=%3\r\n%1c=%4\r\n%1d=1\r\n"_s.arg(i + 1)
                    .arg(i, 3, 10, QChar(u'0'))
                    .arg(QFileInfo(playlists[i]).completeBaseName(), playlists[i]);
    write(dataPath(u"Orvantine.dat"_s), text.toUtf8());
}

std::optional<QString> Desk::tool(const QString& program, const QStringList& arguments) const
{
    Process process(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(30'000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput());
}

QStringList Desk::windows() const
{
    const QString numbers =
        tool(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"."_s}).value_or(QString());
    QStringList titles;
    for (const QString& number : numbers.split(u'\n', Qt::SkipEmptyParts)) {
        QString title = tool(u"xdotool"_s, {u"getwindowname"_s, number}).value_or(QString());
        title.chop(1);
        // The last one is a notification area's.
        if (!title.isEmpty() && title != u"Openbox"_s && title != u"panel"_s)
            titles.append(title);
    }
    return titles;
}

QString Desk::window(const QString& title) const
{
    const QString numbers =
        tool(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^"_s + title + u"$"_s}).value_or(QString());
    return numbers.section(u'\n', 0, 0);
}

QString Desk::titleOfActiveWindow() const
{
    return tool(u"xdotool"_s, {u"getactivewindow"_s, u"getwindowname"_s}).value_or(QString()).remove(u'\n');
}

void Desk::press(const QString& windowTitle, const QString& key) const
{
    const QString number = window(windowTitle);
    tool(u"xdotool"_s, {u"windowactivate"_s, number});
    // A box of the same program keeps the focus; then the key is its.
    int looks = 0;
    static_cast<void>(
        await([this, &windowTitle, &looks] { return titleOfActiveWindow() == windowTitle || ++looks == 20; }));
    tool(u"xdotool"_s, {u"key"_s, u"--clearmodifiers"_s, key});
}

void Desk::click(QPoint point) const
{
    EXPECT_TRUE(tool(u"xdotool"_s,
                     {u"mousemove"_s, QString::number(point.x()), QString::number(point.y()), u"click"_s, u"1"_s}));
}

void Desk::doubleClick(QPoint point) const
{
    EXPECT_TRUE(tool(u"xdotool"_s, {u"mousemove"_s, QString::number(point.x()), QString::number(point.y()), u"click"_s,
                                    u"--repeat"_s, u"2"_s, u"--delay"_s, u"40"_s, u"1"_s}));
}

void Desk::startDisplay(const QByteArray& screen)
{
    m_display = std::make_unique<Process>(environment);
    // Without -noreset the end of a tool that is the only client would throw out one that has just come.
    m_display->start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-noreset"_s, u"-screen"_s, u"0"_s,
                                 QString::fromLatin1(screen), u"-nolisten"_s, u"tcp"_s});
    environment.insert(u"DISPLAY"_s, u":"_s + readAddress(*m_display));
}

void Desk::startBus()
{
    m_bus = std::make_unique<Process>(environment);
    m_bus->start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s});
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, readAddress(*m_bus));
}

void Desk::startWindowManager(const QByteArray& settings)
{
    QStringList arguments;
    if (!settings.isEmpty()) {
        write(path(u"window-manager.xml"_s), settings);
        arguments = QStringList{u"--config-file"_s, path(u"window-manager.xml"_s)};
    }
    m_windowManager = std::make_unique<Process>(environment);
    m_windowManager->start(u"openbox"_s, arguments);
    EXPECT_TRUE(await([this] {
        return tool(u"xprop"_s, {u"-root"_s, u"_NET_SUPPORTING_WM_CHECK"_s}).value_or(QString()).contains(u'#');
    }));
}

} // namespace orvantine::desk
