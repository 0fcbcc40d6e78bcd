
#include "catalogue/NewPlayliste.h"
#include "operations/Eigenschaften.h"
#include "playback/PlaybackWorld.h"
#include "playback/Timer2.h"
#include "playlists/SavePlayEntrys.h"
#include "shell/SaveOptions.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Favourites : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    [[nodiscard]] std::string mark(int row)
    {
        return root().services.profiles.value(database(), u"Index"_s, QString::number(row) + u'g').toStdString();
    }
    [[nodiscard]] std::string names()
    {
        QStringList all;
        for (int row = 1; row <= catalogue().count(); ++row)
            all += catalogue().subItem(row, 1);
        return all.join(u' ').toStdString();
    }

    void store(int number, char letter, const QString& value)
    {
        root().services.profiles.setValue(database(), u"Index"_s, QString::number(number) + QLatin1Char(letter), value);
    }
    [[nodiscard]] std::string stored(int number, char letter)
    {
        return root()
            .services.profiles.value(database(), u"Index"_s, QString::number(number) + QLatin1Char(letter))
            .toStdString();
    }
    [[nodiscard]] std::string entry(int number)
    {
        std::string all;
        for (const char letter : std::string("abcdefg"))
            all += stored(number, letter) + '|';
        return all;
    }

    void expectNoWait()
    {
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
        EXPECT_TRUE(root().commands.idle());
    }

    /// "Erste" and "Dritte" are the favourites, and alone in sight.
    void onlyFirstAndThird()
    {
        store(3, 'g', u"1"_s);
        root().mnuFavoritenShow.Click();
    }
};

} // namespace

TEST_F(Favourites, TheCommandMarksTheSelectedListAndTakesTheMarkAway)
{
    click(2);
    ASSERT_FALSE(root().mnuFavoriten.Checked.value());
    root().mnuFavoriten.Click();
    EXPECT_TRUE(root().mnuFavoriten.Checked.value());
    EXPECT_EQ("Icon_6 Icon_6 Icon_1 Icon_1", marks());
    EXPECT_EQ("1", mark(2));
    root().mnuFavoriten.Click();
    EXPECT_FALSE(root().mnuFavoriten.Checked.value());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
    EXPECT_EQ(-1, bytes(database()).indexOf("2g"));
}

TEST_F(Favourites, WithoutASelectedRowNothingIsMarked)
{
    catalogue().clearSelection();
    const bool before = root().mnuFavoriten.Checked.value();
    forgetCalls();
    root().mnuFavoriten.Click();
    EXPECT_EQ(before, root().mnuFavoriten.Checked.value());
    EXPECT_EQ("", actions());
}

