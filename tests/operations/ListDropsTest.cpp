#include "operations/ListDrops.h"

#include "playback/PlaybackWorld.h"

#include "app/IniFiles.h"
#include "catalogue/CatalogueDatabase.h"
#include "playback/Sequencing.h"
#include "search/Dialogsuche.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The list "Erste" with two tracks is open.
class ListDrops : public PlaybackWorld
{
protected:
    [[nodiscard]] std::string added()
    {
        QStringList paths;
        for (int row = 3; row <= tracks().count(); ++row)
            paths += tracks().subItem(row, 3);
        return paths.join(u' ').toStdString();
    }
    [[nodiscard]] std::string file(const QString& list = u"Erste"_s) { return bytes(listPath(list)).toStdString(); }
    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= catalogue().count(); ++row)
            texts += (row == catalogue().selectedRow() ? u"*"_s : QString()) + catalogue().subItem(row, 1);
        return texts.join(u' ').toStdString();
    }
    void answerTwice(Answer answer, const QString& name)
    {
        desktop.messages.answer(answer, u" Audiodateien hinzufügen"_s,
                                u"Die Sounddatei ''"_s + name +
                                    u"'' ist bereits vor\nMöchten Sie fortfahren und die doppelten Dateien trotzdem "
                                    u"hinzufügen ?"_s);
    }
    void answerFailure()
    {
        desktop.messages.answer(Answer::Ok, u" Playliste hinzufügen"_s,
                                u"Beim Hinzufügen der Wiedergabeliste sind Fehler aufgetreten. \nDie Sounddateien "
                                u"konnte nicht zur Datenbank hinzugefügt werden.  "_s);
    }
    void answerOther(Answer answer)
    {
        desktop.messages.answer(
            answer, u" Tracklisten hinzufügen"_s,
            u"Es können nur M3u-Tracklisten oder Mp3-Dateiordner hinzugefügt werden. \n\nErstellen Sie eine neue "
            u"Playliste im Menü ''Hinzufügen'' und fügen dann \ndie Mp3-Dateien in die rechte Spalte ''Einträge in "
            u"der Playliste'' hinzu.\nMöchten Sie jetzt eine neue Playliste erstellen ?"_s);
    }
};

} // namespace

// On the tracks

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

