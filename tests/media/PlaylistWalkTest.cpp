#include "platform/PlaylistWalk.h"

#include "media/MusicFolder.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString printed(const QList<PlaylistEntry>& entries)
{
    QStringList lines;
    for (const PlaylistEntry& entry : entries)
        lines.append(entry.sourceURL == entry.path ? entry.sourceURL : entry.sourceURL + u" -> "_s + entry.path);
    return lines.join(u'\n');
}

struct TextCase
{
    const char* name;
    QString playlist;
    QString text;
    QString expected;
};

class PlaylistEntries : public ::testing::TestWithParam<TextCase>
{
};

TEST_P(PlaylistEntries, AreThoseThatThePlayerSees)
{
    const TextCase& c = GetParam();
    EXPECT_EQ(printed(playlistEntries(c.playlist, c.text)).toStdString(), c.expected.toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Table, PlaylistEntries,
    ::testing::Values(
        TextCase{"NoText", u"/m/l.m3u"_s, {}, {}},
        TextCase{"CrLfClosesAnEntry", u"/m/l.m3u"_s, u"a.mp3\r\nb.mp3\r\n"_s, u"/m/a.mp3\n/m/b.mp3"_s},
        TextCase{"CrAloneClosesAnEntry", u"/m/l.m3u"_s, u"a.mp3\rb.mp3\r"_s, u"/m/a.mp3\n/m/b.mp3"_s},
        TextCase{"CrCrLfIsOneLineEnd", u"/m/l.m3u"_s, u"a.mp3\r\r\nb.mp3\r\r\n"_s, u"/m/a.mp3\n/m/b.mp3"_s},
        TextCase{"LfInsideAnEntryIsDropped", u"/m/l.m3u"_s, u"a\n.mp3\r\n"_s, u"/m/a.mp3"_s},
        TextCase{"UnclosedLastLineIsNoEntry", u"/m/l.m3u"_s, u"a.mp3\r\nb.mp3"_s, u"/m/a.mp3"_s},
        TextCase{"OneUnclosedLineIsNoEntry", u"/m/l.m3u"_s, u"a.mp3"_s, {}},
        TextCase{"LfOnlyIsSplitAtLf", u"/m/l.m3u"_s, u"a.mp3\nb.mp3\n"_s, u"/m/a.mp3\n/m/b.mp3"_s},
        TextCase{"LfOnlyCountsItsUnclosedLastLine", u"/m/l.m3u"_s, u"a.mp3\nb.mp3"_s, u"/m/a.mp3\n/m/b.mp3"_s},
        TextCase{"CommentIsDropped", u"/m/l.m3u"_s, u"#EXTM3U\r\na.mp3\r\n#EXTINF:1,x\r\nb.mp3\r\n"_s,
                 u"/m/a.mp3\n/m/b.mp3"_s},
        TextCase{"SignInsideIsNoComment", u"/m/l.m3u"_s, u" #1.mp3\r\n"_s, u"/m/ #1.mp3"_s},
        TextCase{"EmptyLineIsNoEntry", u"/m/l.m3u"_s, u"\r\na.mp3\r\n\r\n"_s, u"/m/a.mp3"_s},
        TextCase{"BlanksAreKept", u"/m/l.m3u"_s, u" a b .mp3 \r\n"_s, u"/m/ a b .mp3 "_s},
        TextCase{"SlashPathStaysAsItStands", u"/m/l.m3u"_s, u"/x/a.mp3\r\n"_s, u"/x/a.mp3"_s},
        TextCase{"DrivePathStaysAsItStands", u"/m/l.m3u"_s, u"C:\\x\\a.mp3\r\n"_s, u"C:\\x\\a.mp3"_s},
        TextCase{"ServerPathStaysAsItStands", u"/m/l.m3u"_s, u"\\\\server\\x\\a.mp3\r\n"_s, u"\\\\server\\x\\a.mp3"_s},
        TextCase{"RelativeBackslashPathShowsAsItStandsAndLiesInTheFolder", u"/m/l.m3u"_s, u"..\\x\\a.mp3\r\n"_s,
                 u"..\\x\\a.mp3 -> /m/..\\x\\a.mp3"_s},
        TextCase{"RelativeSlashPathShowsAsItStandsAndLiesInTheFolder", u"/m/l.m3u"_s, u"x/a.mp3\r\n"_s,
                 u"x/a.mp3 -> /m/x/a.mp3"_s},
        TextCase{"DriveWithoutSeparatorIsAName", u"/m/l.m3u"_s, u"C:a.mp3\r\n"_s, u"/m/C:a.mp3"_s},
        TextCase{"FolderKeepsItsOwnSeparator", u"C:\\Musik\\l.m3u"_s, u"a.mp3\r\n"_s, u"C:\\Musik\\a.mp3"_s},
        TextCase{"LastSeparatorOfEitherKindCounts", u"C:\\Musik/l.m3u"_s, u"a.mp3\r\n"_s, u"C:\\Musik/a.mp3"_s},
        TextCase{"ListWithoutFolder", u"l.m3u"_s, u"a.mp3\r\n"_s, u"a.mp3"_s},
        TextCase{"PlsKeysAreEntriesAsTheyStand", u"/m/l.pls"_s, u"[playlist]\r\nFile1=C:\\x.mp3\r\n"_s,
                 u"/m/[playlist]\nFile1=C:\\x.mp3 -> /m/File1=C:\\x.mp3"_s},
        TextCase{"LongEntryIsNotCut", u"/m/l.m3u"_s, QString(300, u'a') + u"\r\n"_s, u"/m/"_s + QString(300, u'a')}),
    [](const auto& testCase) { return testCase.param.name; });

TEST(IsPlaylistPath, KnowsTheEndingsOfListsIgnoringCase)
{
    for (const QString& path : {u"a.m3u"_s, u"/x/a.M3U"_s, u"C:\\x\\a.m3u8"_s, u"a.Pls"_s, u"a.txt"_s, u"a.tmp"_s})
        EXPECT_TRUE(isPlaylistPath(path)) << path.toStdString();
    for (const QString& path :
         {u""_s, u"m3u"_s, u"a.mp3"_s, u"a.m3u.mp3"_s, u"/x.m3u/a"_s, u"C:\\x.m3u\\a"_s, u"a.nml"_s})
        EXPECT_FALSE(isPlaylistPath(path)) << path.toStdString();
}

TEST(EntriesToPlay, OfATrackAreTheTrack)
{
    PosixFiles files;
    EXPECT_EQ(printed(entriesToPlay(files, u"C:\\x\\gone.mp3"_s)), u"C:\\x\\gone.mp3"_s);
}

TEST(EntriesToPlay, OfAListComeFromItsFile)
{
    const test::MusicFolder music;
    PosixFiles files;
    const QString list = music.writeList({u"a.wav"_s, u"C:\\b.wav"_s});
    EXPECT_EQ(printed(entriesToPlay(files, list)), music.path(u"a.wav"_s) + u"\nC:\\b.wav"_s);
}

TEST(EntriesToPlay, OfAListThatIsKnownToBeOneComeFromItsFileWhateverItsEnding)
{
    const test::MusicFolder music;
    PosixFiles files;
    const QString list = music.writeList({u"C:\\b.wav"_s}, u"liste.lst"_s);
    EXPECT_EQ(printed(entriesToPlay(files, list)), list);
    EXPECT_EQ(printed(entriesToPlay(files, list, list)), u"C:\\b.wav"_s);
    EXPECT_EQ(printed(entriesToPlay(files, u"C:\\x.mp3"_s, list)), u"C:\\x.mp3"_s);
}

TEST(EntriesToPlay, OfAListInTheOldCodePageAreDecoded)
{
    const test::MusicFolder music;
    PosixFiles files;
    const QString list = music.write(u"list.m3u"_s, "Stra\xDF"
                                                    "e.wav\r\n");
    EXPECT_EQ(printed(entriesToPlay(files, list)), music.path(u"Straße.wav"_s));
}

TEST(EntriesToPlay, OfAMissingListAreNone)
{
    PosixFiles files;
    EXPECT_TRUE(entriesToPlay(files, u"/nowhere/list.m3u"_s).isEmpty());
}

TEST(IsPlayable, IsARegularFileThatIsNoList)
{
    const test::MusicFolder music;
    const PosixFiles files;
    const QString sound = music.write(u"a.wav"_s, "x");
    const QString list = music.writeList({u"a.wav"_s});
    const QString folder = music.path(u"folder.mp3"_s);
    const QString pipe = music.path(u"pipe.mp3"_s);
    ASSERT_TRUE(QDir{}.mkdir(folder));
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);

    EXPECT_TRUE(isPlayable(files, {sound, sound}));
    EXPECT_FALSE(isPlayable(files, {list, list}));
    EXPECT_FALSE(isPlayable(files, {folder, folder}));
    EXPECT_FALSE(isPlayable(files, {pipe, pipe}));
    EXPECT_FALSE(isPlayable(files, {u"/nowhere.mp3"_s, u"/nowhere.mp3"_s}));
}

} // namespace

} // namespace orvantine
