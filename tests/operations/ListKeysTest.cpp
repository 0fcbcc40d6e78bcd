#include "operations/ListKeys.h"

#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

constexpr int Umschalt = 1;
constexpr int Strg = 2;
constexpr int Alt = 4;

class ListKeys : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    /// Names of the commands that a key runs, in both lists.
    [[nodiscard]] std::string commands(int shift, int code)
    {
        QStringList ran;
        for (MenuItem* item : {&root().mnuEigenschaften, &root().mnuBeenden, &root().mnuMoveEntry[1],
                               &root().mnuMoveEntry[2], &root().mnuVerschiebung[1], &root().mnuVerschiebung[2]})
            item->Click = [&ran, item] { ran += item->fullName(); };
        for (PictureBox* button : {&root().pPausePlayer, &root().pSoundPlayer})
            button->Click = [&ran, button] { ran += button->fullName(); };
        root().pPausePlayer.Enabled = true;
        catalogue().DblClick = [&ran] { ran += u"catalogue"_s; };
        tracks().DblClick = [&ran] { ran += u"tracks"_s; };
        const bool first = catalogue().KeyDown(shift, code);
        const QStringList ofCatalogue = std::exchange(ran, {});
        const bool second = tracks().KeyDown(shift, code);
        EXPECT_EQ(first, !ofCatalogue.isEmpty());
        EXPECT_EQ(second, !ran.isEmpty());
        return (ofCatalogue.join(u' ') + u'/' + ran.join(u' ')).toStdString();
    }
    [[nodiscard]] std::string playerOf(int code)
    {
        forgetCalls();
        EXPECT_TRUE(catalogue().KeyDown(Alt, code));
        const std::string first = told();
        EXPECT_TRUE(tracks().KeyDown(Alt, code));
        EXPECT_EQ(first, told());
        return first;
    }
};

} // namespace

TEST_F(ListKeys, AltWithTheCursorKeysAndPagesSteersThePlayer)
{
    EXPECT_EQ("controls.fastForward\ncontrols.play", playerOf(39));
    EXPECT_EQ("controls.fastReverse\ncontrols.play", playerOf(37));
    EXPECT_EQ("controls.next", playerOf(40));
    EXPECT_EQ("controls.previous", playerOf(38));
    EXPECT_EQ("controls.previous", playerOf(33));
    EXPECT_EQ("controls.next", playerOf(34));
}

TEST_F(ListKeys, AltWithTheOtherKeysRunsTheirCommands)
{
    EXPECT_EQ("pPausePlayer/pPausePlayer", commands(Alt, 32));
    EXPECT_EQ("pPausePlayer/pPausePlayer", commands(Alt, 96));
    EXPECT_EQ("mnuEigenschaften/mnuEigenschaften", commands(Alt, 13));
    EXPECT_EQ("pSoundPlayer/pSoundPlayer", commands(Alt, 36));
    EXPECT_EQ("pSoundPlayer/pSoundPlayer", commands(Alt, 35));
    EXPECT_EQ("mnuBeenden/mnuBeenden", commands(Alt, 81));
}

TEST_F(ListKeys, AltHomeLeavesAPausedPlayerAlone)
{
    root().pSoundPlayer.Click();
    root().mnuSoundplayer[3].Click();
    ASSERT_EQ("Angehalten", player().status().toStdString());
    int presses = 0;
    root().pSoundPlayer.Click = [&presses] { ++presses; };
    EXPECT_TRUE(catalogue().KeyDown(Alt, 36));
    EXPECT_EQ(0, presses);
    EXPECT_TRUE(catalogue().KeyDown(Alt, 35));
    EXPECT_EQ(1, presses);
}

