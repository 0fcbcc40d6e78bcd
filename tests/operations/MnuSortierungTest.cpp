
#include "operations/TrackListOperationsFixture.h"

#include "platform/FileDirPath.h"
#include "shell/MainWindow.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST_F(TrackListOperations, SortingByNameIgnoresCaseAndNumbersTheRowsAnew)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("a B *c", names());
    EXPECT_EQ("001 002 003", column(0));
    EXPECT_EQ("01 02 03", column(1));
    EXPECT_EQ("box title \" Orvanten Manager\" text \"Soll die geänderte Trackliste automatisch gespeichert werden ? "
              "\" icon exclamation buttons yes-no answer no",
              boxes());
}

TEST_F(TrackListOperations, AReloadEndsTheSorting)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_TRUE(tracks().sorted());
    catalogue().Tag = u"0"_s;
    click(1);
    EXPECT_FALSE(tracks().sorted());
    EXPECT_EQ("*c a B", names());
}

TEST_F(TrackListOperations, OnNoTheFileStaysAndTheListKeepsItsNewOrder)
{
    open();
    const std::string before = file();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ(before, file());
    EXPECT_EQ("a B *c", names());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, OnYesTheNewOrderIsWritten)
{
    open();
    answerSort(Answer::Yes);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("/m/a.mp3\r\n/m/B.mp3\r\n/m/c.mp3\r\n", file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, TheQuestionComesInTheWaitState)
{
    open();
    desktop.messages.script({.answer = Answer::No, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] {
                                 EXPECT_EQ(MousePointer::Hourglass, root().Pointer.value());
                                 EXPECT_FALSE(catalogue().Enabled.value());
                                 EXPECT_FALSE(tracks().Enabled.value());
                                 EXPECT_TRUE(root().buttonsDisabled);
                             }});
    root().mnuSortierung[1].Click();
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, FileNamesAreSortedByTheShownOneOfPathAndFile)
{
    open({u"z/a"_s, u"y/b"_s, u"x/c"_s});
    mnuOrvmenu_Click(root(), 1);
    answerSort(Answer::No);
    root().mnuSortierung[2].Click();
    EXPECT_EQ("/m/x/c.mp3 /m/y/b.mp3 /m/z/a.mp3", column(3));
    mnuOrvmenu_Click(root(), 2);
    answerSort(Answer::No);
    root().mnuSortierung[2].Click();
    EXPECT_EQ("a.mp3 b.mp3 c.mp3", column(4));
}

TEST_F(TrackListOperations, NumbersAreSortedAsTexts)
{
    QStringList many;
    for (int i = 1; i <= 150; ++i)
        many += u"t%1"_s.arg(i);
    open(many);
    answerSort(Answer::No);
    root().mnuSortierung[3].Click();
    EXPECT_EQ("10", tracks().subItem(10, 1).toStdString());
    EXPECT_EQ("t10", tracks().subItem(10, 2).toStdString());
    EXPECT_EQ("t100", tracks().subItem(11, 2).toStdString()) << "the text 100 stands before 11";
    EXPECT_EQ("150", tracks().subItem(150, 1).toStdString());
    EXPECT_EQ("150", tracks().text(150).toStdString());
    EXPECT_EQ("01", tracks().subItem(1, 1).toStdString());
}

TEST_F(TrackListOperations, SortingNeverTurnsAround)
{
    open();
    for (int i = 0; i < 2; ++i) {
        answerSort(Answer::No);
        root().mnuSortierung[1].Click();
    }
    EXPECT_EQ("a B *c", names());
}

TEST_F(TrackListOperations, EqualTextsKeepTheirOrderAndUmlautsStandBehindZ)
{
    open({u"x/ä"_s, u"2/z"_s, u"1/Z"_s, u"3/z"_s});
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("/m/2/z.mp3 /m/1/Z.mp3 /m/3/z.mp3 /m/x/ä.mp3", column(3));
}

