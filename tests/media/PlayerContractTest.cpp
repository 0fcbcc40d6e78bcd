#include "media/PlayerContract.h"

#include <QDir>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

using test::PlayerContract;
using test::Which;

INSTANTIATE_TEST_SUITE_P(, PlayerContract, ::testing::Values(Which::Fake, Which::Real), test::nameOfPlayer);

TEST_P(PlayerContract, IsReadyAndEmptyAtFirst)
{
    EXPECT_EQ(shown(), "10  []");
    EXPECT_EQ(player().URL(), QString{});
    EXPECT_EQ(player().playlistCount(), 0);
    EXPECT_EQ(player().playlistSourceURL(0), QString{});
    EXPECT_EQ(player().playlistSourceURL(-1), QString{});
    EXPECT_EQ(player().currentDuration(), 0);
    EXPECT_EQ(player().currentItemInfo(u"Artist"_s), QString{});
}

TEST_P(PlayerContract, AListStartsAtOnceWithItsFirstTrack)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    const QString list = music.writeList({u"a.wav"_s, u"b.wav"_s});
    player().setURL(list);
    EXPECT_EQ(player().playState(), PlayState::Playing);
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(player().URL(), list);
}

TEST_P(PlayerContract, TheCurrentPlaylistShowsTheRowsTexts)
{
    const QString absolute = longSound(u"a.wav"_s);
    const QString list = music.writeList({absolute, u"b.wav"_s, u"sub/c.wav"_s, u"..\\d.wav"_s, u"C:\\e.wav"_s});
    player().setURL(list);
    ASSERT_EQ(player().playlistCount(), 5);
    EXPECT_EQ(player().playlistSourceURL(0), absolute);
    EXPECT_EQ(player().playlistSourceURL(1), music.path(u"b.wav"_s));
    EXPECT_EQ(player().playlistSourceURL(2), u"sub/c.wav"_s);
    EXPECT_EQ(player().playlistSourceURL(3), u"..\\d.wav"_s);
    EXPECT_EQ(player().playlistSourceURL(4), u"C:\\e.wav"_s);
    EXPECT_EQ(player().playlistSourceURL(5), QString{});
    EXPECT_EQ(player().currentSourceURL(), absolute);
}

TEST_P(PlayerContract, ATrackIsAListOfOne)
{
    const QString track = longSound(u"a.wav"_s);
    player().setURL(track);
    awaitPlaying();
    EXPECT_EQ(player().playlistCount(), 1);
    EXPECT_EQ(player().playlistSourceURL(0), track);
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
}

TEST_P(PlayerContract, AnEntryRelativeToTheListsFolderPlays)
{
    ASSERT_TRUE(QDir{}.mkdir(music.path(u"sub"_s)));
    longSound(u"sub/a.wav"_s);
    playList({u"sub\\a.wav"_s});
    EXPECT_EQ(player().currentSourceURL(), u"sub\\a.wav"_s);
    EXPECT_EQ(player().status(), u"Wiedergabe"_s);
}

TEST_P(PlayerContract, AListInTheOldCodePagePlays)
{
    longSound(u"Größe.wav"_s);
    player().setURL(music.write(u"list.m3u"_s, "Gr\xF6\xDF"
                                               "e.wav\r\n"));
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [Größe.wav]");
}

TEST_P(PlayerContract, AListOfTheHostPlays)
{
    longSound(u"a.wav"_s);
    player().setURL(music.write(u"list.m3u"_s, "a.wav\nb.wav\n"));
    awaitPlaying();
    EXPECT_EQ(player().playlistCount(), 2);
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
}

TEST_P(PlayerContract, AListIsHeardOnceSomethingOfItPlays)
{
    const auto heard = [this] { return player().heard(); };
    EXPECT_FALSE(heard());
    player().setURL(music.writeList({u"gone.wav"_s}));
    awaitEnd();
    EXPECT_FALSE(heard());
    player().setURL(music.path(u"gone.m3u"_s));
    awaitEnd();
    EXPECT_FALSE(heard());

    shortSound(u"a.wav"_s);
    player().setURL(music.writeList({u"gone.wav"_s, u"a.wav"_s, u"gone.wav"_s}));
    awaitEnd();
    EXPECT_TRUE(heard());
    player().stop();
    EXPECT_TRUE(heard());
    player().close();
    EXPECT_FALSE(heard());
}

