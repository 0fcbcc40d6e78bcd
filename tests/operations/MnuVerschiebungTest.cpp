
#include "catalogue/CatalogueEntry.h"
#include "operations/ReorderingFixture.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(Reordering, AStepUpTakesDescriptionDateAndMarkAlong)
{
    startWith(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("*Zwei Eins Drei", names());
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2)) << "the neighbour keeps its old ID";
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
}

TEST_F(Reordering, TheDescriptionOfTheMovedListIsItsOwnThoughTheSaveNamesTracksByTheirTags)
{
    setting(u"AutoTag"_s, dwordSetting(1));
    desktop.tags.tracks[u"/m/Zwei 1.mp3"_s] = {.title = u"Lied"_s, .artist = u"Wir"_s};
    startWith(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
    EXPECT_EQ("Wir - Lied", desktop.profiles().value(database(), u"TagInfo"_s, u"/m/Zwei 1.mp3"_s).toStdString());
}

TEST_F(Reordering, TheDateIsThatWhichTheWindowShowsAfterTheWaitAndBeforeTheMove)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500}, [this] { root().tDatum.Caption = u"09.09.1999"_s; });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|09.09.1999|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
}

TEST_F(Reordering, TheDatabaseAndItsCopyAreNamedAfterTheProgramsFile)
{
    startWith(2);
    root().services.start.stem = u"Anders"_s;
    put(data() + u"Anders.dat"_s, bytes(database()));
    const std::string before = databaseText();
    const std::string copyBefore = backupText();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(before, withoutFolder(bytes(data() + u"Anders.bak"_s)));
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1, data() + u"Anders.dat"_s));
    openDialog([this] {
        form().LSortView.move(0, 2);
        confirm();
    });
    EXPECT_EQ("002|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3, data() + u"Anders.dat"_s));
    EXPECT_EQ(before, databaseText()) << "the other file is not touched";
    EXPECT_EQ(copyBefore, backupText());
}

TEST_F(Reordering, AKeyThatCannotBeWrittenPutsTheStepBackOnTheDiskWithoutABox)
{
    startWith(2);
    const std::string before = databaseText();
    desktop.log.failNext(u"files.appendBytes"_s, 3);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("*Zwei Eins Drei", names());
    EXPECT_EQ("", boxes());
    EXPECT_EQ(before, databaseText());
    EXPECT_TRUE(root().quietLine.Visible.value());
}

TEST_F(Reordering, AStepTakesItsFirstStepsInTheirOrder)
{
    startWith(1);
    desktop.events().after(std::chrono::milliseconds{500}, [this] {
        const std::string done = calls({u"settings.setValue"_s, u"files.copy"_s});
        const std::size_t off = done.find("\"CheckEntrys\"");
        const std::size_t copied = done.find("Orvantine.bak");
        ASSERT_NE(off, std::string::npos) << done;
        ASSERT_NE(copied, std::string::npos) << done;
        EXPECT_LT(off, copied) << done;
        EXPECT_EQ("", sounds()) << "the cue comes behind the wait";
    });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("cue.play PLAY 6", sounds());
}

TEST_F(Reordering, AStepDownTakesDescriptionDateAndMarkAlong)
{
    startWith(2);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("Eins Drei *Zwei", names());
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(1));
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(2));
    EXPECT_EQ("002|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3));
}

TEST_F(Reordering, AStepThatAFavouritePassesLeavesTheMarkWithIt)
{
    startWith(1);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("Zwei *Eins Drei", names());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("001|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
}

TEST_F(Reordering, TheButtonsDoTheSameAsTheCommands)
{
    startWith(2);
    root().bMoveDown.Click();
    EXPECT_EQ("Eins Drei *Zwei", names());
    root().bMoveUp.Click();
    EXPECT_EQ("Eins *Zwei Drei", names());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2));
}

