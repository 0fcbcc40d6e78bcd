#include "TempWorld.h"

#include "platform/HostText.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <cstdlib>
#include <set>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

INSTANTIATE_TEST_SUITE_P(Posix, FilesContract,
                         testing::Values(FilesFactory{"Disk", [] { return std::make_unique<TempWorld>(); }}),
                         FilesContract::nameOf);

class PosixFilesTest : public testing::Test
{
protected:
    [[nodiscard]] PosixFiles& files() { return m_world.files(); }
    [[nodiscard]] QString at(const QString& name) const { return m_world.folder() + u'/' + name; }

    TempWorld m_world;
};

// Names

TEST_F(PosixFilesTest, ANameInWindows1252BytesIsFoundByItsText)
{
    m_world.put("K\xf6ln.mp3", "ansi");
    EXPECT_EQ(files().readBytes(at(u"Köln.mp3"_s)).bytes, "ansi");
    EXPECT_EQ(files().readBytes(at(u"KÖLN.MP3"_s)).bytes, "ansi");
    EXPECT_EQ(files().nativePath(at(u"Köln.mp3"_s)), QByteArray::fromStdString(m_world.native("K\xf6ln.mp3")));
}

TEST_F(PosixFilesTest, TheNearestSpellingWins)
{
    m_world.put("k\xf6ln.mp3", "ansi");
    EXPECT_EQ(files().readBytes(at(u"köln.mp3"_s)).bytes, "ansi");
    m_world.put("ko\xcc\x88ln.mp3", "zerlegt");
    EXPECT_EQ(files().readBytes(at(u"köln.mp3"_s)).bytes, "zerlegt");
    m_world.put("K\xc3\xb6ln.mp3", "gross");
    EXPECT_EQ(files().readBytes(at(u"köln.mp3"_s)).bytes, "gross");
    m_world.put("k\xc3\xb6ln.mp3", "genau");
    EXPECT_EQ(files().readBytes(at(u"köln.mp3"_s)).bytes, "genau");
}

TEST_F(PosixFilesTest, EveryListedNameLeadsBackToItsBytes)
{
    const std::set<QByteArray> names = {"K\xc3\xb6ln.mp3", "K\xf6ln.mp3",  "ko\xcc\x88ln.mp3", "\x81\x8d\xff.mp3",
                                        "\xe2\x82.mp3",    "a\\b.mp3",     "\xc3\xb6\xf6.mp3", "k\xf6LN.mp3",
                                        "frage?.mp3",      "zeile\n2.mp3", "stern*.mp3"};
    for (const QByteArray& name : names)
        m_world.put(name, name);
    const QStringList listed = files().list(m_world.folder(), u"*.mp3"_s);
    std::set<QByteArray> found;
    for (const QString& name : listed)
        found.insert(files().readBytes(at(name)).bytes);
    EXPECT_EQ(found, names);
}

TEST_F(PosixFilesTest, AFolderInWindows1252BytesIsWalkedInto)
{
    ASSERT_EQ(::mkdir(m_world.native("K\xfcnstler").c_str(), 0700), 0);
    m_world.put("K\xfcnstler/Lied.mp3", "x");
    EXPECT_EQ(files().folders(m_world.folder()), QStringList{u"Künstler"_s});
    EXPECT_EQ(files().readBytes(at(u"künstler\\LIED.mp3"_s)).bytes, "x");
    EXPECT_TRUE(files().writeBytes(at(u"Künstler/Neu.mp3"_s), "neu"));
    EXPECT_EQ(m_world.bytes("K\xfcnstler/Neu.mp3"), "neu");
}

TEST_F(PosixFilesTest, AFileIsFoundInEitherOfTwoFoldersThatDifferInCase)
{
    ASSERT_EQ(::mkdir(m_world.native("Rock").c_str(), 0700), 0);
    ASSERT_EQ(::mkdir(m_world.native("rock").c_str(), 0700), 0);
    m_world.put("Rock/eins.mp3", "1");
    m_world.put("rock/zwei.mp3", "2");
    EXPECT_EQ(files().readBytes(at(u"ROCK/eins.mp3"_s)).bytes, "1");
    EXPECT_EQ(files().readBytes(at(u"ROCK/zwei.mp3"_s)).bytes, "2");
}