TEST_P(PlayerContract, MediaChangeFiresTwiceATrack)
{
    shortSound(u"a.wav"_s);
    shortSound(u"b.wav"_s);
    shortSound(u"c.wav"_s);
    player().setURL(music.writeList({u"a.wav"_s, u"b.wav"_s, u"c.wav"_s}));
    awaitEnd();
    EXPECT_EQ(takeChanges(), "a.wav a.wav b.wav b.wav c.wav c.wav");
}

TEST_P(PlayerContract, DataIsUnknownAtTheFirstMediaChangeAndKnownAtTheSecond)
{
    QStringList seen;
    player().MediaChange = [&] {
        seen.append(u"%1 - %2 %3"_s.arg(player().currentItemInfo(u"Artist"_s), player().currentItemInfo(u"Title"_s))
                        .arg(player().currentDuration()));
    };
    know(u"Größe"_s, u"Das Lied"_s, 120);
    player().setURL(
        music.write(u"a.wav"_s, fake::wav({.milliseconds = 120'000, .artist = "Größe", .title = "Das Lied"})));
    awaitPlaying();
    EXPECT_EQ(seen.join(u'|').toStdString(), " -  0|Größe - Das Lied 120");
    EXPECT_EQ(player().currentItemInfo(u"ARTIST"_s), u"Größe"_s);
    EXPECT_EQ(player().currentItemInfo(u"Nothing"_s), QString{});
}

TEST_P(PlayerContract, OldTagsAreReadAsWindows1252)
{
    know(u"Größe"_s, u"Lied"_s, 120);
    player().setURL(music.write(u"a.wav"_s, fake::wav({.milliseconds = 120'000,
                                                       .artist = "Gr\xF6\xDF"
                                                                 "e",
                                                       .title = "Lied"})));
    awaitPlaying();
    EXPECT_EQ(player().currentItemInfo(u"Artist"_s).toStdString(), "Größe");
}

TEST_P(PlayerContract, AMissingItemOfTheDataIsEmpty)
{
    longSound(u"a.wav"_s);
    playList({u"a.wav"_s});
    EXPECT_EQ(player().currentItemInfo(u"Artist"_s), QString{});
    EXPECT_EQ(player().currentItemInfo(QString{}), QString{});
}

TEST_P(PlayerContract, PauseSaysAngehaltenAndPlayResumesTheSameTrack)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().pause();
    EXPECT_EQ(shown(), "2 Angehalten [a.wav]");
    player().pause();
    EXPECT_EQ(shown(), "2 Angehalten [a.wav]");
    player().play();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    player().play();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    test::serveEvents();
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, StopSaysBeendetAndGoesBackToTheFirstItem)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().next();
    player().stop();
    EXPECT_EQ(shown(), "1 Beendet [a.wav]");
    EXPECT_EQ(player().playlistCount(), 2);
    player().pause();
    EXPECT_EQ(shown(), "1 Beendet [a.wav]");
}

TEST_P(PlayerContract, PlayAfterStopStartsTheListAnew)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().next();
    awaitPlaying();
    player().stop();
    changes.clear();
    player().play();
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(takeChanges(), "a.wav a.wav");
}

TEST_P(PlayerContract, StopWhilePausedSaysBeendet)
{
    longSound(u"a.wav"_s);
    playList({u"a.wav"_s});
    player().pause();
    player().stop();
    EXPECT_EQ(shown(), "1 Beendet [a.wav]");
    player().play();
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
}

TEST_P(PlayerContract, TheEndOfAListSaysBeendetAndStaysAtTheLastItem)
{
    shortSound(u"a.wav"_s);
    shortSound(u"b.wav"_s);
    player().setURL(music.writeList({u"a.wav"_s, u"b.wav"_s}));
    awaitEnd();
    EXPECT_EQ(shown(), "1 Beendet [b.wav]");
    EXPECT_EQ(player().playlistCount(), 2);
}

TEST_P(PlayerContract, TheEndOfAListIsItsLastItemThoughThatIsMissing)
{
    shortSound(u"a.wav"_s);
    player().setURL(music.writeList({u"a.wav"_s, u"gone.wav"_s}));
    awaitEnd();
    EXPECT_EQ(shown(), "1 Beendet [gone.wav]");
    EXPECT_EQ(takeChanges(), "a.wav a.wav");
}

TEST_P(PlayerContract, PlayAfterTheEndStartsTheListAnew)
{
    const QString list = music.writeList({u"a.wav"_s, u"b.wav"_s});
    shortSound(u"a.wav"_s);
    shortSound(u"b.wav"_s);
    player().setURL(list);
    awaitEnd();
    longSound(u"a.wav"_s);
    player().play();
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
}

TEST_P(PlayerContract, CloseForgetsTheList)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().close();
    EXPECT_EQ(shown(), "10  []");
    EXPECT_EQ(player().URL(), QString{});
    EXPECT_EQ(player().playlistCount(), 0);
    EXPECT_EQ(player().currentDuration(), 0);
    for (const auto action : {&MediaPlayer::play, &MediaPlayer::pause, &MediaPlayer::stop, &MediaPlayer::next,
                              &MediaPlayer::previous, &MediaPlayer::fastForward, &MediaPlayer::close}) {
        (player().*action)();
        EXPECT_EQ(shown(), "10  []");
    }
    test::serveEvents();
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, CloseInTheHandlerOfMediaChangeIsKept)
{
    longSound(u"a.wav"_s);
    player().MediaChange = [&] {
        changes.append(player().currentSourceURL());
        player().close();
    };
    player().setURL(music.writeList({u"a.wav"_s}));
    EXPECT_TRUE(test::waitUntil([this] { return !changes.isEmpty(); }));
    test::serveEvents();
    EXPECT_EQ(shown(), "10  []");
    EXPECT_EQ(takeChanges(), "a.wav");
}