TEST_F(ListKeys, AltHomeEndAndSpaceReachTheRealButtons)
{
    EXPECT_TRUE(catalogue().KeyDown(Alt, 36));
    EXPECT_EQ(PlayState::Playing, player().playState()) << "nothing ran: it begins";
    EXPECT_TRUE(tracks().KeyDown(Alt, 32));
    EXPECT_EQ("Angehalten", player().status().toStdString());
    EXPECT_TRUE(tracks().KeyDown(Alt, 32));
    EXPECT_EQ(PlayState::Playing, player().playState()) << "the second press goes on";
}

TEST_F(ListKeys, AltSpaceDoesNothingWhileNothingRuns)
{
    ASSERT_FALSE(root().pPausePlayer.Enabled.value());
    const std::string before = state();
    EXPECT_TRUE(catalogue().KeyDown(Alt, 32));
    EXPECT_TRUE(tracks().KeyDown(Alt, 96));
    EXPECT_EQ(before, state());
    EXPECT_EQ("", told());
}

TEST_F(ListKeys, ControlWithThePagesMovesTheRowOfItsList)
{
    EXPECT_EQ("mnuVerschiebung(1)/mnuMoveEntry(1)", commands(Strg, 33));
    EXPECT_EQ("mnuVerschiebung(2)/mnuMoveEntry(2)", commands(Strg, 34));
}

TEST_F(ListKeys, ShiftWithTheAngleBracketMovesATrackUp)
{
    EXPECT_EQ("/mnuMoveEntry(1)", commands(Umschalt, 226));
}

TEST_F(ListKeys, EnterWithoutAShiftWordIsTheDoubleClick)
{
    EXPECT_EQ("catalogue/tracks", commands(0, 13));
    EXPECT_EQ("/", commands(Umschalt, 13));
    EXPECT_EQ("/", commands(Strg, 13));
}

TEST_F(ListKeys, EnterWithoutASelectedRowDoesNothing)
{
    int clicks = 0;
    catalogue().DblClick = [&clicks] { ++clicks; };
    tracks().DblClick = [&clicks] { ++clicks; };
    catalogue().clearSelection();
    tracks().clearSelection();
    catalogue().KeyDown(0, 13);
    tracks().KeyDown(0, 13);
    EXPECT_EQ(0, clicks);
}

TEST_F(ListKeys, SeveralShiftKeysAtOnceHaveNoWord)
{
    EXPECT_EQ("/", commands(Strg | Alt, 81));
    EXPECT_EQ("/", commands(Umschalt | Strg, 33));
    EXPECT_EQ("catalogue/tracks", commands(Umschalt | Strg, 13));
}

TEST_F(ListKeys, AKeyThatIsNotInTheTablesDoesNothing)
{
    for (const int shift : {0, 1, 2, 4, 7})
        for (const int code : {0, 9, 27, 48, 65, 112, 227, -1}) {
            EXPECT_EQ("/", commands(shift, code)) << shift << '/' << code;
        }
    for (const int code : {33, 34, 35, 36, 37, 38, 39, 40, 32, 81, 96, 226})
        EXPECT_EQ("/", commands(0, code)) << code;
}

TEST_F(ListKeys, ADisabledCommandIsNotRunByItsKey)
{
    root().mnuMoveEntry[1].Enabled = false;
    root().mnuEigenschaften.Enabled = false;
    EXPECT_EQ("mnuVerschiebung(1)/", [this] {
        QString ran;
        root().mnuVerschiebung[1].Click = [&ran] { ran += u"mnuVerschiebung(1)"_s; };
        root().mnuMoveEntry[1].Click = [&ran] { ran += u"mnuMoveEntry(1)"_s; };
        root().mnuEigenschaften.Click = [&ran] { ran += u"mnuEigenschaften"_s; };
        catalogue().KeyDown(Strg, 33);
        ran += u'/';
        tracks().KeyDown(Strg, 33);
        tracks().KeyDown(Alt, 13);
        return ran.toStdString();
    }());
}

TEST_F(ListKeys, AltQClosesTheProgramFromEitherList)
{
    EXPECT_TRUE(tracks().KeyDown(Alt, 81));
    EXPECT_TRUE(desktop.events().ended());
}

} // namespace orvantine::fake
