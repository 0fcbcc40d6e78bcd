
#include "catalogue/CatalogueWorld.h"
#include "catalogue/NewPlayliste.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class RemovePlaylists : public CatalogueWorld
{
protected:
    void confirm(const QString& name, Answer answer = Answer::Ok)
    {
        desktop.messages.answer(answer, u" Wiedergabeliste entfernen"_s,
                                u"Möchten Sie die Playliste ''"_s + name +
                                    u"'' wirklich aus der Datenbank löschen ?    "_s);
    }
    void remove(int row)
    {
        confirm(catalogue().subItem(row, 1));
        catalogue().select(row);
        forgetCalls();
        root().mnuLöschen.Click();
    }
    /// Three lists with description, date and mark of their own.
    void putThree()
    {
        QByteArray index;
        int row = 0;
        for (const QString& name : {u"Eins"_s, u"Zwei"_s, u"Drei"_s}) {
            ++row;
            index += indexRow(row, {.name = name,
                                    .path = putList(name, {putTrack(name + u" 1"_s), putTrack(name + u" 2"_s)}),
                                    .description = u"Von "_s + name,
                                    .date = u"0%1.01.2001"_s.arg(row),
                                    .favourite = row == 2 ? u"1"_s : QString()});
        }
        putDatabase(index);
        start();
    }
    [[nodiscard]] bool exists(const QString& path) { return desktop.disk().exists(path); }
};

} // namespace

TEST_F(RemovePlaylists, CancelStopsBeforeAnythingIsTouched)
{
    putThree();
    const std::string before = rows(catalogue()) + rows(tracks()) + databaseText();
    confirm(u"Drei"_s, Answer::Cancel);
    forgetCalls();
    root().mnuLöschen.Click();
    EXPECT_EQ("box title \" Wiedergabeliste entfernen\" text \"Möchten Sie die Playliste ''Drei'' wirklich aus der "
              "Datenbank löschen ?    \" icon exclamation buttons ok-cancel answer cancel",
              boxes());
    EXPECT_EQ("", actions());
    EXPECT_EQ(before, rows(catalogue()) + rows(tracks()) + databaseText());
}

TEST_F(RemovePlaylists, WithoutASelectedRowNothingIsAsked)
{
    putThree();
    catalogue().clearSelection();
    forgetCalls();
    root().mnuLöschen.Click();
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", actions());
}

TEST_F(RemovePlaylists, ARunningTitleIsStoppedBeforeTheQuestion)
{
    putThree();
    click(1);
    catalogue().DblClick();
    desktop.mediaplayer().pretendPlaying();
    ASSERT_TRUE(root().pPausePlayer.Enabled.value());
    confirm(u"Eins"_s, Answer::Cancel);
    forgetCalls();
    root().mnuLöschen.Click();
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
    const QStringList order = desktop.log.linesOf({u"Mediaplayer.controls.stop"_s, u"messages.show"_s});
    ASSERT_EQ(2, order.size());
    EXPECT_EQ("Mediaplayer.controls.stop", order[0].toStdString());
}

TEST_F(RemovePlaylists, TheCopyOfTheDatabaseHoldsTheNumberingFromBefore)
{
    putThree();
    put(backup(), "von heute früh");
    const std::string before = databaseText();
    remove(1);
    EXPECT_EQ(before, backupText());
}

TEST_F(RemovePlaylists, ARowInTheMiddleGoesAndTheExtrasStayAtTheirPosition)
{
    putThree();
    remove(1);
    EXPECT_EQ("[Index]\r\n"
              "1a=000\r\n1b=Zwei\r\n1c={data}/Playlisten/Zwei.m3u\r\n1d=2\r\n1e=Von Eins\r\n1f=01.01.2001\r\n1g=\r\n"
              "2a=001\r\n2b=Drei\r\n2c={data}/Playlisten/Drei.m3u\r\n2d=2\r\n2e=Von Zwei\r\n2f=02.01.2001\r\n2g=1\r\n",
              databaseText());
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(2, catalogue().selectedRow());
}