TEST_P(PlayerContract, AnEmptyURLCloses)
{
    longSound(u"a.wav"_s);
    playList({u"a.wav"_s});
    player().setURL({});
    EXPECT_EQ(shown(), "10  []");
}

TEST_P(PlayerContract, AnotherURLReplacesTheList)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    player().setURL(music.writeList({u"a.wav"_s}));
    player().setURL(music.writeList({u"b.wav"_s}, u"other.m3u"_s));
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [b.wav]");
    EXPECT_EQ(player().playlistCount(), 1);
    changes.removeAll(music.path(u"a.wav"_s));
    EXPECT_EQ(takeChanges(), "b.wav b.wav");
}

TEST_P(PlayerContract, NextGoesToTheNextTrack)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().next();
    EXPECT_EQ(player().currentSourceURL(), music.path(u"b.wav"_s));
    EXPECT_EQ(player().playState(), PlayState::Playing);
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [b.wav]");
    EXPECT_EQ(takeChanges(), "b.wav b.wav");
}

TEST_P(PlayerContract, NextAtTheLastTrackDoesNothing)
{
    longSound(u"a.wav"_s);
    playList({u"a.wav"_s});
    player().next();
    test::serveEvents();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, NextDoesNothingWhenOnlyMissingTracksFollow)
{
    longSound(u"a.wav"_s);
    playList({u"a.wav"_s, u"gone1.wav"_s, u"gone2.wav"_s});
    player().next();
    test::serveEvents();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, NextAndPreviousPassOverMissingTracks)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"gone1.wav"_s, u"gone2.wav"_s, u"b.wav"_s});
    player().next();
    EXPECT_EQ(player().currentSourceURL(), music.path(u"b.wav"_s));
    player().previous();
    EXPECT_EQ(player().currentSourceURL(), music.path(u"a.wav"_s));
}