TEST_F(Favourites, TheFilterLeavesTheFavouritesWithTheirIconsAndSelectsTheFirst)
{
    click(3);
    root().mnuFavoriten.Click();
    click(2);
    const std::string before = databaseText();
    forgetCalls();
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Dritte", names());
    EXPECT_EQ("Icon_6 Icon_6", marks());
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ("(2)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ("1", root().mnuFavoritenShow.Tag.toStdString());
    EXPECT_TRUE(root().mnuFavoritenShow.Checked.value());
    EXPECT_EQ("", actions());
    EXPECT_EQ(before, databaseText());
}

TEST_F(Favourites, AClickInTheFilteredListOpensTheRowThatIsSeen)
{
    click(3);
    root().mnuFavoriten.Click();
    click(2);
    root().mnuFavoritenShow.Click();
    click(2);
    EXPECT_EQ("Dritte 1", tracks().subItem(1, 2).toStdString());
}

TEST_F(Favourites, AFilteredRowLosesItsOwnMark)
{
    onlyFirstAndThird();
    catalogue().select(2);
    root().mnuFavoriten.Checked = true;
    root().mnuFavoriten.Click();
    EXPECT_EQ("", mark(3));
    EXPECT_EQ("1", mark(1));
}

TEST_F(Favourites, AClickInTheFilteredListShowsTheDescriptionDateAndMarkOfItsOwnEntry)
{
    store(3, 'e', u"Von der Dritten"_s);
    store(2, 'e', u"Von der Zweiten"_s);
    store(3, 'f', u"03.03.2003"_s);
    onlyFirstAndThird();
    click(2);
    EXPECT_EQ("Von der Dritten", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("03.03.2003", root().tDatum.Caption.value().toStdString());
    EXPECT_TRUE(root().mnuFavoriten.Checked.value());
    root().LSoundCaption.Caption = QString();
    Timer2_Tick(root());
    EXPECT_EQ("Von der Dritten", root().LSoundCaption.Caption.value().toStdString());
}

TEST_F(Favourites, AFilteredListWithoutADateTakesThatOfItsLastTrackUnderItsOwnNumber)
{
    onlyFirstAndThird();
    store(3, 'f', QString());
    store(2, 'f', QString());
    click(2);
    EXPECT_NE("", stored(3, 'f'));
    EXPECT_EQ("", stored(2, 'f'));
}

TEST_F(Favourites, PropertiesOfAFilteredRowWriteItsOwnEntry)
{
    onlyFirstAndThird();
    click(2);
    const std::string second = entry(2);
    root().mnuEigenschaften.Click();
    root().eigenschaften->tPlaylistname.Text = u"Neu"_s;
    root().eigenschaften->tBeschreibung.Text = u"Worum es geht"_s;
    root().eigenschaften->BReady.Click();
    EXPECT_EQ("Neu", stored(3, 'b'));
    EXPECT_EQ(listPath(u"Dritte"_s).toStdString(), stored(3, 'c'));
    EXPECT_EQ("Worum es geht", stored(3, 'e'));
    EXPECT_EQ(second, entry(2));
}

TEST_F(Favourites, ADescriptionOfAFilteredRowIsItsOwn)
{
    onlyFirstAndThird();
    click(2);
    const std::string second = entry(2);
    put(data() + u"Resource/Dritte.jpg"_s, "g");
    desktop.messages.enter(u"Worum es geht"_s);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("Worum es geht", stored(3, 'e'));
    desktop.messages.enter(QString());
    desktop.messages.answer(Answer::Yes);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("", stored(3, 'e'));
    EXPECT_EQ(second, entry(2));
}

TEST_F(Favourites, TheDescriptionThatIsAskedForIsThatOfTheSelectedListWhateverTheLabelTellsOf)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    store(1, 'e', u"Von der Ersten"_s);
    store(2, 'e', u"Von der Zweiten"_s);
    click(2);
    root().mnuFavoritenShow.Click();
    ASSERT_EQ("Von der Zweiten", root().LSoundCaption.Caption.value().toStdString());
    desktop.messages.enter(u"Neu"_s);
    root().mnuBeschriftung.Click();
    EXPECT_NE(std::string::npos, boxes().find("default \"Von der Ersten\""));
    EXPECT_EQ("Neu", stored(1, 'e'));

    store(1, 'e', QString());
    desktop.messages.enter(QString());
    root().mnuBeschriftung.Click();
    EXPECT_NE(std::string::npos, boxes().find("default \"\"")) << "and nobody asks for what there is none of";
}

TEST_F(Favourites, PropertiesOfAListThatTheFilterHidesGoToItsEntryAlone)
{
    put(data() + u"Resource/Zweite.jpg"_s, "j");
    click(2);
    root().mnuEigenschaften.Click();
    Eigenschaften& form = *root().eigenschaften;
    form.tPlaylistname.Text = u"Neu"_s;
    form.tBeschreibung.Text = u"Lang getippt"_s;
    form.tDatum.Text = u"05.06.2007"_s;
    onlyFirstAndThird();
    const auto inSight = [this] {
        return rows(catalogue()) + entry(1) + entry(3) + entry(4) +
               lines({root().LSoundCaption.Caption.value(), root().tDatum.Caption.value(),
                      root().tPlaylisteinträge.Caption.value(), catalogue().Tag});
    };
    const std::string before = inSight();

    form.tPlayliste.Text = u"/m/nirgends.m3u"_s;
    desktop.messages.answer(Answer::Ok, u" Eigenschaften"_s,
                            u"Die eingetragene Wiedergabeliste konnte nicht gefunden werden.   "_s);
    form.BReady.Click();
    EXPECT_TRUE(form.Visible.value());
    EXPECT_EQ(listPath(u"Zweite"_s).toStdString(), form.tPlayliste.Text.value().toStdString());

    form.BReady.Click();
    EXPECT_FALSE(form.Visible.value());
    EXPECT_EQ("Neu Lang getippt 05.06.2007", stored(2, 'b') + ' ' + stored(2, 'e') + ' ' + stored(2, 'f'));
    EXPECT_EQ(listPath(u"Zweite"_s).toStdString(), stored(2, 'c'));
    EXPECT_EQ("j", bytes(data() + u"Resource/Neu.jpg"_s).toStdString());
    EXPECT_EQ(before, inSight());
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Neu Dritte Einzeln", names());
}

TEST_F(Favourites, PropertiesOfAHiddenListWhoseEntryHasGoneGoNowhere)
{
    click(2);
    root().mnuEigenschaften.Click();
    root().eigenschaften->tBeschreibung.Text = u"Text"_s;
    onlyFirstAndThird();
    store(2, 'b', u"Andere"_s);
    forgetCalls();
    root().eigenschaften->BReady.Click();
    EXPECT_FALSE(root().eigenschaften->Visible.value());
    EXPECT_EQ("", actions());
}

TEST_F(Favourites, AFilteredRowKeepsItsNewNameAndItsCover)
{
    put(data() + u"Resource/Dritte.jpg"_s, "g");
    onlyFirstAndThird();
    click(2);
    desktop.messages.enter(u"Andere"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Andere", stored(3, 'b'));
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Zweite Andere Einzeln", names());
    click(3);
    EXPECT_TRUE(root().pCoverBack.Visible.value());
}

TEST_F(Favourites, AListThatIsMadeUnderTheFilterComesLastInTheWholeCatalogue)
{
    onlyFirstAndThird();
    const std::string before = entry(1) + entry(2) + entry(3) + entry(4);
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_EQ("Erste Dritte Neu", names());
    EXPECT_EQ(before, entry(1) + entry(2) + entry(3) + entry(4));
    EXPECT_EQ("Neu", stored(5, 'b'));
    EXPECT_EQ(listPath(u"Neu"_s).toStdString(), stored(5, 'c'));
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Zweite Dritte Einzeln Neu", names());
}

TEST_F(Favourites, AFilteredListThatIsSavedLocallyIsFoundThereLater)
{
    put(u"/l/Dritte.m3u"_s, "/m/Dritte 1.mp3\r\n");
    store(3, 'c', u"/l/Dritte.m3u"_s);
    desktop.memory()->remove(listPath(u"Dritte"_s));
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    onlyFirstAndThird();
    root().mnuLokalePlayliste.Checked = true;
    click(2);
    SavePlayEntrys(root());
    EXPECT_EQ(listPath(u"Dritte"_s).toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ(listPath(u"Dritte"_s).toStdString(), stored(3, 'c'));
}

TEST_F(Favourites, NothingIsMovedOrDroppedUnderTheFilter)
{
    onlyFirstAndThird();
    for (int index = 1; index <= 4; ++index)
        EXPECT_FALSE(root().mnuVerschiebung[index].Enabled.value()) << index;
    Timer2_Tick(root());
    for (int index = 1; index <= 4; ++index)
        EXPECT_FALSE(root().mnuVerschiebung[index].Enabled.value()) << index;
    const std::string before = databaseText();
    forgetCalls();
    put(u"/l/Sommer.m3u"_s, "x");
    catalogue().Drop({u"/l/Sommer.m3u"_s});
    root().bMoveUp.Click();
    EXPECT_EQ("Erste Dritte", names());
    EXPECT_EQ(before, databaseText());
    EXPECT_EQ("", boxes());
    root().mnuFavoritenShow.Click();
    for (int index = 1; index <= 4; ++index)
        EXPECT_TRUE(root().mnuVerschiebung[index].Enabled.value()) << index;
}

TEST_F(Favourites, AListThatIsMadeUnderTheFilterShowsTheTracksOfAFileThatStood)
{
    put(listPath(u"Neu"_s), "/m/Erste 1.mp3\r\n");
    onlyFirstAndThird();
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_EQ("Erste 1", tracks().subItem(1, 2).toStdString());
}

TEST_F(Favourites, AnImportUnderTheFilterEndsItsWait)
{
    onlyFirstAndThird();
    put(u"/fremd/Fremd.m3u"_s, "/m/Erste 1.mp3\r\n/m/Zweite 1.mp3\r\n");
    desktop.choosers.open(u"/fremd/Fremd.m3u"_s);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("Erste Dritte Fremd", names());
    EXPECT_EQ("Fremd", stored(5, 'b'));
    EXPECT_EQ("/m/Erste 1.mp3", tracks().subItem(1, 3).toStdString());
    expectNoWait();
}

TEST_F(Favourites, ANewListInsideAReadUnderTheFilterEndsTheWaitAndIsSeen)
{
    onlyFirstAndThird();
    bool inTime = true;
    for (int yield = 1; inTime; ++yield) {
        SCOPED_TRACE(yield);
        ASSERT_LT(yield, 20);
        bool made = false;
        catalogue().Tag = u"0"_s;
        desktop.messages.enter(u"Neu %1"_s.arg(yield));
        desktop.events().atYield(yield, [&] {
            made = true;
            root().mnuNeu.Click();
        });
        click(2);
        expectNoWait();
        if (root().trackList.content() == TrackList::Content::Own) {
            EXPECT_TRUE(tracks().Visible.value());
        }
        inTime = made;
        EXPECT_TRUE(inTime || yield > 1) << "a read serves events";
        while (!made)
            desktop.events().yield();
        desktop.messages.queue.clear();
    }
}

TEST_F(Favourites, TheProgramEndsWithTheOwnNumberOfTheFilteredRow)
{
    onlyFirstAndThird();
    click(2);
    SaveOptions(root());
    EXPECT_EQ("binary 03 00 00 00", setting(u"Index"_s).toStdString());
}

TEST_F(Favourites, AReloadTakesTheFilterOff)
{
    onlyFirstAndThird();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    EXPECT_EQ("Erste Zweite Dritte Einzeln", names());
    EXPECT_EQ("0", root().mnuFavoritenShow.Tag.toStdString());
    EXPECT_FALSE(root().mnuFavoritenShow.Checked.value());
}

TEST_F(Favourites, WithoutAFavouriteTheListIsEmpty)
{
    click(1);
    root().mnuFavoriten.Click();
    root().mnuFavoritenShow.Click();
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(0, catalogue().selectedRow());
}

TEST_F(Favourites, TheCheckOfTheCommandFollowsTheRowThatTheFilterSelects)
{
    click(2);
    ASSERT_FALSE(root().mnuFavoriten.Checked.value());
    root().mnuFavoritenShow.Click();
    EXPECT_TRUE(root().mnuFavoriten.Checked.value());
    root().mnuFavoriten.Click();
    EXPECT_EQ("", mark(1));
    EXPECT_FALSE(root().mnuFavoriten.Checked.value());
}

TEST_F(Favourites, WithoutAFavouriteInSightTheCommandIsNotChecked)
{
    store(1, 'g', QString());
    ASSERT_TRUE(root().mnuFavoriten.Checked.value());
    root().mnuFavoritenShow.Click();
    EXPECT_FALSE(root().mnuFavoriten.Checked.value());
}

TEST_F(Favourites, AReadThatFailsHidesNoList)
{
    store(3, 'g', u"1"_s);
    const std::string before = rows(catalogue());
    // Somebody else has written to the file: it is read again.
    ASSERT_TRUE(desktop.disk().appendBytes(database(), "; x\r\n"));
    desktop.log.failNext(u"files.readBytes \""_s + database());
    root().mnuFavoritenShow.Click();
    EXPECT_EQ(before, rows(catalogue()));
    EXPECT_EQ("0", root().mnuFavoritenShow.Tag.toStdString());
    EXPECT_FALSE(root().mnuFavoritenShow.Checked.value());
    EXPECT_TRUE(root().mnuVerschiebung[1].Enabled.value());
    EXPECT_EQ("Die Datenbank konnte nicht gelesen werden. Es werden alle Playlisten gezeigt.",
              root().quietLine.Caption.value().toStdString());
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Dritte", names());
}

TEST_F(Favourites, AFilteredListIsNeverSaved)
{
    const std::string before = databaseText();
    root().mnuFavoritenShow.Click();
    forgetCalls();
    root().mnuSpeichern.Click();
    EXPECT_EQ("", actions());
    EXPECT_EQ(before, databaseText());
}

TEST_F(Favourites, TheSecondClickBringsAllListsBackWithoutAnyQuestion)
{
    // Each name stands in the database: with the check on, the reload would ask of every one.
    for (const SettingValue& stored : {dwordSetting(1), dwordSetting(0)}) {
        setting(u"CheckEntrys"_s, stored);
        root().mnuFavoritenShow.Click();
        ASSERT_EQ("Erste", names());
        root().mnuFavoritenShow.Click();
        EXPECT_EQ("Erste Zweite Dritte Einzeln", names());
        EXPECT_EQ("0", root().mnuFavoritenShow.Tag.toStdString());
        EXPECT_FALSE(root().mnuFavoritenShow.Checked.value());
        EXPECT_EQ("(4)", root().nAnzeige.Caption.value().toStdString());
        EXPECT_EQ(described(stored).toStdString(), setting(u"CheckEntrys"_s).toStdString());
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_FALSE(root().buttonsDisabled);
        EXPECT_TRUE(root().LListView1.Enabled.value());
        EXPECT_EQ("", boxes());
    }
}

TEST_F(Favourites, ACheckThatWasAbsentAndSoOnIsOnAfterwards)
{
    root().mnuFavoritenShow.Click();
    root().mnuFavoritenShow.Click();
    EXPECT_EQ(described(dwordSetting(1)).toStdString(), setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Favourites, BothCommandsNameTheFileByItsConstant)
{
    root().services.start.stem = u"Anders"_s;
    click(2);
    root().mnuFavoriten.Checked = false;
    root().mnuFavoriten.Click();
    EXPECT_EQ("1", mark(2));
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Zweite", names());
}

TEST_F(Favourites, BehindAGapInTheSectionAFilteredRowWritesTheEntryOfItsOwnList)
{
    const auto entryAt = [&](int number, const QString& name, const QString& favourite = {}) {
        return indexRow(number, {.name = name, .path = listPath(name), .favourite = favourite});
    };
    putDatabase(entryAt(1, u"Erste"_s) + entryAt(3, u"Zweite"_s, u"1"_s) + entryAt(4, u"Dritte"_s, u"1"_s));
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    root().mnuFavoritenShow.Click();
    ASSERT_EQ("Dritte", names()) << "the mark is looked for by the place";
    const std::string other = entry(3);
    click(1);
    desktop.messages.enter(u"Anders"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Anders", stored(4, 'b'));
    root().mnuEigenschaften.Click();
    root().eigenschaften->tBeschreibung.Text = u"Worum es geht"_s;
    root().eigenschaften->BReady.Click();
    EXPECT_EQ("Worum es geht", stored(4, 'e'));
    root().mnuFavoriten.Click();
    EXPECT_EQ("", stored(4, 'g'));
    EXPECT_EQ(other, entry(3));
}

TEST_F(Favourites, TheNumberOfTracksOfAFilteredRowIsStored)
{
    onlyFirstAndThird();
    click(2);
    setting(u"ShowDialog"_s, dwordSetting(0));
    tracks().Drop({putTrack(u"neu"_s)});
    EXPECT_EQ("3", catalogue().subItem(2, 3).toStdString());
    EXPECT_EQ("3", stored(3, 'd'));
    EXPECT_EQ("2", stored(2, 'd'));
}

TEST_F(Favourites, ANewListUnderTheFilterIsStoredWholeOrNotAtAll)
{
    for (int failing = 1; failing <= 7; ++failing) {
        SCOPED_TRACE(failing);
        desktop.newProcess();
        SetUp();
        onlyFirstAndThird();
        desktop.log.failNext(u"files.appendBytes"_s, failing);
        desktop.messages.enter(u"Neu"_s);
        root().mnuNeu.Click();
        const std::string whole = "004|Neu|" + listPath(u"Neu"_s).toStdString() + "|0||";
        EXPECT_TRUE(entry(5).rfind(whole, 0) == 0 || entry(5) == "|||||||") << entry(5);
        if (HasFailure())
            break;
    }
}

TEST_F(Favourites, ANewListUnderTheFilterNeverTakesAnEntryThatCouldNotBeRead)
{
    onlyFirstAndThird();
    const QByteArray before = bytes(database());
    put(database(), before + "\r\n");
    desktop.memory()->setUnreadable(database());
    QString path;
    EXPECT_FALSE(NewPlayliste(root(), path, u"Neu"_s));
    EXPECT_EQ(2, catalogue().count());
    desktop.memory()->setUnreadable(database(), false);
    EXPECT_EQ((before + "\r\n").toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("Nicht gespeichert: Die Datenbank konnte nicht gelesen werden.",
              root().quietLine.Caption.value().toStdString());
}

} // namespace orvantine::fake