TEST_F(RemovePlaylists, TheLastRowLosesItsSevenKeysAndItsGivenName)
{
    putThree();
    put(database(), bytes(database()) + "[Rename]\r\nDrei.m3u=Drei\r\nEins.m3u=Eins\r\n");
    remove(3);
    EXPECT_EQ("Eins", root().services.profiles.value(database(), u"Rename"_s, u"Eins.m3u"_s).toStdString());
    EXPECT_EQ("", root().services.profiles.value(database(), u"Rename"_s, u"Drei.m3u"_s).toStdString());
    for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g'})
        EXPECT_EQ("",
                  root().services.profiles.value(database(), u"Index"_s, u"3"_s + QLatin1Char(letter)).toStdString())
            << letter;
}

TEST_F(RemovePlaylists, AnotherRowLeavesItsGivenNameBehind)
{
    putThree();
    put(database(), bytes(database()) + "[Rename]\r\nDrei.m3u=Drei\r\nEins.m3u=Eins\r\n");
    remove(1);
    EXPECT_EQ("Eins", root().services.profiles.value(database(), u"Rename"_s, u"Eins.m3u"_s).toStdString());
}

TEST_F(RemovePlaylists, TheOnlyRowLeavesAnEmptyListAndIsNotSaved)
{
    putCatalogue({u"Eins"_s});
    put(database(), bytes(database()) + "9e=Rest\r\n");
    start();
    remove(1);
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(0, catalogue().selectedRow());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("[Index]\r\n9e=Rest\r\n", databaseText());
    EXPECT_EQ("Einträge in der Playliste", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("", root().pCovers.Picture.value().toStdString());
    EXPECT_EQ("", root().tPlayliste.Text.value().toStdString());
    EXPECT_EQ("", root().sAnzeige[1].Caption.value().toStdString());
    EXPECT_EQ("", root().sAnzeige[2].Caption.value().toStdString());
}

TEST_F(RemovePlaylists, TheShownNumberIsOneTooHighUntilTheNextFullUpdate)
{
    putThree();
    remove(2);
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("(3)", root().nAnzeige.Caption.value().toStdString());
}

TEST_F(RemovePlaylists, TheCoverGoesTheLastExtensionThatIsThere)
{
    putThree();
    put(data() + u"Resource/Eins.jpg"_s, "j");
    put(data() + u"Resource/Eins.bmp"_s, "b");
    remove(1);
    EXPECT_TRUE(exists(data() + u"Resource/Eins.jpg"_s));
    EXPECT_FALSE(exists(data() + u"Resource/Eins.bmp"_s));
}

TEST_F(RemovePlaylists, ANameThatLeavesTheFolderTakesNoPictureAlong)
{
    put(data() + u"Bild.jpg"_s, "j");
    putDatabase(indexRow(1, {.name = u"../Bild"_s, .path = putList(u"Eins"_s, {putTrack(u"a"_s)})}));
    start();
    remove(1);
    EXPECT_TRUE(exists(data() + u"Bild.jpg"_s));
}

TEST_F(RemovePlaylists, AListInPlaylistenGoesAndItsCopyStays)
{
    putThree();
    const QByteArray before = bytes(listPath(u"Eins"_s));
    remove(1);
    EXPECT_FALSE(exists(listPath(u"Eins"_s)));
    EXPECT_EQ(before, bytes(data() + u"Playlisten/Eins.bak"_s));
}

TEST_F(RemovePlaylists, TheFolderIsComparedIgnoringCaseAndSeparator)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s)});
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = data() + u"PLAYLISTEN\\Eins.m3u"_s}));
    start();
    remove(1);
    EXPECT_FALSE(exists(path));
}

