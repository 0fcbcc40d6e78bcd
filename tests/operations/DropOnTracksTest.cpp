
#include "operations/ListDropsFixture.h"

#include "app/IniFiles.h"
#include "playback/Timer2.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(ListDrops, DroppedTracksAreAddedWrittenAndStored)
{
    startPlayback();
    put(u"/m/neu.WMA"_s, "");
    put(u"/m/neu.Wav"_s, "");
    tracks().Drop({putTrack(u"neu"_s), u"/m/neu.WMA"_s, u"/m/neu.Wav"_s});
    EXPECT_EQ("/m/neu.mp3 /m/neu.WMA /m/neu.Wav", added());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/neu.mp3\r\n/m/neu.WMA\r\n/m/neu.Wav\r\n", file());
    EXPECT_EQ("5", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1d"_s).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
    EXPECT_EQ("", boxes());
}

TEST_F(ListDrops, OneWrongFileIsToldOnceAndEndsTheDrop)
{
    startPlayback();
    desktop.messages.answer(Answer::Ok, u" Audiodateien hinzufügen"_s,
                            u"Es können nur Mp3-Audiodateien in die Trackliste hinzugefügt werden. "_s);
    tracks().Drop({putTrack(u"neu"_s), u"/m/bild.jpg"_s, u"/m/text.txt"_s});
    EXPECT_EQ("", added());
    EXPECT_NE(std::string::npos, boxes().find("icon critical buttons ok"));
    desktop.messages.answer(Answer::Ok);
    putFolder(u"/m/Album.mp3"_s);
    tracks().Drop({u"/m/Album.mp3"_s});
    EXPECT_EQ("", added()) << "a folder is no track, whatever its name";
}

TEST_F(ListDrops, TheOptionAsksBeforeTracksAreAdded)
{
    startPlayback();
    setting(u"ShowDialog"_s, dwordSetting(1));
    const QString track = putTrack(u"neu"_s);
    const QString text = u"Möchten Sie zur Trackliste ''Erste'' wirklich Audiodateien hinzufügen ? "_s;
    desktop.messages.answer(Answer::No, u" Audiodateien hinzufügen"_s, text);
    tracks().Drop({track});
    EXPECT_EQ("", added());
    EXPECT_NE(std::string::npos, boxes().find("icon exclamation buttons yes-no"));
    desktop.messages.answer(Answer::Yes, u" Audiodateien hinzufügen"_s, text);
    tracks().Drop({track});
    EXPECT_EQ("/m/neu.mp3", added());
}

TEST_F(ListDrops, AWrongFileIsToldBeforeTheOptionAsks)
{
    startPlayback();
    setting(u"ShowDialog"_s, dwordSetting(1));
    desktop.messages.answer(Answer::Ok, u" Audiodateien hinzufügen"_s,
                            u"Es können nur Mp3-Audiodateien in die Trackliste hinzugefügt werden. "_s);
    tracks().Drop({u"/m/bild.jpg"_s});
}

TEST_F(ListDrops, TheOptionAsksOnceAndOnlyWhereItIsSet)
{
    startPlayback();
    setting(u"ShowDialog"_s, dwordSetting(0));
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("/m/neu.mp3", added()) << "without a question";
    setting(u"ShowDialog"_s, dwordSetting(1));
    desktop.messages.answer(Answer::Yes, u" Audiodateien hinzufügen"_s,
                            u"Möchten Sie zur Trackliste ''Erste'' wirklich Audiodateien hinzufügen ? "_s);
    tracks().Drop({putTrack(u"a"_s), putTrack(u"b"_s), putTrack(u"c"_s)});
    EXPECT_EQ("/m/neu.mp3 /m/a.mp3 /m/b.mp3 /m/c.mp3", added());
}

TEST_F(ListDrops, TheOptionAsksBeforeTheDoublesDo)
{
    startPlayback();
    setting(u"ShowDialog"_s, dwordSetting(1));
    desktop.messages.answer(Answer::Yes, u" Audiodateien hinzufügen"_s,
                            u"Möchten Sie zur Trackliste ''Erste'' wirklich Audiodateien hinzufügen ? "_s);
    answerTwice(Answer::No, u"Erste 1.mp3"_s);
    tracks().Drop({u"/m/Erste 1.mp3"_s});
    EXPECT_EQ("", added());
}

TEST_F(ListDrops, TheButtonsAreDisabledWhileTracksAreAdded)
{
    startPlayback();
    bool disabled = false;
    desktop.messages.script(
        {.answer = Answer::No, .entered = {}, .title = u" Audiodateien hinzufügen"_s, .text = {}, .meanwhile = [&] {
             disabled = root().buttonsDisabled;
         }});
    tracks().Drop({u"/m/Erste 1.mp3"_s});
    EXPECT_TRUE(disabled);
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, BehindAMissingListThatWasCancelledADropGoesToTheListInSight)
{
    startPlayback();
    desktop.disk().remove(listPath(u"Dritte"_s));
    desktop.messages.answer(Answer::Cancel);
    click(3);
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("/m/neu.mp3", added());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/neu.mp3\r\n", file());
    EXPECT_EQ("(missing)", file(u"Dritte"_s));
    EXPECT_EQ("3", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("2", catalogue().subItem(3, 3).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, ADropGoesToTheListInSightWhicheverRowIsSelected)
{
    startPlayback();
    catalogue().select(2);
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("/m/neu.mp3", added());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/neu.mp3\r\n", file());
    EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3\r\n\r\n", file(u"Zweite"_s));
    EXPECT_EQ("3", catalogue().subItem(1, 3).toStdString());
}

TEST_F(ListDrops, ANameWithALineEndIsNoTrackAndNoList)
{
    startPlayback();
    desktop.messages.answer(Answer::Ok, u" Audiodateien hinzufügen"_s,
                            u"Es können nur Mp3-Audiodateien in die Trackliste hinzugefügt werden. "_s);
    tracks().Drop({u"/m/a\n/m/Zweite 1.mp3"_s});
    EXPECT_EQ("", added());
    answerOther(Answer::No);
    catalogue().Drop({u"/l/a\rb.m3u"_s});
    EXPECT_EQ(4, catalogue().count());
}

TEST_F(ListDrops, NoToATrackThatStandsInTheListEndsTheAdding)
{
    startPlayback();
    answerTwice(Answer::No, u"Erste 2.mp3"_s);
    tracks().Drop({putTrack(u"neu"_s), u"/m/Erste 2.mp3"_s, putTrack(u"spaeter"_s)});
    EXPECT_EQ("/m/neu.mp3", added());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/neu.mp3\r\n", file()) << "what was added is saved";
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, TheQuestionForDoublesHasNoIcon)
{
    startPlayback();
    answerTwice(Answer::No, u"Erste 2.mp3"_s);
    tracks().Drop({u"/m/Erste 2.mp3"_s});
    EXPECT_NE(std::string::npos, boxes().find("icon none buttons yes-no answer no"));
}

TEST_F(ListDrops, TracksThatAreDroppedOnASortedListFallIntoTheirSortedPlaces)
{
    startPlayback();
    tracks().ColumnClick(3);
    ASSERT_TRUE(tracks().sorted());
    tracks().Drop({putTrack(u"Zuletzt"_s), putTrack(u"Alles"_s), putTrack(u"erste 1a"_s)});
    EXPECT_EQ("/m/Alles.mp3\r\n/m/Erste 1.mp3\r\n/m/erste 1a.mp3\r\n/m/Erste 2.mp3\r\n/m/Zuletzt.mp3\r\n", file());
    EXPECT_EQ("Alles", tracks().subItem(1, 2).toStdString());
    EXPECT_EQ("04", tracks().subItem(1, 1).toStdString()) << "it keeps the number that it was added with";
    EXPECT_TRUE(tracks().sorted());
}

TEST_F(ListDrops, AReloadEndsTheSortingAndWhatIsDroppedThenStandsLast)
{
    startPlayback();
    tracks().ColumnClick(3);
    catalogue().Tag = u"0"_s;
    click(1);
    EXPECT_FALSE(tracks().sorted());
    tracks().Drop({putTrack(u"Alles"_s)});
    EXPECT_EQ("/m/Alles.mp3", added());
}

TEST_F(ListDrops, YesAddsAllDoublesWithoutAskingAgain)
{
    startPlayback();
    answerTwice(Answer::Yes, u"erste 1.MP3"_s);
    tracks().Drop({u"/m/erste 1.MP3"_s, putTrack(u"neu"_s), u"/m/Erste 2.mp3"_s, u"/m/neu.mp3"_s});
    EXPECT_EQ("/m/erste 1.MP3 /m/neu.mp3 /m/Erste 2.mp3 /m/neu.mp3", added());
}

TEST_F(ListDrops, ATrackThatIsDroppedTwiceIsADouble)
{
    startPlayback();
    answerTwice(Answer::No, u"neu.mp3"_s);
    const QString track = putTrack(u"neu"_s);
    tracks().Drop({track, track});
    EXPECT_EQ("/m/neu.mp3", added());
}

TEST_F(ListDrops, AListDroppedOnAnEmptyCatalogueIsStoredAtOnce)
{
    start();
    Timer2_Tick(root());
    ASSERT_FALSE(root().mnuSpeichern.Enabled.value());
    put(u"/m/Sommer.m3u"_s, (putTrack(u"neu"_s) + u"\r\n\r\n"_s).toUtf8());
    catalogue().Drop({u"/m/Sommer.m3u"_s});
    EXPECT_EQ("Sommer", root().services.profiles.value(database(), u"Index"_s, u"1b"_s).toStdString());
    EXPECT_EQ("/m/Sommer.m3u", root().services.profiles.value(database(), u"Index"_s, u"1c"_s).toStdString());
}

TEST_F(ListDrops, AnEmptyCatalogueOffersANewPlaylist)
{
    start();
    const QString track = putTrack(u"neu"_s);
    const QString text = u"Im Orvanten-Manager sind keine Playlisten vorhanden. \nMöchten Sie eine neue "
                         u"Wiedergabeliste hinzufügen ?"_s;
    desktop.messages.answer(Answer::No, u" Keine Wiedergabeliste"_s, text);
    tracks().Drop({track});
    EXPECT_EQ(0, tracks().count());
    EXPECT_NE(std::string::npos, boxes().find("icon exclamation buttons yes-no answer no"));
    desktop.messages.answer(Answer::Yes, u" Keine Wiedergabeliste"_s, text);
    desktop.messages.enter(u"Neue"_s);
    tracks().Drop({track});
    EXPECT_EQ("*Neue", names());
    EXPECT_EQ("/m/neu.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("/m/neu.mp3\r\n", file(u"Neue"_s));
}

TEST_F(ListDrops, ANewPlaylistThatIsNotNamedTakesNoTracks)
{
    start();
    desktop.messages.answer(Answer::Yes);
    desktop.messages.enter({});
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ(0, tracks().count());
}

TEST_F(ListDrops, AVanishedTrackIsARedRow)
{
    startPlayback();
    tracks().Drop({u"/m/weg.mp3"_s});
    EXPECT_EQ("/m/weg.mp3", added());
    EXPECT_EQ(Color::DarkRed, tracks().color(3, 3));
}

TEST_F(ListDrops, TracksThatAreDroppedWhileAnotherCommandAsksAreLeft)
{
    startPlayback();
    const QString track = putTrack(u"neu"_s);
    desktop.messages.script({.answer = Answer::No, .entered = {}, .title = {}, .text = {}, .meanwhile = [&] {
                                 tracks().Drop({track});
                                 catalogue().Drop({listPath(u"Zweite"_s)});
                             }});
    root().mnuSortierung[1].Click();
    EXPECT_EQ("", added());
    EXPECT_EQ(4, catalogue().count());
}

TEST_F(ListDrops, FiftyThousandTracksAreTaken)
{
    startPlayback();
    QStringList many;
    for (int i = 0; i < 50'000; ++i)
        many += u"/m/n%1.mp3"_s.arg(i);
    tracks().Drop(many);
    EXPECT_EQ(50'002, tracks().count());
}

TEST_F(ListDrops, AnEmptyDropIsNone)
{
    startPlayback();
    forgetCalls();
    tracks().Drop({});
    catalogue().Drop({});
    EXPECT_EQ("", actions());
}

TEST_F(ListDrops, WhatWasAddedBeforeTheQuestionForDoublesIsSavedWhereAnotherListIsOpenedMeanwhile)
{
    startPlayback();
    const QString track = putTrack(u"neu"_s);
    desktop.messages.script(
        {.answer = Answer::Yes, .entered = {}, .title = u" Audiodateien hinzufügen"_s, .text = {}, .meanwhile = [&] {
             EXPECT_TRUE(root().buttonsDisabled);
             click(2);
         }});
    tracks().Drop({track, u"/m/Erste 1.mp3"_s});
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/neu.mp3\r\n", file());
    EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3\r\n\r\n", file(u"Zweite"_s));
    EXPECT_EQ(2, tracks().count());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, TheListIsWrittenBeforeTheDatabase)
{
    startPlayback();
    const QString track = putTrack(u"neu"_s);
    forgetCalls();
    tracks().Drop({track});
    const std::string order = actions();
    const std::size_t list = order.find("Erste.m3u");
    ASSERT_NE(std::string::npos, list) << order;
    EXPECT_LT(list, order.find("1d")) << order;
}

TEST_F(ListDrops, AnUmlautThatIsComposedOtherwiseIsNoOtherTrack)
{
    startPlayback();
    const QString composed = u"/m/M\u00fcller.mp3"_s;
    put(composed, "x");
    tracks().Drop({composed});
    answerTwice(Answer::No, u"Mu\u0308ller.mp3"_s);
    tracks().Drop({u"/m/Mu\u0308ller.mp3"_s});
    EXPECT_EQ(composed.toStdString(), added());
}

TEST_F(ListDrops, WhatIsDroppedInsideTheWaitOfAMoveInTheCatalogueIsLeft)
{
    startPlayback();
    click(2);
    const QString track = putTrack(u"neu"_s);
    put(u"/musik/Mein Album/b.mp3"_s, "x");
    bool dropped = false;
    desktop.events().after(std::chrono::milliseconds{500}, [&] {
        dropped = true;
        catalogue().Drop({u"/musik/Mein Album"_s});
        tracks().Drop({track});
    });
    root().mnuVerschiebung[1].Click();
    EXPECT_TRUE(dropped);
    EXPECT_EQ("*Zweite Erste Dritte Einzeln", names());
    EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3", bytes(listPath(u"Zweite"_s)).trimmed().toStdString());
}

TEST_F(ListDrops, TheTracksOfAListThatWasOutOfSightAreShownWithTheDrop)
{
    startPlayback();
    put(listPath(u"Zweite"_s), "");
    click(2);
    ASSERT_FALSE(tracks().Visible.value());
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("/m/neu.mp3\r\n", file(u"Zweite"_s));
    EXPECT_TRUE(tracks().Visible.value());
}

} // namespace orvantine::fake
