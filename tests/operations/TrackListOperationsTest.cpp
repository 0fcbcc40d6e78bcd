#include "operations/TrackListOperations.h"

#include "catalogue/CatalogueWorld.h"

#include "app/IniFiles.h"
#include "operations/ListInput.h"
#include "playlists/ReadPlaylists.h"
#include "shell/MainWindow.h"

#include <QSet>

#include <functional>

namespace orvantine::fake {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// "Liste" with the tracks c, a, B in this order, and "Andere" with two tracks. "Liste" is open and selected.
class TrackListOperations : public CatalogueWorld
{
protected:
    void open(const QStringList& tracks = {u"c"_s, u"a"_s, u"B"_s})
    {
        setting(u"Error"_s, dwordSetting(0));
        QStringList paths;
        for (const QString& track : tracks)
            paths += putTrack(track);
        const QString other = putList(u"Andere"_s, {putTrack(u"Andere 1"_s), putTrack(u"Andere 2"_s)});
        const QString count = QString::number(tracks.size());
        putDatabase(indexRow(1, {.name = u"Liste"_s, .path = putList(u"Liste"_s, paths), .tracks = count}) +
                        indexRow(2, {.name = u"Andere"_s, .path = other}),
                    "[TagInfo]\r\n" + databaseNames);
        start();
        click(1);
        desktop.messages.take();
        forgetCalls();
    }

    /// Names of the tracks, the selected one with a star.
    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= tracks().count(); ++row)
            texts += (row == tracks().selectedRow() ? u"*"_s : QString()) + tracks().subItem(row, 2);
        return texts.join(u' ').toStdString();
    }
    [[nodiscard]] std::string column(int sub)
    {
        QStringList texts;
        for (int row = 1; row <= tracks().count(); ++row)
            texts += sub == 0 ? tracks().text(row) : tracks().subItem(row, sub);
        return texts.join(u' ').toStdString();
    }
    [[nodiscard]] std::string file(const QString& list = u"Liste"_s) { return bytes(listPath(list)).toStdString(); }

    void answerSort(Answer answer)
    {
        desktop.messages.answer(answer, u" Orvanten Manager"_s,
                                u"Soll die geänderte Trackliste automatisch gespeichert werden ? "_s);
    }
    void answerRemove(Answer answer)
    {
        desktop.messages.answer(answer, u" Dateien entfernen"_s,
                                u"Möchten Sie die Sounddatei aus der Wiedergabeliste entfernen ? "_s);
    }
    /// The user does something inside the reading that follows the removal of row 3.
    void removeLastWhileTheReload(const std::function<void()>& does)
    {
        tracks().select(3);
        answerRemove(Answer::Ok);
        const QMetaObject::Connection watch = QObject::connect(
            &tracks(), &QAbstractItemModel::modelReset, &tracks(), [&] { desktop.events().after(0ms, does); },
            Qt::SingleShotConnection);
        root().mnuFileKill.Click();
    }
    /// The click finds "Andere" missing, and the user leaves it at that: the tracks of "Liste" stay in sight.
    void clickMissing()
    {
        desktop.disk().remove(listPath(u"Andere"_s));
        answerMissing();
        click(2);
    }
    void answerMissing()
    {
        desktop.messages.answer(Answer::Cancel, u" Andere"_s,
                                u"Die folgende Wiedergabeliste ist nicht vorhanden: \n"_s + listPath(u"Andere"_s));
    }
    /// "Andere" has been emptied: it shows the first track of "Liste".
    void clickEmptied()
    {
        put(listPath(u"Andere"_s), "\r\n");
        click(2);
        ASSERT_EQ("/m/c.mp3", column(3));
    }
    [[nodiscard]] std::string nameOf(const QString& track)
    {
        return IniFiles::ReadValue(root(), database(), u"TagInfo"_s, track).toStdString();
    }
    void enterName(const QString& name)
    {
        desktop.messages.script({.answer = Answer::Ok,
                                 .entered = name,
                                 .title = u" Wiedergabeliste umbenennen"_s,
                                 .text = u"Geben Sie einen neuen Namen für die Playliste ein:"_s,
                                 .meanwhile = {}});
    }
    [[nodiscard]] bool outOfWait()
    {
        return root().Pointer.value() == MousePointer::Default && catalogue().Enabled.value() &&
               tracks().Enabled.value() && !root().buttonsDisabled;
    }
    [[nodiscard]] QString picture(const QString& name) const { return data() + u"Resource/"_s + name; }

    QByteArray databaseNames;
};

} // namespace