TEST_F(RemovePlaylists, AListElsewhereStaysAndItsCopyIsMadeNextToIt)
{
    put(u"/m/Fremd.m3u"_s, (putTrack(u"a"_s) + u"\r\n\r\n"_s).toUtf8());
    putDatabase(indexRow(1, {.name = u"Fremd"_s, .path = u"/m/Fremd.m3u"_s}));
    start();
    const QByteArray before = bytes(u"/m/Fremd.m3u"_s);
    remove(1);
    EXPECT_EQ(before, bytes(u"/m/Fremd.m3u"_s));
    EXPECT_EQ(before, bytes(u"/m/Fremd.bak"_s));
}

TEST_F(RemovePlaylists, AFileThatAnotherRowUsesStaysAndNoCopyIsWritten)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = path}) +
                indexRow(2, {.name = u"Auch"_s, .path = QString(path).replace(u"Eins"_s, u"EINS"_s)}));
    start();
    remove(1);
    EXPECT_TRUE(exists(path));
    EXPECT_EQ("Eins.m3u", desktop.disk().list(data() + u"Playlisten"_s, u"*.*"_s).join(u' ').toStdString());
}

TEST_F(RemovePlaylists, TheTrackListShowsTheLastRowAndItsCover)
{
    putThree();
    put(data() + u"Resource/Drei.gif"_s, "g");
    click(1);
    remove(2);
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("Drei 1", tracks().subItem(1, 2).toStdString());
    EXPECT_EQ("Drei", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ((data() + u"Resource/Drei.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
    EXPECT_TRUE(root().pCoverBack.Visible.value());
}

TEST_F(RemovePlaylists, WithoutACoverThePaneGoes)
{
    putThree();
    put(data() + u"Resource/Eins.jpg"_s, "g");
    click(1);
    ASSERT_TRUE(root().pCoverBack.Visible.value());
    remove(1);
    EXPECT_FALSE(root().pCoverBack.Visible.value());
    EXPECT_EQ("", root().pCovers.Picture.value().toStdString());
}

TEST_F(RemovePlaylists, WithTheFavouritesFilterOnTheFileKeepsItsOldIndex)
{
    putThree();
    const std::string before = databaseText();
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(1, catalogue().count());
    remove(1);
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(before, databaseText());
}

TEST_F(RemovePlaylists, AFilteredRowGoesFromTheViewAlone)
{
    putThree();
    root().services.profiles.setValue(database(), u"Index"_s, u"3g"_s, u"1"_s);
    const std::string before = databaseText();
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(2, catalogue().count());
    remove(1);
    EXPECT_EQ(1, catalogue().count());
    EXPECT_EQ(before, databaseText());
}

TEST_F(RemovePlaylists, TheLastRowIsKnownByItsText)
{
    putThree();
    put(database(), bytes(database()) + "[Rename]\r\nDrei.m3u=Drei\r\nEins.m3u=Eins\r\n");
    root().services.profiles.setValue(database(), u"Index"_s, u"1a"_s, u"002"_s);
    remove(1);
    EXPECT_EQ("", root().services.profiles.value(database(), u"Rename"_s, u"Eins.m3u"_s).toStdString());

    root().services.profiles.setValue(database(), u"Index"_s, u"2a"_s, u"007"_s);
    remove(2);
    EXPECT_EQ("Drei", root().services.profiles.value(database(), u"Rename"_s, u"Drei.m3u"_s).toStdString());
}

TEST_F(RemovePlaylists, TheShownPaneIsAlignedWithTheFrame)
{
    putThree();
    put(data() + u"Resource/Drei.jpg"_s, "j");
    click(1);
    click(3);
    ASSERT_TRUE(root().pCoverBack.Visible.value());
    root().pCoverBack.Top = -1;
    root().pCoverBack.Height = -1;
    remove(1);
    EXPECT_EQ(root().xpFrame1.Top.value(), root().pCoverBack.Top.value());
    EXPECT_EQ(root().xpFrame1.Height.value(), root().pCoverBack.Height.value());
}

TEST_F(RemovePlaylists, AListWhoseCopyOrRemovalFailsStaysOnTheDiskWithItsPlaceInTheDatabase)
{
    putThree();
    const std::string before = bytes(database()).toStdString();
    confirm(u"Eins"_s);
    catalogue().select(1);
    desktop.log.failNext(u"files.copy"_s, 2);
    root().mnuLöschen.Click();
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/Eins.bak"_s).toStdString());
    EXPECT_TRUE(exists(listPath(u"Eins"_s)));
    EXPECT_EQ(before, bytes(database()).toStdString());
    EXPECT_EQ(2, catalogue().count()) << "the rows stay as the user made them";
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());

    confirm(u"Zwei"_s);
    catalogue().select(1);
    desktop.log.failNext(u"files.remove"_s);
    root().mnuLöschen.Click();
    EXPECT_TRUE(exists(listPath(u"Zwei"_s)));
    EXPECT_EQ(before, bytes(database()).toStdString());
    EXPECT_EQ(1, catalogue().count());
}

TEST_F(RemovePlaylists, WithoutACopyOfTheDatabaseNothingIsRemoved)
{
    putThree();
    const std::string before = bytes(listPath(u"Eins"_s)).toStdString();
    confirm(u"Eins"_s);
    catalogue().select(1);
    desktop.log.failNext(u"files.copy"_s);
    root().mnuLöschen.Click();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(before, bytes(listPath(u"Eins"_s)).toStdString());
}

TEST_F(RemovePlaylists, AnotherRowInItsPlaceWhileTheBoxIsUpStaysUntouched)
{
    putThree();
    catalogue().select(1);
    desktop.messages.script({Answer::Ok, {}, {}, {}, [this] { catalogue().remove(1); }});
    forgetCalls();
    root().mnuLöschen.Click();
    EXPECT_EQ("", actions());
    EXPECT_EQ(2, catalogue().count());
    EXPECT_TRUE(exists(listPath(u"Zwei"_s)));
}

TEST_F(RemovePlaylists, TheRowThatWasAskedForGoesWhereverTheSelectionWandered)
{
    putThree();
    catalogue().select(1);
    desktop.messages.script({Answer::Ok, {}, {}, {}, [this] { catalogue().select(3); }});
    root().mnuLöschen.Click();
    EXPECT_EQ("Zwei", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Drei", catalogue().subItem(2, 1).toStdString());
}

TEST_F(RemovePlaylists, TheLastThreeCharactersOfTheNameMakeRoomForBak)
{
    const QString path = data() + u"Playlisten/Über.m3u8"_s;
    put(path, (putTrack(u"a"_s) + u"\r\n\r\n"_s).toUtf8());
    putDatabase(indexRow(1, {.name = u"Über"_s, .path = path}));
    start();
    const QByteArray before = bytes(path);
    remove(1);
    EXPECT_FALSE(exists(path));
    EXPECT_EQ(before.toStdString(), bytes(data() + u"Playlisten/Über.mbak"_s).toStdString());
}

TEST_F(RemovePlaylists, AListInASubfolderOfPlaylistenStaysAndItsCopyIsMadeNextToIt)
{
    const QString path = data() + u"Playlisten/Alt/Eins.m3u"_s;
    put(path, (putTrack(u"a"_s) + u"\r\n\r\n"_s).toUtf8());
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = path}));
    start();
    const QByteArray before = bytes(path);
    remove(1);
    EXPECT_EQ(before.toStdString(), bytes(path).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(data() + u"Playlisten/Alt/Eins.bak"_s).toStdString());
    EXPECT_FALSE(exists(data() + u"Playlisten/Eins.bak"_s));
}