TEST_F(PosixFilesTest, AChangeOfTheFolderIsSeenAtOnce)
{
    m_world.put("eins.mp3", "1");
    for (int i = 0; i < 200; ++i) {
        const QByteArray name = "Lied" + QByteArray::number(i) + ".mp3";
        const QString other = at(QString::fromLatin1(name).toUpper());
        ASSERT_FALSE(files().exists(other));
        m_world.put(name, "x");
        ASSERT_TRUE(files().exists(other)) << i;
        ::unlink(m_world.native(name).c_str());
        ASSERT_FALSE(files().exists(other)) << i;
    }
}

TEST_F(PosixFilesTest, AMappedDriveIsItsFolder)
{
    const TempWorld target;
    target.put("Lied.mp3", "x");
    PosixFiles mapped({.drives = {{u"d:"_s, target.folder()}}, .recoveryFolder = target.recovery()});
    EXPECT_EQ(mapped.readBytes(u"D:\\lied.MP3"_s).bytes, "x");
    EXPECT_EQ(mapped.readBytes(u"d:/Lied.mp3"_s).bytes, "x");
    EXPECT_TRUE(mapped.isFolder(u"D:\\"_s));
    EXPECT_TRUE(mapped.isFolder(u"D:"_s));
    EXPECT_TRUE(mapped.writeBytes(u"D:\\neu.txt"_s, "neu"));
    EXPECT_EQ(target.bytes("neu.txt"), "neu");
}

TEST_F(PosixFilesTest, AnUnmappedDriveNamesNothing)
{
    EXPECT_FALSE(files().exists(u"Q:\\Musik\\a.mp3"_s));
    EXPECT_EQ(files().readBytes(u"Q:\\Musik\\a.mp3"_s).outcome, ReadOutcome::Missing);
    EXPECT_FALSE(files().writeBytes(u"Q:\\a.mp3"_s, "x"));
    EXPECT_FALSE(files().makeFolder(u"Q:\\neu"_s));
}

TEST_F(PosixFilesTest, AVeryLongNameNamesNothing)
{
    const QString name = at(QString(5000, u'x'));
    EXPECT_FALSE(files().exists(name));
    EXPECT_FALSE(files().writeBytes(name, "x"));
    EXPECT_FALSE(files().readBytes(name).done());
}

TEST_F(PosixFilesTest, ARelativePathStartsFromTheCurrentFolder)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_world.folder()));
    EXPECT_TRUE(files().writeBytes(u"relativ.txt"_s, "x"));
    EXPECT_EQ(files().readBytes(u"RELATIV.txt"_s).bytes, "x");
    const std::optional<QByteArray> native = files().nativePath(u"Relativ.TXT"_s);
    QDir::setCurrent(before);
    ASSERT_TRUE(native);
    EXPECT_TRUE(native->startsWith('/'));
    EXPECT_TRUE(native->endsWith("/relativ.txt"));
    EXPECT_EQ(m_world.bytes("relativ.txt"), "x");
}

// In place

TEST_F(PosixFilesTest, AWriteKeepsInodeLinksAndMode)
{
    m_world.put("a", "alt und lang");
    ASSERT_EQ(::chmod(m_world.native("a").c_str(), 0640), 0);
    ASSERT_EQ(::link(m_world.native("a").c_str(), m_world.native("zweiter Name").c_str()), 0);
    ASSERT_EQ(::symlink("a", m_world.native("verweis").c_str()), 0);
    const struct stat before = m_world.info("a");
    ASSERT_TRUE(files().writeBytes(at(u"verweis"_s), "neu"));
    ASSERT_TRUE(files().appendBytes(at(u"a"_s), "+"));
    ASSERT_TRUE(files().replaceBytes(at(u"verweis"_s), 0, 1, "NN"));
    EXPECT_EQ(m_world.bytes("zweiter Name"), "NNeu+");
    EXPECT_EQ(m_world.info("a").st_ino, before.st_ino);
    EXPECT_EQ(m_world.info("a").st_mode, before.st_mode);
    struct stat link = {};
    ASSERT_EQ(::lstat(m_world.native("verweis").c_str(), &link), 0);
    EXPECT_TRUE(S_ISLNK(link.st_mode));
}

