
#include "catalogue/CatalogueEntry.h"
#include "operations/ListDropsFixture.h"

#include "app/IniFiles.h"
#include "search/Dialogsuche.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

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

TEST_F(ListDrops, ADroppedFolderNeitherShowsNorTakesTheDescriptionOfTheListBefore)
{
    startPlayback();
    desktop.profiles().setValue(database(), u"Index"_s, u"1e"_s, u"Für die Fahrt"_s);
    catalogue().Tag = u"0"_s;
    click(1);
    ASSERT_EQ("Für die Fahrt", root().LSoundCaption.Caption.value().toStdString());
    put(u"/musik/Album/a.mp3"_s, "x");
    catalogue().Drop({u"/musik/Album"_s});
    EXPECT_NE("Für die Fahrt", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("Erste Zweite Dritte *Album Einzeln", names());
    const auto description = [this](const QString& key) {
        return IniFiles::ReadValue(root(), database(), u"Index"_s, key).toStdString();
    };
    EXPECT_EQ("", description(u"4e"_s));
    EXPECT_EQ("Für die Fahrt", description(u"1e"_s));
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

TEST_F(ListDrops, UnderTheFilterOfFavouritesNothingIsTaken)
{
    startPlayback();
    put(u"/musik/Album/a.mp3"_s, "x");
    put(u"/l/Sommer.m3u"_s, "/m/Erste 1.mp3\r\n");
    root().mnuFavoritenShow.Click();
    ASSERT_EQ("1", root().mnuFavoritenShow.Tag.toStdString());
    const std::string before = names();
    for (const QStringList& items :
         {QStringList{u"/musik/Album"_s, u"/l/Sommer.m3u"_s}, QStringList{u"/l/Sommer.m3u"_s}}) {
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