TEST_F(RemovePlaylists, AFileThatAnotherRowUsesInAnotherSpellingStays)
{
    for (const QString& other : {u"Playlisten/GRO\u0308ßE.m3u"_s, u"Playlisten\\Größe.m3u"_s}) {
        SCOPED_TRACE(other.toStdString());
        desktop.newProcess();
        const QString path = putList(u"Größe"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
        putDatabase(indexRow(1, {.name = u"Eins"_s, .path = path}) +
                    indexRow(2, {.name = u"Auch"_s, .path = data() + other}));
        start();
        remove(1);
        EXPECT_EQ("Größe.m3u", desktop.disk().list(data() + u"Playlisten"_s, u"*.*"_s).join(u' ').toStdString());
    }
}

TEST_F(RemovePlaylists, AFileThatAHiddenRowUsesStays)
{
    const QString path = putList(u"Beide"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = path, .favourite = u"1"_s}) +
                indexRow(2, {.name = u"Auch"_s, .path = path}));
    start();
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(1, catalogue().count());
    remove(1);
    EXPECT_TRUE(exists(path));
    EXPECT_FALSE(exists(data() + u"Playlisten/Beide.bak"_s));
}

TEST_F(RemovePlaylists, TheCopyStillHoldsTheKeysAndTheGivenNameOfTheLastRow)
{
    putThree();
    put(database(), bytes(database()) + "[Rename]\r\nDrei.m3u=Drei\r\n");
    const std::string before = databaseText();
    remove(3);
    EXPECT_EQ(before, backupText());
}