TEST_F(ListDrops, TracksAreNotAddedToThoseOfAnotherList)
{
    startPlayback();
    desktop.disk().remove(listPath(u"Dritte"_s));
    // The drop asks again: the list may have come back.
    for (int i = 0; i < 2; ++i)
        desktop.messages.answer(Answer::Cancel);
    click(3);
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("", added()) << "the tracks of the first list are in sight";
    EXPECT_EQ("2", catalogue().subItem(3, 3).toStdString());
    EXPECT_EQ("2", IniFiles::ReadValue(root(), database(), u"Index"_s, u"3d"_s).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, ASelectedListThatIsNotInSightIsOpenedForTheDrop)
{
    startPlayback();
    catalogue().select(2);
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("/m/neu.mp3", added());
    EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3\r\n/m/neu.mp3\r\n", file(u"Zweite"_s));
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n\r\n", file());
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

// On the catalogue

TEST_F(ListDrops, ADroppedPlaylistIsTakenOpenedAndStored)
{
    startPlayback();
    const QString path = u"/l/Sommer.M3U"_s;
    put(path, "/m/Erste 1.mp3\r\n/m/Zweite 1.mp3\r\n");
    catalogue().Drop({path});
    EXPECT_EQ("Erste Zweite Dritte Einzeln *Sommer", names());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("2", catalogue().subItem(5, 3).toStdString());
    EXPECT_EQ("Sommer", IniFiles::ReadValue(root(), database(), u"Index"_s, u"5b"_s).toStdString());
    EXPECT_EQ(path.toStdString(), IniFiles::ReadValue(root(), database(), u"Index"_s, u"5c"_s).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, ADroppedFolderBecomesAListOfItsAudioFilesWithItsCover)
{
    startPlayback();
    for (const QString& name : {u"b.mp3"_s, u"A.wma"_s, u"c.WAV"_s, u"bild.jpg"_s, u"text.txt"_s})
        put(u"/musik/Mein Album/"_s + name, "x");
    catalogue().Drop({u"/musik/Mein Album"_s});
    EXPECT_EQ("Erste Zweite Dritte Einzeln *Mein Album", names());
    EXPECT_EQ("/musik/Mein Album/A.wma\r\n/musik/Mein Album/b.mp3\r\n/musik/Mein Album/c.WAV\r\n",
              file(u"Mein Album"_s));
    EXPECT_EQ("3", IniFiles::ReadValue(root(), database(), u"Index"_s, u"5d"_s).toStdString());
    EXPECT_EQ("x", bytes(data() + u"Resource/Mein Album.jpg"_s).toStdString());
}

TEST_F(ListDrops, ANewEntryEndsTheSearchDisplay)
{
    startPlayback();
    put(u"/l/Sommer.m3u"_s, "/m/Erste 1.mp3\r\n");
    put(u"/musik/Mein Album/b.mp3"_s, "x");
    for (const QString& item : {u"/l/Sommer.m3u"_s, u"/musik/Mein Album"_s}) {
        Dialogsuche(root(), true);
        catalogue().Drop({item});
        EXPECT_FALSE(root().pAnimations.Visible.value()) << item.toStdString();
        EXPECT_EQ("Beschreibung der Playliste", root().tBeschreibung.Caption.value().toStdString());
    }
}

TEST_F(ListDrops, ADroppedListLooksForNoCover)
{
    startPlayback();
    put(u"/l/bild.jpg"_s, "x");
    put(u"/l/Sommer.m3u"_s, "/m/Erste 1.mp3\r\n");
    catalogue().Drop({u"/l/Sommer.m3u"_s});
    EXPECT_EQ("(missing)", bytes(data() + u"Resource/Sommer.jpg"_s).toStdString());
}

TEST_F(ListDrops, AFolderOfTheNameOfAnotherListKeepsThatListsTracks)
{
    startPlayback();
    put(u"/musik/Zweite/neu.mp3"_s, "x");
    setting(u"CheckEntrys"_s, dwordSetting(1));
    desktop.messages.answer(Answer::Yes);
    catalogue().Drop({u"/musik/Zweite"_s});
    EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3\r\n/musik/Zweite/neu.mp3\r\n", file(u"Zweite"_s));
}

TEST_F(ListDrops, AListThatTheUserDoesNotWantTwiceIsToldAsAFailure)
{
    startPlayback();
    setting(u"CheckEntrys"_s, dwordSetting(1));
    desktop.messages.answer(Answer::No, u" Playliste hinzufügen"_s,
                            u"Diese Wiedergabeliste ist schon im Datenbestand vorhanden.\nÜberprüfen Sie bitte, ob es "
                            u"sich nur um den gleichen Namen handelt.   \n \nMöchten Sie diese Playliste trotzdem "
                            u"erneut hinzufügen ?"_s);
    answerFailure();
    put(u"/l/Neu.m3u"_s, "/m/Erste 1.mp3\r\n");
    catalogue().Drop({listPath(u"Zweite"_s), u"/l/Neu.m3u"_s});
    EXPECT_EQ("Erste Zweite Dritte Einzeln *Neu", names()) << "the next one is taken";
}

TEST_F(ListDrops, AFolderWhoseNameNoListCanHaveIsAFailure)
{
    startPlayback();
    for (const QString& folder : {u"C:"_s, u"/"_s}) {
        answerFailure();
        catalogue().Drop({folder});
        EXPECT_EQ("*Erste Zweite Dritte Einzeln", names()) << folder.toStdString();
    }
}

TEST_F(ListDrops, TheButtonsAreDisabledWhileAListIsTaken)
{
    startPlayback();
    setting(u"CheckEntrys"_s, dwordSetting(1));
    bool disabled = false;
    desktop.messages.script(
        {.answer = Answer::No, .entered = {}, .title = u" Playliste hinzufügen"_s, .text = {}, .meanwhile = [&] {
             disabled = root().buttonsDisabled;
         }});
    answerFailure();
    catalogue().Drop({listPath(u"Zweite"_s)});
    EXPECT_TRUE(disabled);
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, AVanishedPlaylistIsAFailureAndNoFileIsMade)
{
    startPlayback();
    answerFailure();
    catalogue().Drop({u"/l/weg.m3u"_s});
    EXPECT_NE(std::string::npos, boxes().find("icon none buttons ok answer ok"));
    EXPECT_EQ("*Erste Zweite Dritte Einzeln", names());
    EXPECT_EQ("(missing)", bytes(u"/l/weg.m3u"_s).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(ListDrops, OnlyM3uListsAreTakenAndTheEndingNeedsNoPoint)
{
    startPlayback();
    for (const QString& path : {u"/l/Sommer.pls"_s, u"/l/Sommer.nml"_s}) {
        put(path, "/m/Erste 1.mp3\r\n");
        answerOther(Answer::No);
        catalogue().Drop({path});
        EXPECT_EQ(4, catalogue().count()) << path.toStdString();
    }
    put(u"/l/Winterxm3u"_s, "/m/Erste 1.mp3\r\n");
    catalogue().Drop({u"/l/Winterxm3u"_s});
    EXPECT_EQ("Erste Zweite Dritte Einzeln *Winter", names());
}

TEST_F(ListDrops, AFolderUnderAPathWithALineEndIsAFailure)
{
    startPlayback();
    for (const QString& folder : {u"/mu\rsik/Album"_s, u"/mu\nsik/Album"_s, u"/musik/Al\nbum"_s}) {
        desktop.memory()->put(folder + u"/a.mp3"_s, "x");
        answerFailure();
        catalogue().Drop({folder});
        EXPECT_EQ("*Erste Zweite Dritte Einzeln", names()) << folder.toStdString();
    }
}

TEST_F(ListDrops, AFileOfADroppedFolderWhoseNameHasALineEndIsLeftOut)
{
    startPlayback();
    put(u"/musik/Album/a.mp3"_s, "x");
    desktop.memory()->put(u"/musik/Album/b\rc.mp3"_s, "x");
    desktop.memory()->put(u"/musik/Album/b\nc.mp3"_s, "x");
    catalogue().Drop({u"/musik/Album"_s});
    EXPECT_EQ("/musik/Album/a.mp3\r\n", file(u"Album"_s));
    EXPECT_EQ(1, tracks().count());
}

TEST_F(ListDrops, UnderTheFilterOfFavouritesNoListIsTakenAndTheFailureToldOnce)
{
    startPlayback();
    put(u"/musik/Album/a.mp3"_s, "x");
    put(u"/l/Sommer.m3u"_s, "/m/Erste 1.mp3\r\n");
    root().mnuFavoritenShow.Click();
    ASSERT_EQ("1", root().mnuFavoritenShow.Tag.toStdString());
    const std::string before = names();
    for (const QStringList& items :
         {QStringList{u"/musik/Album"_s, u"/l/Sommer.m3u"_s}, QStringList{u"/l/Sommer.m3u"_s}}) {
        answerFailure();
        catalogue().Drop(items);
        EXPECT_EQ(before, names());
    }
    EXPECT_EQ("(missing)", file(u"Album"_s));
}

TEST_F(ListDrops, TheFolderOfAListThatStandsAlreadyAddsOnlyWhatItDoesNotHold)
{
    startPlayback();
    put(u"/musik/Album/a.mp3"_s, "x");
    put(u"/musik/Album/b.mp3"_s, "x");
    catalogue().Drop({u"/musik/Album"_s});
    put(u"/musik/Album/c.mp3"_s, "x");
    setting(u"CheckEntrys"_s, dwordSetting(1));
    desktop.messages.answer(Answer::Yes);
    catalogue().Drop({u"/musik/Album"_s});
    EXPECT_EQ("/musik/Album/a.mp3\r\n/musik/Album/b.mp3\r\n/musik/Album/c.mp3\r\n", file(u"Album"_s));
    EXPECT_EQ("Erste Zweite Dritte Einzeln Album *Album", names());
}

TEST_F(ListDrops, TheTracksOfADroppedFolderAreShownBehindAListWithoutAny)
{
    startPlayback();
    put(listPath(u"Zweite"_s), "");
    click(2);
    ASSERT_FALSE(tracks().Visible.value());
    put(u"/musik/Album/a.mp3"_s, "x");
    catalogue().Drop({u"/musik/Album"_s});
    EXPECT_EQ(1, tracks().count());
    EXPECT_TRUE(tracks().Visible.value());
}

TEST_F(ListDrops, AListThatTheSequenceOpensBeforeTheTracksOfTheFolderAreAddedGetsNone)
{
    startPlayback();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    put(u"/musik/Album/a.mp3"_s, "x");
    for (const int moment : {1, 2, 3}) {
        run(1000);
        desktop.disk().remove(listPath(u"Album"_s));
        desktop.events().atYield(moment, [&] { click(2); });
        catalogue().Drop({u"/musik/Album"_s});
        EXPECT_EQ("/musik/Album/a.mp3\r\n", file(u"Album"_s)) << moment;
        EXPECT_EQ(1, tracks().count()) << moment;
        EXPECT_EQ("1", catalogue().subItem(catalogue().count(), 3).toStdString()) << moment;
    }
    EXPECT_EQ("Erste Zweite Dritte Einzeln Album Album *Album", names());
}

TEST_F(ListDrops, WhateverTheSequenceOpensInsideADropTheListsKeepTheirOwnTracksAndCovers)
{
    startPlayback();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    put(u"/musik/Album/a.mp3"_s, "x");
    put(u"/musik/Album/bild.jpg"_s, "neu");
    put(data() + u"Resource/Zweite.jpg"_s, "alt");
    // A click in each of the moments at which the drop serves events.
    constexpr int Most = 60;
    for (int moment = 1; moment <= Most; ++moment) {
        desktop.disk().remove(listPath(u"Album"_s));
        desktop.disk().remove(data() + u"Resource/Album.jpg"_s);
        while (catalogue().count() > 4)
            catalogue().remove(5);
        catalogue().Tag = u"0"_s;
        click(1);
        desktop.messages.take();

        bool clicked = false;
        run(1000);
        desktop.events().atYield(moment, [&] {
            clicked = true;
            click(2);
        });
        // Where the tracks could not be saved the failure is told.
        desktop.messages.answer(Answer::Ok);
        catalogue().Drop({u"/musik/Album"_s});
        const bool failed = boxes().find("Fehler aufgetreten") != std::string::npos;
        desktop.messages.queue.clear();

        EXPECT_EQ("alt", bytes(data() + u"Resource/Zweite.jpg"_s).toStdString()) << moment;
        EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3", bytes(listPath(u"Zweite"_s)).trimmed().toStdString()) << moment;
        if (!failed) {
            EXPECT_EQ("/musik/Album/a.mp3\r\n", file(u"Album"_s)) << moment;
        }
        if (!clicked)
            return;
    }
    FAIL() << "the drop serves events more often";
}

TEST_F(ListDrops, AnyOtherItemOffersANewPlaylistOnce)
{
    startPlayback();
    answerOther(Answer::No);
    catalogue().Drop({putTrack(u"a"_s), putTrack(u"b"_s)});
    EXPECT_EQ(4, catalogue().count());
    EXPECT_NE(std::string::npos, boxes().find("icon exclamation buttons yes-no"));
    answerOther(Answer::Yes);
    desktop.messages.enter(u"Neue"_s);
    catalogue().Drop({u"/m/a.mp3"_s});
    EXPECT_EQ("Erste Zweite Dritte Einzeln *Neue", names());
}

TEST_F(ListDrops, AFullCatalogueIsToldBeforeAnyFileIsLookedAt)
{
    QByteArray index;
    const QString path = putList(u"Alle"_s, {putTrack(u"a"_s)});
    for (int number = 1; number <= MostPlaylists; ++number)
        index += indexRow(number, {.name = u"L%1"_s.arg(number), .path = path});
    putDatabase(index);
    setting(u"Error"_s, dwordSetting(0));
    start();
    const QString text = u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \nBitte löschen Sie eine der 160 "
                         u"Playlisten aus der Liste."_s;
    desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s, text);
    put(u"/musik/Album/a.mp3"_s, "x");
    forgetCalls();
    catalogue().Drop({u"/l/x.m3u"_s, u"/musik/Album"_s, u"/m/a.mp3"_s});
    EXPECT_EQ(MostPlaylists, catalogue().count());
    EXPECT_EQ("", calls({u"files."_s}));

    catalogue().remove(MostPlaylists);
    put(u"/l/x.m3u"_s, "/m/a.mp3\r\n");
    put(u"/l/y.m3u"_s, "/m/a.mp3\r\n");
    // Once by the save of the last one that fits, once for the other one.
    for (int i = 0; i < 2; ++i)
        desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s, text);
    catalogue().Drop({u"/l/x.m3u"_s, u"/l/y.m3u"_s});
    EXPECT_EQ("x", catalogue().subItem(MostPlaylists, 1).toStdString());
}

TEST_F(ListDrops, AFolderWithoutAudioFilesBecomesAnEmptyList)
{
    startPlayback();
    putFolder(u"/musik/leer"_s);
    catalogue().Drop({u"/musik/leer"_s});
    EXPECT_EQ("Erste Zweite Dritte Einzeln *leer", names());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("0", catalogue().subItem(5, 3).toStdString());
}

} // namespace orvantine::fake