TEST_F(PosixFilesTest, EqualContentIsNotWritten)
{
    m_world.put("a", "gleich");
    const std::optional<FileStamp> before = files().stamp(at(u"a"_s));
    EXPECT_TRUE(files().writeBytes(at(u"a"_s), "gleich"));
    EXPECT_TRUE(files().replaceBytes(at(u"a"_s), 1, 2, "le"));
    EXPECT_EQ(files().stamp(at(u"a"_s)), before);
}

TEST_F(PosixFilesTest, AWriteProtectedFileIsNotWrittenUntilTheAttributeIsCleared)
{
    m_world.put("a", "alt");
    m_world.put("quelle", "neu");
    ASSERT_EQ(::chmod(m_world.native("a").c_str(), 0444), 0);
    EXPECT_FALSE(files().writeBytes(at(u"a"_s), "neu"));
    EXPECT_FALSE(files().appendBytes(at(u"a"_s), "neu"));
    EXPECT_FALSE(files().replaceBytes(at(u"a"_s), 0, 1, "neu"));
    EXPECT_FALSE(files().copy(at(u"quelle"_s), at(u"a"_s)));
    EXPECT_EQ(m_world.bytes("a"), "alt");
    EXPECT_TRUE(files().clearAttributes(at(u"A"_s)));
    EXPECT_TRUE(files().writeBytes(at(u"a"_s), "neu"));
    EXPECT_EQ(m_world.bytes("a"), "neu");
    EXPECT_FALSE(files().clearAttributes(at(u"fehlt"_s)));
}

/// Runs in a child of its own, since the limit cannot be taken back.
template <class Step>
int withFileSizeLimit(rlim_t limit, const Step& step)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit bounds{limit, limit};
        ::setrlimit(RLIMIT_FSIZE, &bounds);
        ::_exit(step() ? 1 : 0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(PosixFilesTest, WithoutRoomTheOldBytesStay)
{
    const QByteArray old(6'000, 'a');
    m_world.put("a", old);
    m_world.put("gross", QByteArray(30'000, 'g'));
    const QString path = at(u"a"_s);
    EXPECT_EQ(withFileSizeLimit(9'000, [&] { return files().writeBytes(path, QByteArray(20'000, 'b')); }), 0);
    EXPECT_EQ(m_world.bytes("a"), old);
    EXPECT_EQ(withFileSizeLimit(9'000, [&] { return files().appendBytes(path, QByteArray(20'000, 'b')); }), 0);
    EXPECT_EQ(m_world.bytes("a"), old);
    EXPECT_EQ(withFileSizeLimit(9'000, [&] { return files().replaceBytes(path, 5, 0, QByteArray(20'000, 'b')); }), 0);
    EXPECT_EQ(m_world.bytes("a"), old);
    EXPECT_EQ(withFileSizeLimit(9'000, [&] { return files().copy(at(u"gross"_s), path); }), 0);
    EXPECT_EQ(m_world.bytes("a"), old);
    EXPECT_EQ(withFileSizeLimit(9'000, [&] { return files().copy(at(u"gross"_s), at(u"kopie"_s)); }), 0);
    EXPECT_FALSE(files().exists(at(u"kopie"_s)));
    EXPECT_EQ(withFileSizeLimit(9'000, [&] { return files().writeBytes(at(u"neu"_s), QByteArray(20'000, 'b')); }), 0);
    EXPECT_FALSE(files().exists(at(u"neu"_s)));
}

TEST_F(PosixFilesTest, AnOwnWriteBearsItsExactTime)
{
    m_world.put("a", "alt");
    timespec before = {};
    ::clock_gettime(CLOCK_REALTIME, &before);
    ASSERT_TRUE(files().writeBytes(at(u"a"_s), "neu"));
    timespec after = {};
    ::clock_gettime(CLOCK_REALTIME, &after);
    const auto nanoseconds = [](const timespec& time) { return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec; };
    EXPECT_GE(nanoseconds(m_world.info("a").st_mtim), nanoseconds(before));
    EXPECT_LE(nanoseconds(m_world.info("a").st_mtim), nanoseconds(after));
}