TEST_F(RemovePlaylists, WithoutADatabaseNoCopyIsMadeAndTheRestGoesOn)
{
    putThree();
    desktop.disk().remove(database());
    remove(1);
    // The list that is opened instead gets its date: that is all that a copy can hold.
    EXPECT_EQ("[Index]\r\n2f=20.11.2026\r\n", backupText());
    EXPECT_FALSE(exists(listPath(u"Eins"_s)));
    EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", bytes(data() + u"Playlisten/Eins.bak"_s).toStdString());
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("[Index]\r\n"
              "1a=000\r\n1b=Zwei\r\n1c={data}/Playlisten/Zwei.m3u\r\n1d=2\r\n1e=\r\n1f=\r\n1g=\r\n"
              "2a=001\r\n2b=Drei\r\n2c={data}/Playlisten/Drei.m3u\r\n2d=2\r\n2e=\r\n2f=20.11.2026\r\n2g=\r\n",
              databaseText());
}

TEST_F(RemovePlaylists, TheRemovalOfTheOnlyListHidesTheCover)
{
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)})}));
    put(data() + u"Resource/Eins.jpg"_s, "g");
    start();
    click(1);
    ASSERT_TRUE(root().pCoverBack.Visible.value());
    remove(1);
    EXPECT_FALSE(root().pCoverBack.Visible.value());
}

TEST_F(RemovePlaylists, TheOnlyRowBehindAGapDoesNotComeBack)
{
    const QString path = putList(u"Rock"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase("1c=/fehlt.m3u\r\n" + indexRow(2, {.name = u"Rock"_s, .path = path}));
    start();
    ASSERT_EQ(1, catalogue().count());
    remove(1);
    EXPECT_EQ(0, catalogue().count());
    root().mnuLaden.Click();
    EXPECT_EQ(0, catalogue().count());
}

TEST_F(RemovePlaylists, AnEndInTheReloadOfADatabaseThatCameBackStoresNoHalfOfIt)
{
    for (int yield = 1; yield <= 40; ++yield) {
        SCOPED_TRACE(yield);
        desktop.newProcess();
        desktop.disk().remove(database());
        desktop.disk().remove(backup());
        start();
        ASSERT_TRUE(root().databaseAwaited);
        for (const QString& name : {u"Neu1"_s, u"Neu2"_s}) {
            QString path = putList(name, {putTrack(name + u" 1"_s), putTrack(name + u" 2"_s)});
            ASSERT_TRUE(NewPlayliste(root(), path, name));
        }
        putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s, u"Vier"_s});
        desktop.events().atYield(yield, [&] { desktop.events().endProcess(); });
        remove(1);
        for (const QString& name : {u"Eins"_s, u"Zwei"_s, u"Drei"_s, u"Vier"_s})
            EXPECT_NE(-1, bytes(database()).indexOf(("b=" + name.toUtf8()))) << name.toStdString();
        if (HasFailure())
            break;
    }
}

} // namespace orvantine::fake