TEST_P(PlayerContract, PreviousAtTheFirstTrackStartsItAnew)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().previous();
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(takeChanges(), "a.wav a.wav");
}

TEST_P(PlayerContract, NextAndPreviousPlayThoughThePlayerIsPaused)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    playList({u"a.wav"_s, u"b.wav"_s});
    player().pause();
    player().next();
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [b.wav]");
    player().pause();
    player().previous();
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
}

TEST_P(PlayerContract, SeekingKeepsTheTrack)
{
    longSound(u"a.wav"_s);
    know({}, {}, 120);
    playList({u"a.wav"_s});
    player().fastForward();
    player().fastReverse();
    test::serveEvents();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    player().stop();
    player().fastForward();
    player().fastReverse();
    EXPECT_EQ(shown(), "1 Beendet [a.wav]");
}

TEST_P(PlayerContract, AListOfAnyEndingIsWalkedInto)
{
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    for (const QString& name : {u"liste.lst"_s, u"liste"_s, u"liste.mp3"_s}) {
        SCOPED_TRACE(name.toStdString());
        const QString list = music.writeList({u"a.wav"_s, u"b.wav"_s}, name);
        player().newPlaylist(list, u"Name"_s);
        player().close();
        player().setURL(list);
        awaitPlaying();
        EXPECT_EQ(player().playlistCount(), 2);
        EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");

        const QString track = music.path(u"b.wav"_s);
        player().newMedia(track);
        player().setURL(track);
        EXPECT_EQ(player().playlistCount(), 1);
        player().setURL(list);
        EXPECT_EQ(player().playlistCount(), 1);
    }
}

TEST_P(PlayerContract, NewPlaylistAndNewMediaDoNotChangeWhatPlays)
{
    longSound(u"a.wav"_s);
    const QString other = longSound(u"b.wav"_s);
    player().newMedia(other);
    player().newPlaylist(music.writeList({u"b.wav"_s}, u"other.m3u"_s), u"Name"_s);
    EXPECT_EQ(shown(), "10  []");
    playList({u"a.wav"_s});
    player().newMedia(other);
    player().newPlaylist(music.path(u"other.m3u"_s), u"Name"_s);
    test::serveEvents();
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
}

TEST_P(PlayerContract, AMissingListIsOver)
{
    player().setURL(u"/nowhere/list.m3u"_s);
    EXPECT_EQ(shown(), "1 Beendet []");
    EXPECT_EQ(player().playlistCount(), 0);
    player().play();
    player().next();
    player().previous();
    player().stop();
    test::serveEvents();
    EXPECT_EQ(shown(), "1 Beendet []");
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, AMissingTrackIsOver)
{
    player().setURL(music.path(u"gone.wav"_s));
    EXPECT_EQ(shown(), "1 Beendet [gone.wav]");
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, AListOfMissingTracksIsOverAfterOneRound)
{
    player().setURL(music.writeList({u"gone1.wav"_s, u"gone2.wav"_s, u"gone3.wav"_s}));
    test::serveEvents();
    EXPECT_EQ(shown(), "1 Beendet [gone3.wav]");
    EXPECT_EQ(files.lookUps, 3);
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PlayerContract, MissingTracksStayInTheListAndArePassedOver)
{
    longSound(u"a.wav"_s);
    playList({u"gone1.wav"_s, u"gone2.wav"_s, u"a.wav"_s});
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(player().playlistCount(), 3);
}

TEST_P(PlayerContract, FoldersPipesAndListsInsideAListArePassedOver)
{
    ASSERT_TRUE(QDir{}.mkdir(music.path(u"folder.mp3"_s)));
    ASSERT_EQ(::mkfifo(music.path(u"pipe.mp3"_s).toUtf8().constData(), 0600), 0);
    longSound(u"inner.wav"_s);
    music.writeList({u"inner.wav"_s}, u"inner.m3u"_s);
    longSound(u"a.wav"_s);
    playList({u"folder.mp3"_s, u"pipe.mp3"_s, u"inner.m3u"_s, u"a.wav"_s});
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(player().playlistCount(), 4);
}

} // namespace

} // namespace orvantine