TEST_F(Reordering, AfterStepsTheCatalogueLoadsInTheNewOrder)
{
    startWith(3);
    root().mnuVerschiebung[1].Click();
    root().mnuVerschiebung[1].Click();
    reload();
    EXPECT_EQ("Drei Eins *Zwei", names());
    EXPECT_EQ("Text Drei", indexValue(root(), database(), 1, 'e').toStdString());
    EXPECT_EQ("Text Eins", indexValue(root(), database(), 2, 'e').toStdString());
    EXPECT_EQ("Text Zwei", indexValue(root(), database(), 3, 'e').toStdString());
}

TEST_F(Reordering, TheCopyHoldsTheStateBeforeTheStep)
{
    startWith(2);
    const std::string before = databaseText();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(before, backupText());
}

TEST_F(Reordering, AStepWaitsOneSecond)
{
    startWith(2);
    const auto begin = desktop.events().elapsed();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(1000, (desktop.events().elapsed() - begin).count() / 10 * 10);
}

TEST_F(Reordering, TheCopyIsMadeBeforeTheWaitAndTheKeysAreReadBehindIt)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500}, [this] {
        EXPECT_EQ("Eins *Zwei Drei", names());
        EXPECT_NE("(missing)", bytes(backup()).toStdString());
        writeIndexValue(root(), database(), 1, 'e', u"später"_s);
    });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Eins|Eins.m3u|2|später|01.01.2001||", keys(2));
}

TEST_F(Reordering, TheTopRowUpPlaysPlayAndSavesAndKeepsTheOrder)
{
    startWith(1);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("cue.play PLAY 6", sounds());
    EXPECT_EQ("*Eins Zwei Drei", names());
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(1));
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2)) << "no row is harmed";
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
    EXPECT_EQ("|||||||", keys(0)) << "the neighbour's values go to number 0";
    EXPECT_EQ("0", catalogue().Tag.toStdString());
}

TEST_F(Reordering, TheLastRowDownPlaysStopAndSavesAndKeepsTheOrder)
{
    startWith(3);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("cue.play STOP 6", sounds());
    EXPECT_EQ("Eins Zwei *Drei", names());
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(1));
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2)) << "no row is harmed";
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
    EXPECT_EQ("|||||||", keys(4)) << "the neighbour's values go to count + 1";
    reload();
    EXPECT_EQ(3, catalogue().count());
}

TEST_F(Reordering, InTheMiddleNoCueSounds)
{
    startWith(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("", sounds());
}

TEST_F(Reordering, TheBackupIsMadeAlsoByAnEdgeStep)
{
    startWith(1);
    const std::string before = databaseText();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(before, backupText());
}

TEST_F(Reordering, TheCheckIsOffForTheTimeOfTheMove)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500},
                           [this] { EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString()); });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Reordering, ACheckThatWasOffOrAbsentStaysOff)
{
    startWith(2);
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
    desktop.settings.drop(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"CheckEntrys"_s);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Reordering, AnUnmarkedDescriptionIsNotTakenAlong)
{
    startWith(2);
    root().Timer2.Enabled = false;
    root().LSoundCaption.Tag = u"0"_s;
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2||02.01.2001|1|", keys(1));
}

TEST_F(Reordering, ADescriptionThatTheHousekeepingShowsIsTakenAlong)
{
    startWith(2);
    root().LSoundCaption.Tag = u"0"_s;
    desktop.events().run(root().Timer2.Interval);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
}

TEST_F(Reordering, TheMoveMarkStandsForTheTimeOfAMoveAndTheTracksAreUnsorted)
{
    startWith(2);
    tracks().setSorted(true);
    QString during;
    catalogue().LockUpdate = [](bool) {};
    const auto watch = catalogue().selection().addNotifier([&] { during += root().bMoveDown.Tag; });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(during.left(1), u"1"_s);
    EXPECT_EQ("0", root().bMoveDown.Tag.toStdString());
    EXPECT_FALSE(tracks().sorted());
    EXPECT_EQ("0", catalogue().Tag.toStdString()) << "the next click loads anew";
}

TEST_F(Reordering, AStepAskedForWhileAnotherOneWaitsIsPassedOver)
{
    startWith(3);
    desktop.events().after(std::chrono::milliseconds{300}, [this] { root().bMoveUp.Click(); });
    root().bMoveUp.Click();
    EXPECT_EQ("Eins *Drei Zwei", names());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3));
}