TEST_F(TrackListOperations, TheRowThatIsLastGetsTheMark)
{
    open();
    for (int row = 1; row <= 3; ++row)
        tracks().setIcons(row, u"Icon_1"_s);
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("Icon_1", tracks().item(1).SmallIcon.toStdString());
    EXPECT_EQ("Icon_1", tracks().item(2).SmallIcon.toStdString());
    EXPECT_EQ("Icon_2", tracks().item(3).SmallIcon.toStdString());
    EXPECT_EQ("Icon_2", tracks().item(3).SubItems[0].ReportIcon.toStdString());
}

TEST_F(TrackListOperations, SortingSetsADifferingTrackCountAndLeavesAnEqualOneAsItIsWritten)
{
    open();
    catalogue().setSubItem(1, 3, u"7"_s);
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("3", catalogue().subItem(1, 3).toStdString());
    catalogue().setSubItem(1, 3, u"03"_s);
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("03", catalogue().subItem(1, 3).toStdString()) << "the compare is one of numbers";
}

TEST_F(TrackListOperations, AnEmptyPathIsToldAndKeepsTheSortedListUnsaved)
{
    open();
    catalogue().setSubItem(1, 2, {});
    desktop.messages.answer(Answer::Ok, u" Wiedergabeliste speichern"_s,
                            u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden. "_s);
    root().mnuSortierung[1].Click();
    EXPECT_NE(std::string::npos, boxes().find("icon critical buttons ok answer ok"));
    EXPECT_EQ("a B *c", names());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, AnEmptyListStillAsksWhetherToSave)
{
    open();
    tracks().clear();
    answerSort(Answer::Yes);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("\r\n", file());
    EXPECT_EQ("0", catalogue().subItem(1, 3).toStdString());
}

TEST_F(TrackListOperations, AListThatIsOpenedWhileTheQuestionIsUpIsNotSaved)
{
    open();
    const std::string before = file(u"Andere"_s);
    desktop.messages.script(
        {.answer = Answer::Yes, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] { click(2); }});
    const QString sorted = FileDirPath::titleOf(root().trackList.path());
    root().mnuSortierung[1].Click();
    EXPECT_EQ(before, file(u"Andere"_s));
    EXPECT_EQ(root().quietLine.Caption.value(),
              u"„%1“ wurde nicht gespeichert: Inzwischen ist eine andere Playliste offen."_s.arg(sorted));
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, ASaveThatFailsLeavesTheWaitState)
{
    open();
    desktop.log.failNext(u"files.writeText"_s);
    const std::string before = file();
    answerSort(Answer::Yes);
    root().mnuSortierung[1].Click();
    EXPECT_EQ(before, file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, AClickOnAColumnHeadNumbersAndSavesNothing)
{
    open();
    const std::string before = file();
    tracks().ColumnClick(3);
    EXPECT_EQ("a B *c", names());
    EXPECT_EQ("102 103 101", column(0));
    EXPECT_EQ("02 03 01", column(1));
    EXPECT_EQ(before, file());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, AHeadWhoseTextTwoColumnsShareSortsByTheLaterOne)
{
    open({u"z/a"_s, u"y/b"_s, u"x/c"_s});
    tracks().setColumnText(5, tracks().columnText(4));
    tracks().ColumnClick(4);
    EXPECT_EQ(5, tracks().sortColumn());
    EXPECT_EQ("a.mp3 b.mp3 c.mp3", column(4));
    EXPECT_TRUE(tracks().sorted());
}

TEST_F(TrackListOperations, EventsAreServedAtEveryRowInTheWaitState)
{
    open();
    for (int row = 1; row <= 3; ++row)
        tracks().setIcons(row, u"Icon_1"_s);
    answerSort(Answer::No);
    bool looked = false;
    desktop.events().after(0ms, [&] {
        looked = true;
        EXPECT_EQ(MousePointer::Hourglass, root().Pointer.value());
        EXPECT_FALSE(catalogue().Enabled.value());
        EXPECT_FALSE(tracks().Enabled.value());
        EXPECT_TRUE(root().buttonsDisabled);
        EXPECT_EQ("001 103 101", column(0)) << "row 1 alone has its number";
        EXPECT_EQ("01 03 01", column(1));
        EXPECT_EQ("Icon_1", tracks().item(1).SmallIcon.toStdString());
        EXPECT_EQ("Icon_2", tracks().item(3).SmallIcon.toStdString()) << "the last row has the mark";
        EXPECT_EQ("Icon_2", tracks().item(3).SubItems[0].ReportIcon.toStdString());
    });
    const int yields = desktop.events().yields();
    root().mnuSortierung[1].Click();
    EXPECT_TRUE(looked);
    EXPECT_EQ(3, desktop.events().yields() - yields);
}

TEST_F(TrackListOperations, AListThatIsOpenedWhileTheRowsAreNumberedEndsTheSorting)
{
    open();
    const std::string before = file();
    const std::string other = file(u"Andere"_s);
    desktop.events().after(0ms, [this] { click(2); });
    root().mnuSortierung[1].Click();
    EXPECT_EQ("", boxes());
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("101 102", column(0));
    EXPECT_EQ(before, file());
    EXPECT_EQ(other, file(u"Andere"_s));
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, ANewOrEmptyListIsNotSorted)
{
    open();
    put(listPath(u"Andere"_s), "");
    answerSort(Answer::No);
    root().mnuSortierung[3].Click();
    ASSERT_TRUE(tracks().sorted());
    click(2);
    EXPECT_EQ(0, tracks().count());
    EXPECT_FALSE(tracks().sorted());

    click(1);
    answerSort(Answer::No);
    root().mnuSortierung[3].Click();
    ASSERT_TRUE(tracks().sorted());
    std::string expected;
    for (int i = 1; i <= 101; ++i) {
        const QString path = u"/neu/%1.mp3"_s.arg(i, 3, 10, QLatin1Char('0'));
        put(path, "mp3");
        expected += path.toStdString() + "\r\n";
    }
    catalogue().Drop({u"/neu"_s});
    EXPECT_FALSE(tracks().sorted());
    EXPECT_EQ(expected, file(u"neu"_s));
}

TEST_F(TrackListOperations, TheListInSightIsSortedAndMovedWhicheverRowIsSelected)
{
    open();
    catalogue().setSubItem(2, 3, u"7"_s);
    clickMissing();
    ASSERT_EQ(2, catalogue().selectedRow());
    answerSort(Answer::Yes);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("a B *c", names());
    EXPECT_EQ("/m/a.mp3\r\n/m/B.mp3\r\n/m/c.mp3\r\n", file());
    tracks().select(1);
    root().trackList.hold().endSorting();
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("B *a c", names());
    EXPECT_EQ("/m/B.mp3\r\n/m/a.mp3\r\n/m/c.mp3\r\n", file());
    EXPECT_EQ("(missing)", file(u"Andere"_s));
    EXPECT_EQ("3", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("7", catalogue().subItem(2, 3).toStdString());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, RowsOfTheListBeforeAreNeitherSortedNorMovedNorCounted)
{
    open();
    clickEmptied();
    const std::string before = file();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("", names()) << "the list's own entries, none, are in sight";
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());

    catalogue().Tag = u"0"_s;
    click(1);
    clickEmptied();
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("", names());
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
    EXPECT_EQ(before, file());
    EXPECT_EQ("\r\n", file(u"Andere"_s));
    EXPECT_TRUE(outOfWait());
    desktop.messages.take();
}

TEST_F(TrackListOperations, TheQuestionBearsTheCaptionOfTheMainWindow)
{
    open();
    root().Caption = u"X"_s;
    desktop.messages.answer(Answer::No, u" X"_s, u"Soll die geänderte Trackliste automatisch gespeichert werden ? "_s);
    root().mnuSortierung[1].Click();
}

TEST_F(TrackListOperations, ThePopUpSortsByTheSameColumns)
{
    open();
    for (int index = 1; index <= 3; ++index) {
        answerSort(Answer::No);
        root().mnxSpecials[index].Click();
        const int column = tracks().sortColumn();
        answerSort(Answer::No);
        root().mnuSortierung[index].Click();
        EXPECT_EQ(column, tracks().sortColumn());
        EXPECT_EQ(std::vector({3, 4, 2}).at(static_cast<std::size_t>(index - 1)), column);
    }
}

TEST_F(TrackListOperations, FileNamesAreSortedByTheFifthColumnWhereNeitherViewIsChosen)
{
    open({u"z/a"_s, u"y/b"_s, u"x/c"_s});
    root().mnuOrvmenu[1].Checked = false;
    root().mnuOrvmenu[2].Checked = false;
    answerSort(Answer::No);
    root().mnuSortierung[2].Click();
    EXPECT_EQ(5, tracks().sortColumn());
    EXPECT_EQ("a.mp3 b.mp3 c.mp3", column(4));
}

TEST_F(TrackListOperations, WithoutASelectedPlaylistTheListInSightIsSaved)
{
    open();
    catalogue().clearSelection();
    answerSort(Answer::Yes);
    root().mnuSortierung[1].Click();
    EXPECT_EQ("a B *c", names());
    EXPECT_EQ("/m/a.mp3\r\n/m/B.mp3\r\n/m/c.mp3\r\n", file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, ATrackThatIsAddedToASortedListFallsIntoItsPlace)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    const QString added = putTrack(u"b2"_s);
    desktop.clipboard.content = u'"' + added + u'"';
    desktop.messages.answer(Answer::Yes);
    tracks().GotFocus();
    root().mnuEditPaste.Click();
    EXPECT_EQ("*a B b2 c", names());
    EXPECT_EQ("001 002 104 003", column(0));
    EXPECT_EQ("/m/a.mp3\r\n/m/B.mp3\r\n/m/b2.mp3\r\n/m/c.mp3\r\n", file());
    EXPECT_TRUE(tracks().sorted());
}

TEST_F(TrackListOperations, FiftyThousandTracksFallIntoTheirPlaces)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    QStringList many;
    for (int i = 0; i < 50'000; ++i)
        many += u"/m/b%1.mp3"_s.arg(49'999 - i, 5, 10, QLatin1Char('0'));
    tracks().Drop(many);
    EXPECT_EQ(50'003, tracks().count());
    EXPECT_EQ("b00000", tracks().subItem(3, 2).toStdString());
    EXPECT_EQ("b49999", tracks().subItem(50'002, 2).toStdString());
    EXPECT_EQ("c", tracks().subItem(50'003, 2).toStdString());
    EXPECT_TRUE(file().starts_with("/m/a.mp3\r\n/m/B.mp3\r\n/m/b00000.mp3\r\n"));
}

TEST_F(TrackListOperations, TheHeadOfThePathsSortsByTheFullPathAndThatOfTheFilesByTheName)
{
    open({u"z/a"_s, u"y/b"_s, u"x/c"_s});
    for (const int view : {1, 2}) {
        mnuOrvmenu_Click(root(), view);
        EXPECT_EQ(view == 1, tracks().columnWidth(4) > 0);
        EXPECT_EQ(view == 2, tracks().columnWidth(5) > 0);
        EXPECT_EQ("Path", tracks().columnText(4).toStdString());
        EXPECT_EQ("Datei", tracks().columnText(5).toStdString());
        tracks().ColumnClick(4);
        EXPECT_EQ("/m/x/c.mp3 /m/y/b.mp3 /m/z/a.mp3", column(3)) << view;
        tracks().ColumnClick(5);
        EXPECT_EQ("a.mp3 b.mp3 c.mp3", column(4)) << view;
    }
}

TEST_F(TrackListOperations, ATrackIsDrawnOutAsTheFileOfItsRow)
{
    open();
    EXPECT_EQ("/m/a.mp3", tracks().DragFile(2).value_or("none").toStdString());
    tracks().setSubItem(2, 3, u"/M/A.MP3"_s);
    EXPECT_EQ("/m/a.mp3", tracks().DragFile(2).value_or("none").toStdString()) << "the name that the host has";
    desktop.disk().remove(u"/m/a.mp3"_s);
    EXPECT_FALSE(tracks().DragFile(2).has_value());
    EXPECT_FALSE(tracks().DragFile(0).has_value());
    EXPECT_FALSE(catalogue().DragFile);
}

} // namespace orvantine::fake