// Sorting

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
    root().mnuSortierung[1].Click();
    EXPECT_EQ(before, file(u"Andere"_s));
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

TEST_F(TrackListOperations, TheRowsOfAnotherListAreNeitherSortedNorMovedNorCounted)
{
    for (const bool emptied : {false, true}) {
        SCOPED_TRACE(emptied);
        open();
        catalogue().setSubItem(2, 3, u"2"_s);
        const std::string before = file();
        if (emptied)
            clickEmptied();
        else
            clickMissing();
        const std::string other = file(u"Andere"_s);
        if (emptied)
            answerSort(Answer::No);
        else
            answerMissing();
        root().mnuSortierung[1].Click();
        EXPECT_EQ(emptied ? "" : "*c a B", names());
        EXPECT_EQ(emptied ? "0" : "2", catalogue().subItem(2, 3).toStdString());

        if (emptied) {
            catalogue().Tag = u"0"_s;
            click(1);
            clickEmptied();
        } else {
            answerMissing();
        }
        catalogue().setSubItem(2, 3, u"2"_s);
        root().mnuMoveEntry[2].Click();
        EXPECT_EQ(emptied ? "" : "*c a B", names());
        EXPECT_EQ(emptied ? "0" : "2", catalogue().subItem(2, 3).toStdString());
        EXPECT_EQ(before, file());
        EXPECT_EQ(other, file(u"Andere"_s));
        EXPECT_TRUE(outOfWait());
        desktop.messages.take();
        desktop.newProcess();
    }
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

TEST_F(TrackListOperations, WithoutASelectedPlaylistTheSortedListIsNotSaved)
{
    open();
    const std::string before = file();
    catalogue().clearSelection();
    desktop.messages.answer(Answer::Ok, u" Wiedergabeliste speichern"_s,
                            u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden. "_s);
    root().mnuSortierung[1].Click();
    EXPECT_NE(std::string::npos, boxes().find("icon critical"));
    EXPECT_EQ("a B *c", names());
    EXPECT_EQ(before, file());
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

// Moving

TEST_F(TrackListOperations, AMovedRowKeepsItsNumbersAndIsWrittenAtOnce)
{
    open();
    tracks().select(3);
    root().mnuMoveEntry[1].Click();
    EXPECT_EQ("c *B a", names());
    EXPECT_EQ("101 103 102", column(0));
    EXPECT_EQ("01 03 02", column(1));
    EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n/m/a.mp3\r\n", file());
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("c a *B", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n/m/B.mp3\r\n", file());
    EXPECT_EQ("", calls({u"cue"_s}));
}

TEST_F(TrackListOperations, TheEntriesOfThePopUpMoveToo)
{
    open();
    root().mnxVerschieben[2].Click();
    EXPECT_EQ("a *c B", names());
    root().mnxVerschieben[1].Click();
    EXPECT_EQ("*c a B", names());
}

TEST_F(TrackListOperations, MovingTheTopRowUpPlaysTheCueAndStillSaves)
{
    open();
    root().mnuMoveEntry[1].Click();
    EXPECT_EQ("*c a B", names());
    EXPECT_NE(std::string::npos, calls({u"cue"_s}).find("PLAY"));
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n/m/B.mp3\r\n", file());
}

TEST_F(TrackListOperations, MovingTheLastRowDownPlaysTheOtherCueAndStillSaves)
{
    open();
    tracks().select(3);
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("c a *B", names());
    EXPECT_NE(std::string::npos, calls({u"cue"_s}).find("STOP"));
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n/m/B.mp3\r\n", file());
}

TEST_F(TrackListOperations, TheMoveMarkStandsForTheTimeOfTheMove)
{
    open();
    QString seen;
    QObject::connect(&tracks(), &QAbstractItemModel::rowsRemoved, &tracks(), [&] { seen = root().bMoveDown.Tag; });
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("1", seen.toStdString());
    EXPECT_EQ("0", root().bMoveDown.Tag.toStdString());
}

TEST_F(TrackListOperations, TheListGetsTheFocusBehindAMove)
{
    open();
    int focused = 0;
    tracks().SetFocus = [&focused] { ++focused; };
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ(1, focused);
    tracks().SetFocus = [] {};
}

TEST_F(TrackListOperations, TheButtonDownLeavesASortedListSortedSoTheRowFallsBack)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    tracks().select(1);
    root().bEntryDown.Click();
    EXPECT_EQ("*a B c", names());
    EXPECT_TRUE(tracks().sorted());
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("*a B c", names());
}

TEST_F(TrackListOperations, TheButtonUpEndsTheSortingFirst)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    tracks().select(3);
    root().bEntryUp.Click();
    EXPECT_EQ("a *c B", names());
    EXPECT_FALSE(tracks().sorted());
    root().bEntryDown.Click();
    EXPECT_EQ("a B *c", names());
}

TEST_F(TrackListOperations, TheMenuUpLeavesASortedListSortedSoTheRowFallsBack)
{
    open();
    answerSort(Answer::No);
    root().mnuSortierung[1].Click();
    tracks().select(3);
    root().mnuMoveEntry[1].Click();
    EXPECT_EQ("a B *c", names());
    EXPECT_TRUE(tracks().sorted());
    root().mnxVerschieben[1].Click();
    EXPECT_EQ("a B *c", names());
    EXPECT_TRUE(tracks().sorted());
}

TEST_F(TrackListOperations, ARowThatMovesAmongNumbersOutOfTextOrderFallsBeforeTheFirstGreaterOne)
{
    QStringList many;
    for (int i = 1; i <= 150; ++i)
        many += u"t%1"_s.arg(i);
    open(many);
    answerSort(Answer::No);
    root().mnuSortierung[3].Click();
    for (const int row : {150, 90}) {
        tracks().select(row);
        const QString number = tracks().subItem(row, 1);
        root().mnuMoveEntry[1].Click();
        EXPECT_EQ(number.toStdString(), tracks().subItem(tracks().selectedRow(), 1).toStdString());
        EXPECT_EQ(row == 150 ? 16 : 90, tracks().selectedRow());

        EXPECT_EQ(150, tracks().count());
        QString shown;
        QSet<QString> once;
        for (int i = 1; i <= tracks().count(); ++i) {
            shown += tracks().subItem(i, 3) + u"\r\n"_s;
            once += tracks().subItem(i, 3);
        }
        EXPECT_EQ(150, once.size());
        EXPECT_EQ(shown.toStdString(), file());
    }
}

TEST_F(TrackListOperations, AMoveWithoutASelectedRowOnlySaves)
{
    open();
    for (const int index : {1, 2}) {
        tracks().remove(tracks().count());
        tracks().clearSelection();
        root().mnuMoveEntry[index].Click();
        EXPECT_EQ(index == 1 ? "c a" : "c", names());
        EXPECT_EQ(index == 1 ? "/m/c.mp3\r\n/m/a.mp3\r\n" : "/m/c.mp3\r\n", file());
    }
    EXPECT_EQ("", calls({u"cue"_s}));
}

TEST_F(TrackListOperations, AListOfOneRowPlaysTheCueOfTheWayAlone)
{
    open({u"a"_s});
    root().mnuMoveEntry[1].Click();
    EXPECT_NE(std::string::npos, calls({u"cue"_s}).find("PLAY"));
    EXPECT_EQ(std::string::npos, calls({u"cue"_s}).find("STOP"));
    forgetCalls();
    root().mnuMoveEntry[2].Click();
    EXPECT_NE(std::string::npos, calls({u"cue"_s}).find("STOP"));
    EXPECT_EQ(std::string::npos, calls({u"cue"_s}).find("PLAY"));
    EXPECT_EQ("/m/a.mp3\r\n", file());
}

TEST_F(TrackListOperations, TheMoveMarkIsClearedBeforeTheSaveAndTheFocusComesBehindIt)
{
    open();
    const std::string before = file();
    QStringList steps;
    desktop.events().after(0ms, [&] {
        EXPECT_EQ("0", root().bMoveDown.Tag.toStdString());
        EXPECT_EQ(MousePointer::Hourglass, root().Pointer.value());
        EXPECT_EQ(before, file());
        steps += u"save"_s;
    });
    tracks().SetFocus = [&] {
        EXPECT_EQ("/m/a.mp3\r\n/m/c.mp3\r\n/m/B.mp3\r\n", file());
        steps += u"focus"_s;
    };
    root().mnuMoveEntry[2].Click();
    EXPECT_EQ("save focus", steps.join(u' ').toStdString());
    tracks().SetFocus = [] {};
}

TEST_F(TrackListOperations, ACommandInsideAnotherOneIsPassedOver)
{
    open();
    desktop.messages.script({.answer = Answer::No, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] {
                                 root().bEntryDown.Click();
                                 root().mnuFileKill.Click();
                                 root().mnuSortierung[3].Click();
                                 root().mnuEditPaste.Click();
                             }});
    root().mnuSortierung[1].Click();
    EXPECT_EQ("a B *c", names());
}

// Removing

TEST_F(TrackListOperations, ARemovedTrackLeavesListFileAndNames)
{
    databaseNames = "/m/a.mp3=Band - A\r\n/m/c.mp3=Band - C\r\n";
    open();
    tracks().select(2);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("*Band - C B", names());
    EXPECT_EQ("101 102", column(0)) << "the reload numbers the rows";
    EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n", file());
    EXPECT_EQ("", IniFiles::ReadValue(root(), database(), u"TagInfo"_s, u"/m/a.mp3"_s).toStdString());
    EXPECT_EQ("Band - C", IniFiles::ReadValue(root(), database(), u"TagInfo"_s, u"/m/c.mp3"_s).toStdString());
    EXPECT_EQ("2", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1d"_s).toStdString());
    EXPECT_EQ("mp3", bytes(u"/m/a.mp3"_s).toStdString()) << "no audio file is touched";
    EXPECT_EQ("box title \" Dateien entfernen\" text \"Möchten Sie die Sounddatei aus der Wiedergabeliste entfernen ? "
              "\" icon exclamation buttons ok-cancel answer ok",
              boxes());
}

TEST_F(TrackListOperations, CancelRemovesNothing)
{
    open();
    answerRemove(Answer::Cancel);
    root().mnuFileKill.Click();
    EXPECT_EQ("*c a B", names());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, TheRowAboveTheRemovedOneIsSelected)
{
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    tracks().select(3);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("a *b d", names());
}

TEST_F(TrackListOperations, ARemovalLeavesTheRowsWhereTheyStandOnTheScreen)
{
    QStringList shown;
    tracks().TopRow = [] { return 2; };
    tracks().ShowFromRow = [&](int row) { shown += u"from %1"_s.arg(row); };
    tracks().EnsureVisible = [&](int row) { shown += u"in sight %1"_s.arg(row); };
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    tracks().select(3);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("from 2, from 2, from 2, in sight 2", shown.join(u", "_s).toStdString());
}

TEST_F(TrackListOperations, RemovingRowOneLeavesRowOneSelected)
{
    open();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("*a B", names());
}

TEST_F(TrackListOperations, RemovingTheLastRemainingRowLeavesTheListEmpty)
{
    open({u"a"_s});
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ(0, tracks().selectedRow());
    EXPECT_EQ("\r\n", file());
    EXPECT_EQ("", root().tPlayliste.Text.value().toStdString());
    EXPECT_EQ("0", catalogue().subItem(1, 3).toStdString());
    catalogue().Tag = u"0"_s;
    catalogue().Click();
    EXPECT_EQ(0, tracks().count()) << "the row does not come back";
}

TEST_F(TrackListOperations, AShortNeighbourDoesNotBringTheRemovedOneBack)
{
    open();
    root().mnuLokalePlayliste.Checked = false;
    put(u"/k/b.mp3"_s, "mp3");
    put(u"/k/a.mp3"_s, "mp3");
    put(u"/k/L.m3u"_s, "b.mp3\r\na.mp3\r\n");
    catalogue().setSubItem(2, 2, u"/k/L.m3u"_s);
    click(2);
    ASSERT_EQ("*b.mp3 a.mp3", names());
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("/k/a.mp3", column(3));
    EXPECT_EQ("/k/a.mp3\r\n", bytes(u"/k/L.m3u"_s).toStdString());
}

TEST_F(TrackListOperations, ARunningPlayerIsStoppedBeforeTheQuestion)
{
    open();
    root().pSoundPlayer.Click();
    desktop.messages.script({.answer = Answer::Cancel, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] {
                                 EXPECT_FALSE(root().pPausePlayer.Enabled.value());
                             }});
    root().mnuFileKill.Click();
}

TEST_F(TrackListOperations, APlayerThatDoesNotRunIsNotStopped)
{
    open();
    int stopped = 0;
    root().pStopPlayer.Click = [&stopped] { ++stopped; };
    answerRemove(Answer::Cancel);
    root().mnuFileKill.Click();
    EXPECT_EQ(0, stopped);
}

TEST_F(TrackListOperations, AListThatIsOpenedWhileTheQuestionIsUpLosesNothing)
{
    open();
    const std::string before = file();
    const std::string other = file(u"Andere"_s);
    desktop.messages.script(
        {.answer = Answer::Ok, .entered = {}, .title = u" Dateien entfernen"_s, .text = {}, .meanwhile = [this] {
             click(2);
         }});
    root().mnuFileKill.Click();
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ(before, file());
    EXPECT_EQ(other, file(u"Andere"_s));
}

TEST_F(TrackListOperations, ATrackOfAnotherListThatIsStillInSightKeepsItsName)
{
    databaseNames = "/m/c.mp3=Band - C\r\n";
    open();
    const std::string before = file();
    clickMissing();
    ASSERT_EQ("*Band - C a B", names());
    answerMissing();
    root().mnuFileKill.Click();
    EXPECT_EQ("*Band - C a B", names());
    EXPECT_EQ("Band - C", nameOf(u"/m/c.mp3"_s));
    EXPECT_EQ(before, file());
    desktop.messages.take();
}

TEST_F(TrackListOperations, TheTrackThatAnEmptiedListShowsOfAnotherOneKeepsItsName)
{
    databaseNames = "/m/c.mp3=Band - C\r\n";
    open();
    const std::string before = file();
    clickEmptied();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("", names());
    EXPECT_EQ("Band - C", nameOf(u"/m/c.mp3"_s));
    EXPECT_EQ(before, file());
    EXPECT_EQ("\r\n", file(u"Andere"_s));
}

TEST_F(TrackListOperations, AMissingListThatIsClickedInTheWaitIsNotReadInThePlaceOfTheOpenOne)
{
    open();
    tracks().select(2);
    answerRemove(Answer::Ok);
    answerMissing();
    desktop.events().after(500ms, [&] {
        desktop.disk().remove(listPath(u"Andere"_s));
        click(2);
    });
    root().mnuFileKill.Click();
    EXPECT_EQ("*c B", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n", file());
    EXPECT_EQ("(missing)", file(u"Andere"_s));
    EXPECT_TRUE(outOfWait());
    desktop.messages.take();
}

TEST_F(TrackListOperations, TheListThatIsReadAgainIsMarkedAsTheOneWhoseTracksAreShown)
{
    open();
    click(2);
    // The save of the database takes the mark away: seen before it.
    const auto save = root().mnuSpeichern.Click;
    QString mark;
    root().mnuSpeichern.Click = [&] { mark = catalogue().Tag; };
    catalogue().Tag = u"7"_s;
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    root().mnuSpeichern.Click = save;
    EXPECT_EQ("2", mark.toStdString());
}

TEST_F(TrackListOperations, ANewListWhoseNameCannotBeThatOfAFileIsNotKept)
{
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    const QString path = data() + u"Neu.tmp"_s;
    put(path, "/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n/m/d.mp3\r\n");
    catalogue().setSubItem(2, 2, path);
    root().mnuLokalePlayliste.Checked = false;
    for (const QString& name : {u"../x"_s, u"a/b"_s, u"was?"_s}) {
        catalogue().setSubItem(2, 1, name);
        catalogue().Tag = u"0"_s;
        click(2);
        forgetCalls();
        answerRemove(Answer::Ok);
        root().mnuFileKill.Click();
        EXPECT_EQ("", calls({u"files.copy \""_s + path}));
        EXPECT_EQ("(missing)", bytes(data() + u"x.m3u"_s).toStdString());
    }
    EXPECT_EQ("/m/d.mp3", column(3));
}

TEST_F(TrackListOperations, ANewListIsKeptUnderItsNameBeforeTheRemoval)
{
    open();
    const QString path = data() + u"Neu.tmp"_s;
    put(path, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, path);
    click(2);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n\r\n", file(u"Andere"_s));
    EXPECT_EQ(path.toStdString(), catalogue().subItem(2, 2).toStdString()) << "path and row are left as they are";
    EXPECT_EQ("/m/a.mp3\r\n", bytes(path).toStdString());
}

TEST_F(TrackListOperations, TheReloadComesASecondBehindTheSave)
{
    open();
    const auto begin = desktop.events().elapsed();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(1000, (desktop.events().elapsed() - begin).count() / 10 * 10);
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, AnotherListThatIsOpenedInTheWaitStaysOpen)
{
    open();
    tracks().select(3);
    answerRemove(Answer::Ok);
    Timer meanwhile(root().controls, u"meanwhile", std::chrono::milliseconds{300});
    meanwhile.Tick = [&] {
        meanwhile.Enabled = false;
        click(2);
        tracks().select(1);
    };
    desktop.events().attach(meanwhile);
    meanwhile.Enabled = true;
    root().mnuFileKill.Click();
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n", file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, AnotherListThatIsOpenedInsideTheReloadKeepsItsSelection)
{
    open();
    removeLastWhileTheReload([this] { click(2); });
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n\r\n", file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, TheRowsOfAnotherListKeepTheirSelectionThoughItsRowIsLeft)
{
    open();
    removeLastWhileTheReload([this] {
        click(2);
        catalogue().select(1);
    });
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n\r\n", file());
}

TEST_F(TrackListOperations, UntilTheReloadRowOneIsSelectedAndNoNumberIsNew)
{
    open();
    tracks().select(2);
    catalogue().Tag = u"7"_s;
    answerRemove(Answer::Ok);
    bool looked = false;
    desktop.events().after(500ms, [&] {
        looked = true;
        EXPECT_EQ("*c B", names());
        EXPECT_EQ("101 103", column(0));
        EXPECT_EQ("01 03", column(1));
        EXPECT_EQ("7", catalogue().Tag.toStdString());
        EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n", file());
    });
    root().mnuFileKill.Click();
    EXPECT_TRUE(looked);
    EXPECT_EQ("101 102", column(0));
}

TEST_F(TrackListOperations, TheTracksGetTheFocusOnceTheDatabaseIsSaved)
{
    open();
    int focused = 0;
    tracks().SetFocus = [&] {
        ++focused;
        EXPECT_EQ("2", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1d"_s).toStdString());
        EXPECT_EQ("0", catalogue().Tag.toStdString());
    };
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(1, focused);
    tracks().SetFocus = [] {};
}

TEST_F(TrackListOperations, AListThatComesToPlaylistenIsReadAgainFromThere)
{
    open();
    ASSERT_TRUE(root().mnuLokalePlayliste.Checked.value());
    const QString outside = u"/k/L.m3u"_s;
    const QString local = data() + u"Playlisten/L.m3u"_s;
    put(outside, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, outside);
    click(2);
    const std::string before = bytes(outside).toStdString();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(local.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ(local.toStdString(), root().openPlaylist.toStdString());
    EXPECT_EQ("*a", names());
    EXPECT_EQ("/m/a.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(before, bytes(outside).toStdString());
}

TEST_F(TrackListOperations, TheMarkOfANewListRespectsCase)
{
    open();
    root().mnuLokalePlayliste.Checked = false;
    put(u"/k/L.TMP"_s, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, u"/k/L.TMP"_s);
    click(2);
    const std::string other = file(u"Andere"_s);
    forgetCalls();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("/m/a.mp3\r\n\r\n", bytes(u"/k/L.TMP"_s).toStdString());
    EXPECT_EQ(other, file(u"Andere"_s));
    EXPECT_EQ("", calls({u"files.copy \"/k/L.TMP\""_s}));
}

TEST_F(TrackListOperations, TheFolderForANewListIsMadeBeforeItIsKept)
{
    open();
    const QString path = u"/k/Neu.tmp"_s;
    put(path, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, path);
    click(2);
    // Another DataFolder, in which nothing stands.
    root().tDatenbank.Text = u"/leer/"_s;
    putFolder(u"/leer"_s);
    answerRemove(Answer::Ok);
    root().mnuLokalePlayliste.Checked = false;
    forgetCalls();
    root().mnuFileKill.Click();
    const std::string made = calls({u"files.makeFolder"_s, u"files.copy"_s});
    EXPECT_TRUE(made.starts_with("files.makeFolder \"/leer/Playlisten\"")) << made;
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n\r\n", bytes(u"/leer/Playlisten/Andere.m3u"_s).toStdString());
}

TEST_F(TrackListOperations, AListTooShortToBeShownKeepsItsFile)
{
    open();
    put(listPath(u"Andere"_s), "a.mp3\r\n");
    root().tPlayliste.Text = QString();
    click(2);
    ASSERT_EQ(0, tracks().count());
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("a.mp3\r\n", file(u"Andere"_s));
}

TEST_F(TrackListOperations, ARemovalWithoutASelectedRowRemovesNothing)
{
    open();
    tracks().clearSelection();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(3, tracks().count());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, ThePopUpRemovesToo)
{
    open();
    answerRemove(Answer::Ok);
    root().mnxBearbeiten[6].Click();
    EXPECT_EQ("*a B", names());
}

TEST_F(TrackListOperations, AFailingStepOfARemovalIsPassedOver)
{
    open();
    answerRemove(Answer::Ok);
    desktop.log.failNext(u"files.writeText"_s);
    root().mnuFileKill.Click();
    EXPECT_EQ(3, tracks().count()) << "the reload shows what the file holds";
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, TheTrackNameGoesFromTheFileOfTheConstantName)
{
    desktop.context.stem = u"Meine"_s;
    desktop.newProcess();
    const QString own = data() + u"Meine.dat"_s;
    put(u"/m/a.mp3"_s, "mp3");
    put(own, "[TagInfo]\r\n/m/a.mp3=Name\r\n[Index]\r\n" +
                 indexRow(1, {.name = u"Liste"_s, .path = putList(u"Liste"_s, {u"/m/a.mp3"_s}), .tracks = u"1"_s}));
    put(database(), "[TagInfo]\r\n/m/a.mp3=Name\r\n");
    setting(u"Error"_s, dwordSetting(0));
    start();
    click(1);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("", IniFiles::ReadValue(root(), database(), u"TagInfo"_s, u"/m/a.mp3"_s).toStdString());
    EXPECT_EQ("Name", IniFiles::ReadValue(root(), own, u"TagInfo"_s, u"/m/a.mp3"_s).toStdString());
}

// Renaming

TEST_F(TrackListOperations, ARenamedListKeepsItsFileAndIsRemembered)
{
    open();
    enterName(u"Über neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Über neu", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ(listPath(u"Liste"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("Über neu", IniFiles::ReadValue(root(), database(), u"Rename"_s, u"Liste.m3u"_s).toStdString());
    EXPECT_EQ("Über neu", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1b"_s).toStdString());
    EXPECT_EQ("Über neu", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("input title \" Wiedergabeliste umbenennen\" text \"Geben Sie einen neuen Namen für die Playliste "
              "ein:\" default \"Liste\" entered \"Über neu\"",
              boxes());
}

TEST_F(TrackListOperations, TheHeadingFollowsEveryNewNameOfTheOpenList)
{
    open();
    for (const QString& name : {u"Neu"_s, u"Noch neuer"_s}) {
        enterName(name);
        root().mnuUmbenennen.Click();
        EXPECT_EQ(name.toStdString(), root().tPlaylisteinträge.Caption.value().toStdString());
    }
}

TEST_F(TrackListOperations, TheHeadingOfTheOpenListStaysWhereAnotherOneIsRenamed)
{
    open();
    catalogue().select(2);
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Liste", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(TrackListOperations, AnEmptyNameChangesNothing)
{
    open();
    enterName({});
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Liste", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, ARowThatBecameAnotherPlaylistWhileTheBoxWasUpKeepsItsName)
{
    for (const int changed : {1, 2}) {
        open();
        const QString there = catalogue().subItem(1, changed) + u'x';
        desktop.messages.script({.answer = Answer::Ok, .entered = u"Neu"_s, .title = {}, .text = {}, .meanwhile = [&] {
                                     catalogue().setSubItem(1, changed, there);
                                 }});
        forgetCalls();
        root().mnuUmbenennen.Click();
        EXPECT_EQ(changed == 1 ? "Listex" : "Liste", catalogue().subItem(1, 1).toStdString());
        EXPECT_EQ("", actions());
        desktop.messages.take();
        desktop.newProcess();
    }
}

TEST_F(TrackListOperations, TheCoverGetsTheNewNameAndIsShownAgain)
{
    open();
    put(picture(u"Liste.jpg"_s), "jpg");
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("jpg", bytes(picture(u"Neu.jpg"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(picture(u"Liste.jpg"_s)).toStdString());
    EXPECT_EQ(picture(u"Neu.jpg"_s).toStdString(), root().pCovers.Picture.value().toStdString());
}

TEST_F(TrackListOperations, ARenamedListWithAPictureIsOpenedAsByAClick)
{
    open();
    put(picture(u"Andere.gif"_s), "gif");
    catalogue().select(2);
    enterName(u"X"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ(picture(u"X.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
}

TEST_F(TrackListOperations, ARenamedListWithoutAPictureIsNotOpened)
{
    open();
    catalogue().select(2);
    enterName(u"X"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("*c a B", names());
    EXPECT_EQ("0", catalogue().Tag.toStdString()) << "as the save leaves it";
}

TEST_F(TrackListOperations, ThePictureIsShownAgainWhereTheClickPassesOverTheRow)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    // The view of the favourites: the database is not saved, and the row counts as loaded.
    root().mnuFavoritenShow.Tag = u"1"_s;
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ(picture(u"Neu.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
}

TEST_F(TrackListOperations, TheCoverOfAMissingListIsNotShownWhereItsOpeningIsCancelled)
{
    open();
    put(picture(u"Andere.gif"_s), "gif");
    desktop.disk().remove(listPath(u"Andere"_s));
    catalogue().select(2);
    const std::string before = root().pCovers.Picture.value().toStdString();
    enterName(u"X"_s);
    desktop.messages.answer(Answer::Cancel);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("gif", bytes(picture(u"X.gif"_s)).toStdString());
    EXPECT_EQ(before, root().pCovers.Picture.value().toStdString());
    EXPECT_EQ("*c a B", names());
}

TEST_F(TrackListOperations, ARenameIsRememberedBeforeTheSaveAndTheCoverComesLast)
{
    open();
    put(picture(u"Liste.jpg"_s), "jpg");
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    QStringList steps;
    const QStringList made = QString::fromStdString(actions()).split(u'\n');
    for (const QString& line : made)
        for (const QString& part : {u"[Rename]\\r\\nListe.m3u=Neu\\r\\n"_s, u"1b=Neu\\r\\n"_s,
                                    u"files.copy \"{data}/Resource/Liste.jpg\" to \"{data}/Resource/Neu.jpg\""_s,
                                    u"files.remove \"{data}/Resource/Liste.jpg\""_s})
            if (line.contains(part))
                steps += part;
    EXPECT_EQ("[Rename]\\r\\nListe.m3u=Neu\\r\\n\n1b=Neu\\r\\n\n"
              "files.copy \"{data}/Resource/Liste.jpg\" to \"{data}/Resource/Neu.jpg\"\n"
              "files.remove \"{data}/Resource/Liste.jpg\"",
              lines(steps));
}

TEST_F(TrackListOperations, ARenameIsRememberedInTheFileOfTheProgramsName)
{
    desktop.context.stem = u"Meine"_s;
    desktop.newProcess();
    const QString own = data() + u"Meine.dat"_s;
    put(own, "[Index]\r\n" + indexRow(1, {.name = u"Liste"_s, .path = putList(u"Liste"_s, {putTrack(u"a"_s)})}));
    put(database(), "[Index]\r\n");
    setting(u"Error"_s, dwordSetting(0));
    start();
    click(1);
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Neu", IniFiles::ReadValue(root(), own, u"Rename"_s, u"Liste.m3u"_s).toStdString());
    EXPECT_EQ("Neu", IniFiles::ReadValue(root(), own, u"Index"_s, u"1b"_s).toStdString());
    EXPECT_EQ("[Index]\r\n", bytes(database()).toStdString());
}

TEST_F(TrackListOperations, TheLastPictureThatExistsSetsTheExtension)
{
    open();
    put(picture(u"Liste.jpg"_s), "jpg");
    put(picture(u"Liste.bmp"_s), "bmp");
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("bmp", bytes(picture(u"Neu.bmp"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(picture(u"Neu.jpg"_s)).toStdString());
    EXPECT_EQ("jpg", bytes(picture(u"Liste.jpg"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(picture(u"Liste.bmp"_s)).toStdString());
}

TEST_F(TrackListOperations, ThePictureOfAListThatGetsTheNameThatItHasGoes)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    enterName(u"Liste"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("(missing)", bytes(picture(u"Liste.gif"_s)).toStdString());
    EXPECT_EQ("Liste", IniFiles::ReadValue(root(), database(), u"Rename"_s, u"Liste.m3u"_s).toStdString());
}

TEST_F(TrackListOperations, ANameThatDiffersInCaseAloneKeepsItsPicture)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    enterName(u"LISTE"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("gif", bytes(picture(u"LISTE.gif"_s)).toStdString());
}

TEST_F(TrackListOperations, APictureThatCannotBearTheNewNameStays)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    for (const QString& name : {u"a/b"_s, u"../../x"_s, u"was?"_s}) {
        enterName(name);
        root().mnuUmbenennen.Click();
        EXPECT_EQ(name.toStdString(), catalogue().subItem(1, 1).toStdString());
        EXPECT_EQ("gif", bytes(picture(u"Liste.gif"_s)).toStdString());
        catalogue().setSubItem(1, 1, u"Liste"_s);
    }
    enterName(u"Neu"_s);
    desktop.log.failNext(u"files.copy \""_s + picture(u"Liste.gif"_s));
    root().mnuUmbenennen.Click();
    EXPECT_EQ("gif", bytes(picture(u"Liste.gif"_s)).toStdString());
}

TEST_F(TrackListOperations, ADoubleClickOnTheHeadingRenamesUnlessTheTitleIsDisabled)
{
    open();
    enterName(u"Neu"_s);
    root().tPlaylisteinträge.DblClick();
    EXPECT_EQ("Neu", catalogue().subItem(1, 1).toStdString());
    root().tDateiname.Enabled = false;
    root().tPlaylisteinträge.DblClick();
    root().tDateiname.Enabled = true;
}

TEST_F(TrackListOperations, WithoutASelectedPlaylistNothingIsAsked)
{
    open();
    catalogue().clearSelection();
    root().mnuUmbenennen.Click();
    EXPECT_EQ("", boxes());
}

} // namespace orvantine::fake