TEST_F(Reordering, WithoutASelectedRowNoKeyIsWritten)
{
    startWith(1);
    catalogue().clearSelection();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("Eins Zwei Drei", names());
    EXPECT_EQ("-|-|-|-|-|-|-|", keys(0));
    EXPECT_EQ("-|-|-|-|-|-|-|", keys(-1));
    EXPECT_EQ("", sounds());
}

TEST_F(Reordering, WithTheFavouritesFilterOnNothingMovesAndTheDialogStaysAway)
{
    startWith(2);
    root().mnuFavoritenShow.Tag = u"1"_s;
    catalogue().remove(1);
    const std::string before = databaseText();
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("*Zwei Drei", names());
    root().mnuVerschiebung[4].Click();
    EXPECT_EQ(before, databaseText());
}

TEST_F(Reordering, WithoutACopyNoStepIsMade)
{
    startWith(2);
    const std::string before = databaseText();
    desktop.log.failNext(u"files.copy"_s);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("Eins *Zwei Drei", names());
    EXPECT_EQ(before, databaseText()) << "the extras would be those of another order";
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(Reordering, OneOfAHundredAndSixtyRowsMovesWithTheLimitTold)
{
    QByteArray index;
    const QString path = putList(u"Alle"_s, {putTrack(u"a"_s)});
    for (int number = 1; number <= 160; ++number)
        index += indexRow(number, {.name = u"L%1"_s.arg(number), .path = path, .description = u"T%1"_s.arg(number)});
    putDatabase(index);
    setting(u"Error"_s, dwordSetting(0));
    start();
    click(160);
    setting(u"CheckEntrys"_s, dwordSetting(1));
    desktop.messages.script({.answer = Answer::Ok,
                             .entered = {},
                             .title = u" Wiedergabelisten verwalten"_s,
                             .text = {},
                             .meanwhile = [this] {
                                 EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
                                 EXPECT_EQ("1", root().bMoveDown.Tag.toStdString());
                             }});
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
    EXPECT_EQ("0", root().bMoveDown.Tag.toStdString());
    EXPECT_EQ("158|L160|Alle.m3u|1|T160|01.02.2003||", keys(159));
    EXPECT_EQ("158|L159|Alle.m3u|2|T159|01.02.2003||", keys(160));
    click(160);
    desktop.messages.answer(Answer::Ok);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("|||||||", keys(161));
    EXPECT_EQ("159|L159|Alle.m3u|1|T159|01.02.2003||", keys(160));
}

TEST_F(Reordering, AStepWithoutADatabaseLosesNoList)
{
    startWith(2);
    desktop.disk().remove(database());
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("*Zwei Eins Drei", names());
    EXPECT_EQ("Zwei", key(1, 'b'));
    EXPECT_EQ("Eins", key(2, 'b'));
    EXPECT_EQ("Drei", key(3, 'b'));
}

TEST_F(Reordering, AListThatIsNotInSightMovesWithItsOwnDescriptionAndDate)
{
    startWith(1);
    catalogue().select(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
}

TEST_F(Reordering, AnEmptyListMovesWithItsOwnDescriptionAndDate)
{
    startWith(1);
    put(listPath(u"Zwei"_s), "\r\n");
    click(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|1|Text Zwei|02.01.2001|1|", keys(1));
}

TEST_F(Reordering, AMissingListThatWasCancelledMovesWithItsOwnDescriptionAndDate)
{
    startWith(1);
    desktop.disk().remove(listPath(u"Zwei"_s));
    desktop.messages.answer(Answer::Cancel);
    click(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
}

TEST_F(Reordering, ADescriptionOf160AndOneOf161CharactersGoWithTheirRow)
{
    for (const int length : {160, 161}) {
        SCOPED_TRACE(length);
        desktop.newProcess();
        startWith(1);
        const QString text(length, u'x');
        desktop.messages.enter(text);
        desktop.messages.answer(Answer::No);
        root().mnuBeschriftung.Click();
        desktop.events().run(root().Timer2.Interval);
        root().mnuVerschiebung[2].Click();
        EXPECT_EQ(text.toStdString(), key(2, 'e'));
        EXPECT_EQ("Text Zwei", key(1, 'e'));

        // What a click shows of it is taken along as well.
        click(1);
        click(2);
        desktop.events().run(root().Timer2.Interval);
        EXPECT_EQ(text.toStdString(), root().LSoundCaption.Caption.value().toStdString());
        root().mnuVerschiebung[1].Click();
        EXPECT_EQ(text.toStdString(), key(1, 'e'));
        EXPECT_EQ("Text Zwei", key(2, 'e'));
    }
}

TEST_F(Reordering, AListThatIsOpenedInsideAStepGivesNothingToTheMovedOne)
{
    for (int at = 1; at <= 3; ++at) {
        SCOPED_TRACE(at);
        desktop.newProcess();
        startWith(2);
        desktop.events().atYield(at, [this] { click(3); });
        root().mnuVerschiebung[1].Click();
        EXPECT_EQ("Text Zwei", key(1, 'e'));
        EXPECT_EQ("02.01.2001", key(1, 'f'));
    }
}

TEST_F(Reordering, BehindTheSaveTheCheckComesBackThenTheNeighboursKeysThenThoseOfTheMovedRow)
{
    startWith(2);
    root().mnuVerschiebung[1].Click();
    const std::string done = lines(desktop.log.take());
    const std::size_t on = done.find("\"CheckEntrys\" dword 1");
    ASSERT_NE(on, std::string::npos) << done;
    const std::size_t neighbour = done.find("Text Eins", on);
    const std::size_t moved = done.find("Text Zwei", on);
    ASSERT_NE(neighbour, std::string::npos) << done.substr(on);
    ASSERT_NE(moved, std::string::npos) << done.substr(on);
    EXPECT_LT(neighbour, moved) << done.substr(on);
    EXPECT_NE(done.find("files.", done.find("files.copy")), std::string::npos);
    EXPECT_GT(on, done.find("Drei.m3u")) << "the save comes first";
}

TEST_F(Reordering, TheRowThatWasSelectedMovesThoughTheSequenceGoesOnToAnotherOneInTheWait)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500}, [this] { (void)openRow(root(), 3); });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("Zwei Eins *Drei", names());
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
}

TEST_F(Reordering, ADescriptionThatWasShownOfAnotherListIsNotTakenAlong)
{
    const QString own = QString(200, u'x');
    for (const QString& description : {QString(), own}) {
        SCOPED_TRACE(description.size());
        desktop.newProcess();
        startWith(1);
        writeIndexValue(root(), database(), 1, 'e', description);
        desktop.disk().remove(listPath(u"Drei"_s));
        desktop.messages.answer(Answer::Cancel);
        click(3);
        desktop.events().run(root().Timer2.Interval);
        ASSERT_EQ("Text Drei", root().LSoundCaption.Caption.value().toStdString());
        click(1);
        desktop.events().run(root().Timer2.Interval);
        root().mnuVerschiebung[2].Click();
        EXPECT_EQ("001|Eins|Eins.m3u|2|" + description.toStdString() + "|01.01.2001||", keys(2));
        EXPECT_EQ("Text Drei", key(3, 'e'));
    }
}

TEST_F(Reordering, ADescriptionThatTheWindowShowsAloneIsTakenAlong)
{
    startWith(1);
    writeIndexValue(root(), database(), 1, 'e', {});
    root().LSoundCaption.Caption = u"Neu im Fenster"_s;
    root().LSoundCaption.Tag = u"1"_s;
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("001|Eins|Eins.m3u|2|Neu im Fenster|01.01.2001||", keys(2));
}

TEST_F(Reordering, AnEdgeStepBehindAGapInTheNumbersDoublesNoList)
{
    startWith(1);
    deleteEntry(root(), database(), 2);
    reload();
    ASSERT_EQ("Eins *Drei", names());
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("-|-|-|-|-|-|-|", keys(3));
    reload();
    EXPECT_EQ("Eins *Drei", names());
}

} // namespace orvantine::fake