TEST_F(PosixFilesTest, ACopyIsOnTheSameTimeAndMode)
{
    m_world.put("quelle", "x");
    const timespec times[2] = {{1'000'000'000, 123'456'789}, {1'000'000'000, 123'456'789}};
    ASSERT_EQ(::utimensat(AT_FDCWD, m_world.native("quelle").c_str(), times, 0), 0);
    ASSERT_TRUE(files().copy(at(u"quelle"_s), at(u"ziel"_s)));
    EXPECT_EQ(m_world.info("ziel").st_mtim.tv_sec, 1'000'000'000);
    EXPECT_EQ(m_world.info("ziel").st_mtim.tv_nsec, 123'456'789);
    EXPECT_EQ(files().modified(at(u"ziel"_s)), QDateTime::fromMSecsSinceEpoch(1'000'000'000'123));
}

TEST_F(PosixFilesTest, ACopyToAHardLinkOfTheSourceChangesNothing)
{
    m_world.put("a", "inhalt");
    ASSERT_EQ(::link(m_world.native("a").c_str(), m_world.native("b").c_str()), 0);
    EXPECT_TRUE(files().copy(at(u"a"_s), at(u"b"_s)));
    EXPECT_EQ(m_world.bytes("a"), "inhalt");
}

TEST_F(PosixFilesTest, ALargeCopyOverALongerFileIsExactAndTheLongerFileIsKept)
{
    const QByteArray large(17'000'000, 'l');
    m_world.put("quelle", large);
    m_world.put("ziel", QByteArray(18'000'000, 'z'));
    ASSERT_TRUE(files().copy(at(u"quelle"_s), at(u"ziel"_s)));
    EXPECT_EQ(m_world.bytes("ziel"), large);
    EXPECT_EQ(m_world.kept(), QByteArrayList{QByteArray(18'000'000, 'z')});
    ASSERT_TRUE(files().remove(at(u"ziel"_s)));
    EXPECT_EQ(m_world.kept().value(1), large);
    m_world.breakStore();
    m_world.put("ziel", QByteArray(18'000'000, 'z'));
    EXPECT_FALSE(files().copy(at(u"quelle"_s), at(u"ziel"_s)));
    EXPECT_FALSE(files().remove(at(u"ziel"_s)));
    EXPECT_EQ(files().size(at(u"ziel"_s)), 18'000'000);
}

TEST_F(PosixFilesTest, RemovingALinkLeavesItsTarget)
{
    m_world.put("a", "x");
    ASSERT_EQ(::symlink("a", m_world.native("verweis").c_str()), 0);
    EXPECT_TRUE(files().remove(at(u"verweis"_s)));
    EXPECT_EQ(m_world.bytes("a"), "x");
    EXPECT_EQ(m_world.kept(), QByteArrayList()) << "nothing is lost";
}

// Adoption of the host's text files

TEST(HostText, OnlyLineFeedsWithoutCarriageReturnNeedAdoption)
{
    EXPECT_TRUE(needsAdoption("a\nb"));
    EXPECT_TRUE(needsAdoption("\n"));
    EXPECT_FALSE(needsAdoption(""));
    EXPECT_FALSE(needsAdoption("a"));
    EXPECT_FALSE(needsAdoption("a\r\nb\n"));
    EXPECT_FALSE(needsAdoption("a\n\rb"));
    EXPECT_FALSE(needsAdoption(QByteArray("a\n\0b", 4)));
}

TEST(HostText, EveryLineEndsInCarriageReturnAndLineFeed)
{
    EXPECT_EQ(adopted("a\nb"), "a\r\nb\r\n");
    EXPECT_EQ(adopted("a\n\nb\n"), "a\r\n\r\nb\r\n");
    EXPECT_EQ(adopted(""), "");
}

TEST_F(PosixFilesTest, AHostPlaylistIsAdoptedWithAnExactCopyKept)
{
    m_world.put("liste.m3u", "eins.mp3\nK\xf6ln.mp3\nzwei.mp3");
    const struct stat before = m_world.info("liste.m3u");
    const ReadText read = files().readPlaylist(at(u"Liste.m3u"_s));
    EXPECT_TRUE(read.done());
    EXPECT_EQ(read.text, u"eins.mp3\r\nKöln.mp3\r\nzwei.mp3\r\n"_s);
    EXPECT_EQ(m_world.bytes("liste.m3u"), "eins.mp3\r\nK\xf6ln.mp3\r\nzwei.mp3\r\n");
    EXPECT_EQ(m_world.info("liste.m3u").st_ino, before.st_ino);
    const QStringList copies = files().list(m_world.recovery(), u"*liste.m3u"_s);
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(files().readBytes(m_world.recovery() + u'/' + copies.first()).bytes, "eins.mp3\nK\xf6ln.mp3\nzwei.mp3");
    struct stat folder = {};
    ASSERT_EQ(::stat(m_world.recovery().toUtf8().constData(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
}

TEST_F(PosixFilesTest, WithoutARecoveryFolderAHostPlaylistStaysAndIsReadAsIfAdopted)
{
    m_world.put("liste.m3u", "eins.mp3\nzwei.mp3\n");
    m_world.put("keinOrdner", "x");
    PosixFiles other({.recoveryFolder = at(u"keinOrdner/Sicherung"_s)});
    EXPECT_EQ(other.readPlaylist(at(u"liste.m3u"_s)).text, u"eins.mp3\r\nzwei.mp3\r\n"_s);
    PosixFiles off({.adoptsHostTexts = false, .recoveryFolder = m_world.recovery()});
    EXPECT_EQ(off.readPlaylist(at(u"liste.m3u"_s)).text, u"eins.mp3\nzwei.mp3\n"_s);
    EXPECT_EQ(m_world.bytes("liste.m3u"), "eins.mp3\nzwei.mp3\n");
}

TEST_F(PosixFilesTest, AWriteProtectedHostPlaylistStaysAndIsReadAsIfAdopted)
{
    m_world.put("liste.m3u", "eins.mp3\n");
    ASSERT_EQ(::chmod(m_world.native("liste.m3u").c_str(), 0444), 0);
    for (int time = 1; time <= 2; ++time)
        EXPECT_EQ(files().readPlaylist(at(u"liste.m3u"_s)).text, u"eins.mp3\r\n"_s);
    EXPECT_EQ(m_world.bytes("liste.m3u"), "eins.mp3\n");
    EXPECT_EQ(m_world.kept(), QByteArrayList()) << "asked before the copy is made";
}

// What is no playlist

TEST_F(PosixFilesTest, APipeADeviceAndALoopAreNotReadAndNeverWaitedFor)
{
    ASSERT_EQ(::mkfifo(m_world.native("pipe").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("/dev/zero", m_world.native("null").c_str()), 0);
    ASSERT_EQ(::symlink("schleife", m_world.native("schleife").c_str()), 0);
    for (const QString& path : {at(u"pipe"_s), at(u"null"_s), at(u"schleife"_s), u"/dev/zero"_s}) {
        EXPECT_EQ(files().readBytes(path).outcome, ReadOutcome::Failed) << path.toStdString();
        EXPECT_EQ(files().readPlaylist(path).outcome, ReadOutcome::Failed) << path.toStdString();
        EXPECT_FALSE(files().writeBytes(path, "x")) << path.toStdString();
        EXPECT_FALSE(files().appendBytes(path, "x")) << path.toStdString();
        EXPECT_FALSE(files().copy(path, at(u"kopie"_s))) << path.toStdString();
    }
    EXPECT_FALSE(files().exists(at(u"kopie"_s)));
    EXPECT_EQ(files().size(at(u"pipe"_s)), std::nullopt);
}

TEST_F(PosixFilesTest, ADanglingLinkIsMissing)
{
    ASSERT_EQ(::symlink("nirgends", m_world.native("verweis.m3u").c_str()), 0);
    EXPECT_EQ(files().readPlaylist(at(u"verweis.m3u"_s)).outcome, ReadOutcome::Missing);
    EXPECT_EQ(files().list(m_world.folder(), u"*.*"_s), QStringList());
}

TEST_F(PosixFilesTest, APlaylistBehindALinkIsAdoptedAtItsPlace)
{
    m_world.put("liste.m3u", "eins.mp3\n");
    ASSERT_EQ(::symlink("liste.m3u", m_world.native("verweis.m3u").c_str()), 0);
    EXPECT_EQ(files().readPlaylist(at(u"verweis.m3u"_s)).text, u"eins.mp3\r\n"_s);
    EXPECT_EQ(m_world.bytes("liste.m3u"), "eins.mp3\r\n");
}

TEST_F(PosixFilesTest, AFileBeyondTheMaximumIsNotRead)
{
    m_world.put("riesig", "");
    ASSERT_EQ(::truncate(m_world.native("riesig").c_str(), off_t{1} << 30), 0);
    EXPECT_EQ(files().readBytes(at(u"riesig"_s)).outcome, ReadOutcome::Failed);
    EXPECT_EQ(files().size(at(u"riesig"_s)), qint64{1} << 30);
    PosixFiles small({.maximumReadSize = 10});
    m_world.put("zehn", "0123456789");
    m_world.put("elf", "0123456789+");
    EXPECT_TRUE(small.readBytes(at(u"zehn"_s)).done());
    EXPECT_EQ(small.readBytes(at(u"elf"_s)).outcome, ReadOutcome::Failed);
}

TEST_F(PosixFilesTest, APlaylistBeyondSixtyFourMegabytesIsNeitherReadNorWritten)
{
    const QString path = at(u"riesig.m3u"_s);
    m_world.put("riesig.m3u", "\n\n");
    ASSERT_EQ(::truncate(m_world.native("riesig.m3u").c_str(), 100'000'000), 0);
    EXPECT_EQ(files().readPlaylist(path).outcome, ReadOutcome::Failed);
    EXPECT_FALSE(files().writeText(path, u"a.mp3\r\n"_s));
    EXPECT_FALSE(files().mayHoldPlaylist(path));
    EXPECT_EQ(files().size(path), 100'000'000);
    EXPECT_EQ(m_world.kept(), QByteArrayList());
}

TEST_F(PosixFilesTest, LongPlaylistsComeBackWhole)
{
    QByteArray lines;
    for (int i = 0; i < 100'000; ++i)
        lines += "Lied " + QByteArray::number(i) + ".mp3\r\n";
    m_world.put("lang.m3u", lines);
    EXPECT_EQ(files().readPlaylist(at(u"lang.m3u"_s)).text, QString::fromLatin1(lines));
    const QByteArray oneLine = QByteArray(10'000'000, 'x') + "\r\n";
    m_world.put("eine.m3u", oneLine);
    EXPECT_EQ(files().readPlaylist(at(u"eine.m3u"_s)).text.size(), oneLine.size());
}

TEST_F(PosixFilesTest, APlaylistThatVanishesBetweenTwoReadsIsMissing)
{
    m_world.put("liste.m3u", "eins.mp3\r\n");
    EXPECT_TRUE(files().readPlaylist(at(u"LISTE.m3u"_s)).done());
    ::unlink(m_world.native("liste.m3u").c_str());
    EXPECT_EQ(files().readPlaylist(at(u"LISTE.m3u"_s)).outcome, ReadOutcome::Missing);
}

TEST_F(PosixFilesTest, AFileWithoutRightsIsNeverEmptied)
{
    // Root reads it all the same; for any other user the read fails, and then nothing is written.
    m_world.put("liste.m3u", "eins.mp3\nzwei.mp3\n");
    ASSERT_EQ(::chmod(m_world.native("liste.m3u").c_str(), 0), 0);
    const ReadText read = files().readPlaylist(at(u"liste.m3u"_s));
    EXPECT_EQ(read.text, read.done() ? u"eins.mp3\r\nzwei.mp3\r\n"_s : QString());
    EXPECT_NE(read.outcome, ReadOutcome::Missing);
    EXPECT_FALSE(files().writeBytes(at(u"liste.m3u"_s), ""));
    ASSERT_EQ(::chmod(m_world.native("liste.m3u").c_str(), 0600), 0);
    EXPECT_EQ(m_world.bytes("liste.m3u"), "eins.mp3\nzwei.mp3\n");
}

} // namespace
} // namespace orvantine
