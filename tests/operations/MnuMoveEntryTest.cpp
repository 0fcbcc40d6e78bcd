
#include "operations/TrackListOperationsFixture.h"

#include <QSet>

namespace orvantine::fake {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

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

} // namespace orvantine::fake
