#include "BenchDesktop.h"
#include "Measure.h"
#include "platform/Version.h"
#include "support/Wav.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <ctime>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

/// What one start of the program showed.
struct Run
{
    double milliseconds = 0;
    double residentMegabytes = 0;
};

/// A sound server without a card, ended with its owner; without one every start would wait for the answer to a box.
class SoundServer
{
public:
    SoundServer()
    {
        if (QProcess::execute(QStringLiteral(ORVANTINE_SOUND_SERVER), {u"start"_s, m_folder.path()}) != 0)
            qFatal("no sound server came up");
        qputenv("PULSE_SERVER", "unix:" + m_folder.filePath(u"native"_s).toUtf8());
        qputenv("PULSE_COOKIE", m_folder.filePath(u"cookie"_s).toUtf8());
        qputenv("PULSE_RUNTIME_PATH", m_folder.filePath(u"runtime"_s).toUtf8());
    }
    ~SoundServer() { QProcess::execute(QStringLiteral(ORVANTINE_SOUND_SERVER), {u"stop"_s, m_folder.path()}); }
    /// Whether a program plays there.
    [[nodiscard]] static bool plays()
    {
        QProcess asked;
        asked.start(u"pactl"_s, {u"list"_s, u"short"_s, u"sink-inputs"_s});
        return asked.waitForFinished() && !asked.readAllStandardOutput().isEmpty();
    }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

private:
    QTemporaryDir m_folder{QDir::tempPath() + u"/sound-XXXXXX"_s};
};

/// A user of its own, with folders that nobody else has.
class User
{
public:
    User()
    {
        for (const QString& name : {u"config"_s, u"data/Orvanten Manager/Playlisten"_s, u"state"_s, u"run"_s})
            QDir(m_home.path()).mkpath(name);
        QFile::setPermissions(m_home.filePath(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(u"HOME"_s, m_home.path());
        m_environment.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
        m_environment.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
        m_environment.insert(u"XDG_STATE_HOME"_s, m_home.filePath(u"state"_s));
        m_environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.filePath(u"run"_s));
        m_environment.insert(u"QT_LOGGING_RULES"_s, u"orvantine.start=true"_s);
        m_environment.insert(u"QT_ASSUME_STDERR_HAS_CONSOLE"_s, u"1"_s);
        // Both fonts stand already, so that nothing is asked.
        for (const QString& font : {u"MAIAN.TTF"_s, u"OCR_B.TTF"_s}) {
            QDir(m_home.path()).mkpath(u"data/fonts"_s);
            layOut(m_home.filePath(u"data/fonts/"_s + font), "font");
        }
    }

    [[nodiscard]] QString data(const QString& name) const
    {
        return m_home.filePath(u"data/Orvanten Manager/"_s + name);
    }
    [[nodiscard]] QString path(const QString& name) const { return m_home.filePath(name); }

    /// Starts the program, waits for its window and ends it. The told pause of a start with rows is taken off.
    [[nodiscard]] Run start() const
    {
        constexpr double ToldPause = 1000;
        return run(QCoreApplication::applicationDirPath() + u"/Orvantine"_s, {}, ToldPause);
    }

    /// The same for a program that shows an empty window of the toolkit.
    [[nodiscard]] Run startBareWindow() const
    {
        return run(QCoreApplication::applicationFilePath(), {u"--bare-window"_s}, 0);
    }

    /// Share of a core, in percent, that the program takes while it plays the list that is open at its start.
    [[nodiscard]] double playingShare() const
    {
        return share(QCoreApplication::applicationDirPath() + u"/Orvantine"_s, {u"/play"_s});
    }

    /// The same for the player library alone, told one track.
    [[nodiscard]] double barePlayingShare(const QString& track) const
    {
        return share(QCoreApplication::applicationFilePath(), {u"--bare-player"_s, track});
    }

private:
    [[nodiscard]] double share(const QString& name, const QStringList& arguments) const
    {
        constexpr int UntilItPlaysEvenly = 6000;
        constexpr int Watched = 10'000;
        QProcess program;
        program.setProcessEnvironment(m_environment);
        program.setStandardErrorFile(QProcess::nullDevice());
        program.start(name, arguments);
        program.waitForFinished(UntilItPlaysEvenly);
        const double before = cpuMilliseconds(program.processId());
        QElapsedTimer clock;
        clock.start();
        program.waitForFinished(Watched);
        const double used = cpuMilliseconds(program.processId()) - before;
        const auto elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        if (!SoundServer::plays())
            qFatal("%s does not play", qPrintable(name));
        program.terminate();
        if (!program.waitForFinished(5000))
            program.kill();
        program.waitForFinished(5000);
        return 100 * used / elapsed;
    }

    /// CPU time that a process has taken.
    [[nodiscard]] static double cpuMilliseconds(qint64 process)
    {
        clockid_t clock{};
        timespec time{};
        if (::clock_getcpuclockid(static_cast<pid_t>(process), &clock) != 0 || ::clock_gettime(clock, &time) != 0)
            qFatal("the program ended");
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    [[nodiscard]] Run run(const QString& name, const QStringList& arguments, double toldPause) const
    {
        QProcess program;
        program.setProcessEnvironment(m_environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        QElapsedTimer clock;
        clock.start();
        program.start(name, arguments);
        QByteArray said;
        Run run;
        while (clock.elapsed() < 60'000 && program.waitForReadyRead(60'000)) {
            said += program.readAll();
            if (!said.contains("window visible"))
                continue;
            run.milliseconds = static_cast<double>(clock.nsecsElapsed()) / 1e6 - toldPause;
            break;
        }
        // What the window does right after it came up belongs to it.
        program.waitForFinished(1500);
        run.residentMegabytes = resident(program.processId());
        program.terminate();
        if (!program.waitForFinished(5000))
            program.kill();
        program.waitForFinished(5000);
        if (run.milliseconds == 0)
            qFatal("the window did not come up: %s", said.constData());
        return run;
    }

    [[nodiscard]] static double resident(qint64 process)
    {
        QFile status(u"/proc/%1/status"_s.arg(process));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith("VmRSS:"))
                return line.mid(6).trimmed().split(' ').front().toDouble() / 1024;
        return 0;
    }

    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
};

QByteArray indexRow(int number, const QString& name, const QString& path, int tracks)
{
    return u"%1a=%2\r\n%1b=%3\r\n%1c=%4\r\n%1d=%5\r\n%1e=\r\n%1f=01.01.2026\r\n%1g=\r\n"_s.arg(number)
        .arg(number - 1, 3, 10, QLatin1Char('0'))
        .arg(name, path)
        .arg(tracks)
        .toUtf8();
}

/// The median of three starts by their time. The one before them writes the settings; it is not warm.
Run medianOf(const std::function<Run()>& start)
{
    (void)start();
    std::vector<Run> runs;
    for (int run = 0; run < 3; ++run)
        runs.push_back(start());
    std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) { return a.milliseconds < b.milliseconds; });
    return runs[1];
}

