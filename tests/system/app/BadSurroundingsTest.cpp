#include "support/Wav.h"
#include "system/app/Program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

QByteArray linesOf(const QByteArray& line, int count)
{
    QByteArray text;
    for (int i = 1; i <= count; ++i)
        text += QByteArray(line).replace('#', QByteArray::number(i)) + "\r\n";
    return text;
}

/// What is told where there is no sound server, and nothing else.
const QStringList NoSoundServer{u" Sound und Audiowiedergabe"_s};

class BadSurroundings : public ::testing::Test
{
protected:
    /// One list in a catalogue, open at the start.
    void useList(const QByteArray& content)
    {
        desk.settle();
        desk.write(list, content);
        desk.writeCatalogue({list});
    }
    void useWavList(const QByteArray& wav)
    {
        desk.write(desk.path(u"music/a.wav"_s), wav);
        useList((desk.path(u"music/a.wav"_s) + u"\r\n"_s).toUtf8());
    }

    Desk desk;
    QString list = desk.dataPath(u"Playlisten/Eins.m3u"_s);
};

TEST(WithoutASessionBus, TheProgramStartsAndCloses)
{
    Desk desk({.sessionBus = false});
    // An address at which nobody is, so that no other bus is started for want of one.
    desk.environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + desk.path(u"no-bus"_s));
    desk.settle();
    Program program(desk);
    EXPECT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
}