std::vector<Row> fullCatalogue()
{
    constexpr int Lists = 160;
    constexpr int Tracks = 1000;
    const User user;
    const QStringList tracks = makeTracks(user.path(u"musik"_s), Tracks);
    const QByteArray text = tracks.join(u"\r\n"_s).toUtf8() + "\r\n";
    QByteArray database = "[Index]\r\n";
    for (int row = 1; row <= Lists; ++row) {
        const QString path = user.data(u"Playlisten/Liste %1.m3u"_s.arg(row));
        layOut(path, text);
        database += indexRow(row, u"Liste %1"_s.arg(row), path, Tracks);
    }
    layOut(user.data(u"Orvantine.dat"_s), database);

    const Run warm = medianOf([&user] { return user.start(); });
    const Run bare = medianOf([&user] { return user.startBareWindow(); });
    return {{u"start to visible window, 160 lists of 1,000 tracks"_s, u"ms"_s, warm.milliseconds, bare.milliseconds,
             200, false},
            {u"idle memory, 160 lists of 1,000 tracks"_s, u"MB"_s, warm.residentMegabytes, bare.residentMegabytes, 70,
             false}};
}

Row largeListMemory()
{
    constexpr int Tracks = 32'767;
    const User user;
    const QStringList tracks = makeTracks(user.path(u"musik"_s), Tracks);
    const QString list = user.data(u"Playlisten/Alles.m3u"_s);
    layOut(list, tracks.join(u"\r\n"_s).toUtf8() + "\r\n");
    layOut(user.data(u"Orvantine.dat"_s),
           tagInfoSection(100'000, tracks) + "[Index]\r\n" + indexRow(1, u"Alles"_s, list, Tracks));
    return {u"window process with 32,767 tracks, 100,000 TagInfo keys"_s,
            u"MB"_s,
            user.start().residentMegabytes,
            user.startBareWindow().residentMegabytes,
            90,
            false};
}

/// What the program itself takes while the player library plays: its timers and its window.
Row playbackShare()
{
    constexpr int Tracks = 50;
    constexpr int Milliseconds = 120'000;
    const User user;
    const QString track = user.path(u"musik.wav"_s);
    layOut(track, fake::wav({.milliseconds = Milliseconds, .hertz = 440, .samplesPerSecond = 44'100}));
    const QString list = user.data(u"Playlisten/Musik.m3u"_s);
    layOut(list, (track + u"\r\n"_s).repeated(Tracks).toUtf8());
    layOut(user.data(u"Orvantine.dat"_s), "[Index]\r\n" + indexRow(1, u"Musik"_s, list, Tracks));
    QDir().mkpath(user.path(u"config/Orvanten Manager"_s));
    layOut(user.path(u"config/Orvanten Manager/settings.reg"_s),
           "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\Verdanis]\r\n\r\n"
           "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n\"Version\"=\"" +
               QByteArray::number(VersionMajor) + '.' + QByteArray::number(VersionMinor) +
               "\"\r\n\"Info\"=\"1\"\r\n"
               "\"Index\"=hex:01,00,00,00\r\n\"NoUpdate\"=dword:00000001\r\n");

    const double bare = user.barePlayingShare(track);
    const double playing = user.playingShare();
    return {u"CPU while playing, beyond the player library's own"_s, u"% core"_s, playing - bare, {}, 2, false};
}

} // namespace

std::vector<Row> programRows()
{
    const SoundServer server;
    std::vector<Row> rows = fullCatalogue();
    rows.push_back(largeListMemory());
    rows.push_back(playbackShare());
    return rows;
}

} // namespace orvantine::bench