TEST_F(BadSurroundings, WithoutASoundDeviceAListIsPlayedSilently)
{
    useWavList(fake::wav({.milliseconds = 120'000, .hertz = 440}));
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    program.click(u"Wiedergabe starten"_s);
    program.click(u"Pause"_s);
    program.click(u"Weiterspielen"_s);
    program.click(u"Wiedergabe stoppen"_s);
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(program.boxes(), NoSoundServer);
}

TEST_F(BadSurroundings, ATrackThatNoCodecReadsEndsTheListWithoutAMessage)
{
    useWavList(QByteArray(50'000, 'x'));
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    program.click(u"Wiedergabe starten"_s);
    // The button is back once the playback has ended by itself.
    EXPECT_TRUE(await([&program] {
        const auto button = program.control(u"Wiedergabe starten"_s);
        return !program.runs() || (button && button->enabled);
    }));
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(program.boxes(), NoSoundServer);
}

TEST_F(BadSurroundings, WithoutAHomeFolderTheProgramStartsAndCloses)
{
    for (const QString& name : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_STATE_HOME"_s,
                                u"XDG_CACHE_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        desk.environment.remove(name);
    Program program(desk);
    EXPECT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
}

TEST_F(BadSurroundings, ADataFolderThatCannotBeMadeLeavesAnEmptyCatalogue)
{
    desk.settle({u"\"Database\"=\"/proc/orvanten/\""_s});
    Program program(desk);
    EXPECT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
}

TEST_F(BadSurroundings, SigtermEndsTheProgramAndLeavesTheCatalogue)
{
    useList("gone.mp3\r\n");
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    const QByteArray before = Desk::bytes(desk.dataPath(u"Orvantine.dat"_s));
    EXPECT_TRUE(program.terminates());
    EXPECT_EQ(Desk::bytes(desk.dataPath(u"Orvantine.dat"_s)), before);
    EXPECT_TRUE(Desk::bytes(list).startsWith("gone.mp3\r\n"));
}

TEST_F(BadSurroundings, EachSignalOfAnEndSavesTheOptionsAndEndsWithoutAFault)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(signal);
        useList("gone.mp3\r\n");
        Program program(desk);
        ASSERT_TRUE(program.awaitWindow()) << program.complaints();
        // A window that has just come up may still be given its first size, and the start picture may still stand: it
        // is asked for until it stays.
        ASSERT_TRUE(await([&] {
            const QString window = desk.window(u"Orvanten Manager"_s);
            desk.tool(u"xdotool"_s, {u"windowsize"_s, window, u"777"_s, u"600"_s});
            const QString told = desk.tool(u"xdotool"_s, {u"getwindowgeometry"_s, window}).value_or(QString());
            return told.contains(u"777x600"_s);
        }));
        // The program hears of its size a moment later than the desktop's tools.
        QThread::msleep(1000);
        program.tell(signal);
        EXPECT_TRUE(program.ends()) << program.complaints();
        const QByteArray settings = Desk::bytes(desk.path(u"config/Orvanten Manager/settings.reg"_s));
        EXPECT_TRUE(settings.contains("\"Width\"=\"11655\"")) << settings.toStdString();
    }
}

TEST_F(BadSurroundings, AListThatVanishesBeforeItIsClickedIsToldAndHarmsNothing)
{
    useList("gone.mp3\r\n");
    const QString other = desk.dataPath(u"Playlisten/Zwei.m3u"_s);
    desk.write(other, "gone too.mp3\r\n");
    desk.writeCatalogue({list, other});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(QFile::remove(other));
    program.click(u"Zwei"_s);
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_TRUE(Desk::bytes(list).startsWith("gone.mp3\r\n"));
}

/// Something that lies where a file is expected, and how it is told to have survived.
struct BadFile
{
    const char* name;
    void (*make)(const Desk&, const QString& path);
    bool (*unharmed)(const QString& path);
};

void PrintTo(const BadFile& file, std::ostream* out)
{
    *out << file.name;
}

std::string nameOf(const ::testing::TestParamInfo<BadFile>& info)
{
    return info.param.name;
}

QByteArray binary()
{
    QByteArray bytes;
    for (int i = 0; i < 200'000; ++i)
        bytes += static_cast<char>((i * 7919 + i / 251) % 256);
    return bytes;
}

QByteArray millionKeys()
{
    return "[TagInfo]\r\n" + linesOf("/music/#.mp3=Somebody - Something", 1'000'000) + "[Index]\r\n1a=000\r\n";
}

const QByteArray WithNuls = QByteArrayLiteral("[Index]\r\n1a=000\r\n1b=Ei\0ns\r\n1c=/x/Eins\0.m3u\r\n\0\0\0");
const QByteArray SectionTwice = "[Index]\r\n1a=000\r\n1b=A\r\n[Options]\r\nX=1\r\n[Index]\r\n1a=000\r\n1b=B\r\n";
constexpr off_t OneGigabyte = off_t{1} << 30;

qint64 sizeOf(const QString& path)
{
    return QFileInfo(path).size();
}

class BadDatabase : public BadSurroundings, public ::testing::WithParamInterface<BadFile>
{
};

TEST_P(BadDatabase, LeavesTheProgramUsableAndTheFileUnharmed)
{
    desk.settle();
    const QString database = desk.dataPath(u"Orvantine.dat"_s);
    QDir().mkpath(desk.dataPath({}));
    GetParam().make(desk, database);
    Program program(desk);
    EXPECT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_TRUE(GetParam().unharmed(database)) << Desk::bytes(database).left(400).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadDatabase,
    ::testing::Values(
        BadFile{"Folder", [](const Desk&, const QString& path) { QDir().mkpath(path); },
                [](const QString& path) { return QFileInfo(path).isDir(); }},
        BadFile{"Empty", [](const Desk& desk, const QString& path) { desk.write(path, {}); },
                [](const QString& path) { return QFileInfo(path).isFile(); }},
        BadFile{"Binary", [](const Desk& desk, const QString& path) { desk.write(path, binary()); },
                [](const QString& path) { return Desk::bytes(path).startsWith(binary().left(1000)); }},
        BadFile{"SparseOfAGigabyte",
                [](const Desk& desk, const QString& path) {
                    desk.write(path, {});
                    ASSERT_EQ(::truncate(path.toUtf8().constData(), OneGigabyte), 0);
                },
                [](const QString& path) { return sizeOf(path) == OneGigabyte; }},
        BadFile{"Nuls", [](const Desk& desk, const QString& path) { desk.write(path, WithNuls); },
                [](const QString& path) { return Desk::bytes(path).contains("1b=Ei"); }},
        BadFile{"WithoutRights",
                [](const Desk& desk, const QString& path) {
                    desk.write(path, SectionTwice);
                    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0), 0);
                },
                [](const QString& path) {
                    return ::chmod(path.toUtf8().constData(), 0600) == 0 && Desk::bytes(path).contains("1b=A");
                }},
        BadFile{"SectionTwice", [](const Desk& desk, const QString& path) { desk.write(path, SectionTwice); },
                [](const QString& path) {
                    return Desk::bytes(path).contains("1b=A") && Desk::bytes(path).contains("1b=B");
                }},
        BadFile{"MillionKeys", [](const Desk& desk, const QString& path) { desk.write(path, millionKeys()); },
                [](const QString& path) {
                    return Desk::bytes(path).contains("/music/1000000.mp3=Somebody - Something\r\n");
                }}),
    nameOf);

class BadPlaylist : public BadSurroundings, public ::testing::WithParamInterface<BadFile>
{
};

TEST_P(BadPlaylist, LeavesTheProgramUsableAndTheFileUnharmed)
{
    useList({});
    ASSERT_TRUE(QFile::remove(list));
    GetParam().make(desk, list);
    Program program(desk);
    EXPECT_TRUE(program.awaitWindow()) << program.complaints();
    program.click(u"Eins"_s);
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_TRUE(GetParam().unharmed(list));
}

const QByteArray LongLine = QByteArray(10 << 20, 'a') + ".mp3\r\n";
const QByteArray ManyLines = linesOf("/music/folder/track #.mp3", 100'000);

INSTANTIATE_TEST_SUITE_P(
    Files, BadPlaylist,
    ::testing::Values(
        BadFile{"Fifo",
                [](const Desk&, const QString& path) { ASSERT_EQ(::mkfifo(path.toUtf8().constData(), 0600), 0); },
                [](const QString& path) {
                    struct stat kind = {};
                    return ::lstat(path.toUtf8().constData(), &kind) == 0 && S_ISFIFO(kind.st_mode);
                }},
        BadFile{"LinkToZeros", [](const Desk&, const QString& path) { ASSERT_TRUE(QFile::link(u"/dev/zero"_s, path)); },
                [](const QString& path) { return QFileInfo(path).isSymLink(); }},
        BadFile{"Folder", [](const Desk&, const QString& path) { QDir().mkpath(path); },
                [](const QString& path) { return QFileInfo(path).isDir(); }},
        BadFile{"LinkToAList",
                [](const Desk& desk, const QString& path) {
                    desk.write(desk.path(u"elsewhere.m3u"_s), "gone.mp3\r\n");
                    ASSERT_TRUE(QFile::link(desk.path(u"elsewhere.m3u"_s), path));
                },
                [](const QString& path) {
                    return QFileInfo(path).isSymLink() && Desk::bytes(path).startsWith("gone.mp3\r\n");
                }},
        BadFile{"Binary", [](const Desk& desk, const QString& path) { desk.write(path, binary()); },
                [](const QString& path) { return sizeOf(path) >= binary().size(); }},
        BadFile{"OneLineOfTenMegabytes", [](const Desk& desk, const QString& path) { desk.write(path, LongLine); },
                [](const QString& path) { return Desk::bytes(path).startsWith(LongLine); }},
        BadFile{"HundredThousandLines", [](const Desk& desk, const QString& path) { desk.write(path, ManyLines); },
                [](const QString& path) { return Desk::bytes(path).startsWith(ManyLines); }},
        BadFile{"WithoutRights",
                [](const Desk& desk, const QString& path) {
                    desk.write(path, "gone.mp3\r\n");
                    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0), 0);
                },
                [](const QString& path) {
                    return ::chmod(path.toUtf8().constData(), 0600) == 0 &&
                           Desk::bytes(path).startsWith("gone.mp3\r\n");
                }}),
    nameOf);

class BadSettings : public BadSurroundings, public ::testing::WithParamInterface<BadFile>
{
};

TEST_P(BadSettings, LeaveTheProgramUsableAndTheCatalogueUnharmed)
{
    useList("gone.mp3\r\n");
    const QString settings = desk.path(u"config/Orvanten Manager/settings.reg"_s);
    ASSERT_TRUE(QFile::remove(settings));
    GetParam().make(desk, settings);
    Program program(desk);
    EXPECT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_TRUE(GetParam().unharmed(settings));
    EXPECT_TRUE(Desk::bytes(desk.dataPath(u"Orvantine.dat"_s)).contains("1b=Eins\r\n"));
    EXPECT_TRUE(Desk::bytes(list).startsWith("gone.mp3\r\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadSettings,
    ::testing::Values(
        BadFile{"Binary", [](const Desk& desk, const QString& path) { desk.write(path, binary()); },
                [](const QString& path) { return sizeOf(path) > 0; }},
        BadFile{"CutInTheMiddle",
                [](const Desk& desk, const QString& path) {
                    desk.write(path,
                               "Windows Registry Editor Version 5.00\r\n\r\n"
                               "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n\"Version\"=\"2.3\"\r\n"
                               "\"Width\"=hex:01,0");
                },
                [](const QString& path) { return sizeOf(path) > 0; }},
        BadFile{"Folder", [](const Desk&, const QString& path) { QDir().mkpath(path); },
                [](const QString& path) { return QFileInfo(path).isDir(); }}),
    nameOf);

} // namespace

} // namespace orvantine::desk
