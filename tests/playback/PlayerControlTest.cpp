#include "playback/PlayerControl.h"

#include "app/PlayButtons.h"
#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class PlayerControl : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }
};

} // namespace

TEST_F(PlayerControl, StartHandsTheListToThePlayerInThisOrder)
{
    root().pSoundPlayer.Click();
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
    EXPECT_EQ("Icon_C Icon_1 Icon_1 Icon_1", marks());
    EXPECT_EQ(1, catalogue().selectedRow());
}

TEST_F(PlayerControl, CloseIsSkippedWhereTheStatusSaysEnded)
{
    root().pSoundPlayer.Click();
    player().pretendEnded();
    showRunning(root(), false);
    forgetCalls();
    pSoundPlayer_Click(root());
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nURL = Erste.m3u", told());
}

TEST_F(PlayerControl, StopTellsStopThenCloseAndResetsAllMarks)
{
    root().pSoundPlayer.Click();
    root().tDateiname.Caption = u"Lied"_s;
    root().pDateiname.Tag = u"1.5"_s;
    catalogue().setIcons(3, u"Icon_C"_s);
    forgetCalls();
    root().pStopPlayer.Click();
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
    EXPECT_EQ("", root().tDateiname.Caption.value().toStdString());
    EXPECT_EQ("0", root().pDateiname.Tag.toStdString());
}

TEST_F(PlayerControl, APressWhileItRunsStops)
{
    root().pSoundPlayer.Click();
    forgetCalls();
    pSoundPlayer_Click(root());
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
}

TEST_F(PlayerControl, ButtonsOutOfStepGoBackToIdleWithAClose)
{
    root().pSoundPlayer.Enabled = false;
    root().pPausePlayer.Enabled = false;
    root().Tag = u"1"_s;
    root().Timer1.Enabled = true;
    pSoundPlayer_Click(root());
    EXPECT_EQ("close", told());
    EXPECT_EQ("play 1 pause 0 tag 0 lists / timer 0 item3 1 item4 0 Wiedergabe starten ", state());
}

TEST_F(PlayerControl, AListWithOneTrackTakesTheSingleTrackPathAndLeavesTheTimerOff)
{
    click(4);
    forgetCalls();
    pSoundPlayer_Click(root());
    EXPECT_EQ("newPlaylist(Einzeln.m3u, 1)\nclose\nnewMedia(/m/Einzeln 1.mp3)\nURL = /m/Einzeln 1.mp3", told());
    EXPECT_EQ("play 0 pause 1 tag 0 lists 4/4 timer 0 item3 1 item4 0 Wiedergabe stoppen ", state());
    EXPECT_FALSE(root().mnuSoundplayerExt.Visible.value());
}

TEST_F(PlayerControl, PausingAndPressingPlayResumesTheSameTrackWithoutReloading)
{
    pSoundPlayer_Click(root());
    player().pretendItem(1);
    mnuSoundplayer_Click(root(), 3);
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 1 item3 0 item4 1 Wiedergabe stoppen ", state());
    root().Timer1.Enabled = false;
    forgetCalls();
    pSoundPlayer_Click(root());
    EXPECT_EQ("controls.play", told());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
    EXPECT_EQ("/m/Erste 2.mp3", player().currentSourceURL().toStdString());
}

TEST_F(PlayerControl, ThePauseButtonPausesAndWhilePausedResumes)
{
    pSoundPlayer_Click(root());
    forgetCalls();
    root().pPausePlayer.Click();
    EXPECT_EQ("controls.pause", told());
    root().pPausePlayer.Click();
    EXPECT_EQ("controls.play", told());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
}

TEST_F(PlayerControl, PauseAndResumeAreOppositeAfterEachCommand)
{
    struct Case
    {
        int index;
        bool resumable;
        const char* after;
        const char* calls;
    };
    for (const Case& c : {Case{1, false, "1 0", "controls.next"}, Case{1, true, "1 0", "controls.next"},
                          Case{2, false, "1 0", "controls.previous"}, Case{2, true, "1 0", "controls.previous"},
                          Case{3, false, "0 1", "controls.pause"}, Case{3, true, "0 1", "controls.pause"},
                          Case{4, true, "1 0", "controls.play"}}) {
        SCOPED_TRACE(std::to_string(c.index) + (c.resumable ? " while resumable" : ""));
        root().pStopPlayer.Click();
        pSoundPlayer_Click(root());
        if (c.index == 4)
            player().pretendPaused();
        root().mnuSoundplayer[4].Enabled = c.resumable;
        root().mnuSoundplayer[3].Enabled = !c.resumable;
        forgetCalls();
        root().mnuSoundplayer[c.index].Click();
        EXPECT_EQ(c.calls, told());
        EXPECT_EQ(c.after, std::string(root().mnuSoundplayer[3].Enabled.value() ? "1" : "0") +
                               (root().mnuSoundplayer[4].Enabled.value() ? " 1" : " 0"));
    }
}

TEST_F(PlayerControl, AFavouriteThatPlaysShowsTheDiscAndAfterStopTheStarAgain)
{
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
    pSoundPlayer_Click(root());
    EXPECT_EQ("Icon_C Icon_1 Icon_1 Icon_1", marks());
    pStopPlayer_Click(root());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
}

TEST_F(PlayerControl, AStatusThatIsNotTheGermanWordCountsAsRunningSoThatThePressStops)
{
    pSoundPlayer_Click(root());
    // The player keeps another status than "Angehalten".
    desktop.log.failNext(u"Mediaplayer.controls.pause"_s);
    mnuSoundplayer_Click(root(), 3);
    ASSERT_NE("Angehalten", player().status().toStdString());
    forgetCalls();
    pSoundPlayer_Click(root());
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
}

TEST_F(PlayerControl, TheMenuWhilePausedOnlyTellsPlay)
{
    pSoundPlayer_Click(root());
    mnuSoundplayer_Click(root(), 3);
    root().Timer1.Enabled = false;
    forgetCalls();
    root().mnuWiedergabe.Click();
    EXPECT_EQ("controls.play", told());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 0 item3 0 item4 1 Wiedergabe stoppen ", state());
}

TEST_F(PlayerControl, TheMenuOtherwisePressesThePlayButton)
{
    root().mnuWiedergabe.Click();
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
    root().mnuWiedergabe.Click();
    EXPECT_EQ("controls.stop\nclose", told());
}

TEST_F(PlayerControl, EachButtonTellsItsOwnCall)
{
    pSoundPlayer_Click(root());
    forgetCalls();
    root().pPlayBack.Click();
    EXPECT_EQ("controls.previous", told());
    root().pPlayForward.Click();
    EXPECT_EQ("controls.next", told());
    root().mnuSpecials[2].Click();
    EXPECT_EQ("controls.stop\nclose", told());
    tracks().select(2);
    root().mnuSpecials[1].Click();
    EXPECT_EQ("close\nnewMedia(/m/Erste 2.mp3)\nURL = /m/Erste 2.mp3", told());
    root().pSymbole.Click();
    EXPECT_EQ("controls.stop\nclose", told());
}

TEST_F(PlayerControl, WithoutASelectedRowNothingIsTold)
{
    catalogue().clearSelection();
    pSoundPlayer_Click(root());
    EXPECT_EQ("", told());
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
}

TEST_F(PlayerControl, AFailingCallToThePlayerIsPassedOver)
{
    desktop.log.failNext(u"Mediaplayer.close"_s);
    desktop.log.failNext(u"Mediaplayer.newPlaylist"_s);
    pSoundPlayer_Click(root());
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
    EXPECT_EQ("Icon_C Icon_1 Icon_1 Icon_1", marks());
}

TEST_F(PlayerControl, APlaylistClickedInsideTheStartStaysSelectedAndTheFirstOneBearsTheDisc)
{
    desktop.events().after(std::chrono::milliseconds{0}, [&] { click(2); });
    pSoundPlayer_Click(root());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("Icon_C Icon_1 Icon_1 Icon_1", marks());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
}

TEST_F(PlayerControl, ARowSelectedInsideTheStartGivesWayToThePlayingOne)
{
    desktop.events().after(std::chrono::milliseconds{0}, [&] { catalogue().select(2); });
    pSoundPlayer_Click(root());
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ("Icon_C Icon_1 Icon_1 Icon_1", marks());
}

TEST_F(PlayerControl, InsideTheStartThePlayerHasItsListAndTheRowNotYetItsDisc)
{
    std::string seen;
    desktop.events().after(std::chrono::milliseconds{0}, [&] { seen = marks() + '\n' + state() + '\n' + told(); });
    pSoundPlayer_Click(root());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1\n"
              "play 0 pause 1 tag 1 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe stoppen \n"
              "newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u",
              seen);
}

TEST_F(PlayerControl, TheDiscFollowsThePlaylistThatPlays)
{
    struct Case
    {
        const char* name;
        std::function<void()> meanwhile;
        const char* marks;
        int selected;
    };
    const auto moveDown = [this] {
        ListItem row = catalogue().item(1);
        catalogue().remove(1);
        catalogue().insert(3, std::move(row));
    };
    const std::vector<Case> cases{{"row moved", moveDown, "Icon_6 Icon_1 Icon_C Icon_1", 3},
                                  {"row removed", [this] { catalogue().remove(1); }, "Icon_6 Icon_1 Icon_1", 0},
                                  {"stopped", [this] { root().pStopPlayer.Click(); }, "Icon_6 Icon_1 Icon_1 Icon_1", 1},
                                  {"another one started",
                                   [this] {
                                       root().pStopPlayer.Click();
                                       click(2);
                                       root().pSoundPlayer.Click();
                                   },
                                   "Icon_6 Icon_C Icon_1 Icon_1", 2}};
    for (const Case& c : cases) {
        for (const bool doubleClick : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (doubleClick ? ", double click" : ""));
            desktop.newProcess();
            SetUp();
            desktop.events().after(std::chrono::milliseconds{0}, c.meanwhile);
            if (doubleClick)
                catalogue().DblClick();
            else
                pSoundPlayer_Click(root());
            EXPECT_EQ(c.marks, marks());
            EXPECT_EQ(c.selected, catalogue().selectedRow());
        }
    }
}

TEST_F(PlayerControl, OfTwoRowsOfOneFileTheOneThatPlaysIsFollowed)
{
    ListItem row = catalogue().item(1);
    ListItem copy = row;
    copy.Extras = std::make_shared<const ListExtras>(ListExtras{.Key = u"Kopie"_s, .Tag = {}, .ToolTipText = {}});
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        catalogue().insert(1, std::move(copy));
        catalogue().remove(2);
        catalogue().insert(2, std::move(row));
    });
    pSoundPlayer_Click(root());
    EXPECT_EQ("Icon_C", catalogue().item(2).SmallIcon.toStdString());
    EXPECT_NE("Icon_C", catalogue().item(1).SmallIcon.toStdString());
}

TEST_F(PlayerControl, TheTitleThatPlaysIsMarkedInItsList)
{
    const auto marked = [this] {
        std::string seen;
        for (int row = 0; row < tracks().rowCount(); ++row)
            seen += std::to_string(tracks().data(tracks().index(row, 0), ListView::PlayingRole).toInt());
        return seen;
    };
    EXPECT_EQ("00", marked());
    pSoundPlayer_Click(root());
    EXPECT_EQ("10", marked());
    player().pretendItem(1);
    EXPECT_EQ("01", marked());
    root().pPausePlayer.Click();
    EXPECT_EQ("02", marked());
    EXPECT_EQ(PlaybackStatus::Paused, root().playback.value());
    root().mnuWiedergabe.Click();
    EXPECT_EQ("01", marked());
    click(2);
    EXPECT_EQ("00", marked()) << "another list is in sight";
    click(1);
    EXPECT_EQ("01", marked());
    for (int row = 1; row <= 2; ++row)
        EXPECT_EQ("Icon_2", tracks().item(row).SmallIcon.toStdString());
    root().pStopPlayer.Click();
    EXPECT_EQ("00", marked());
    EXPECT_EQ(PlaybackStatus::Stopped, root().playback.value());
}

TEST_F(PlayerControl, APauseByTheKeysIsSeenByTheHousekeeping)
{
    pSoundPlayer_Click(root());
    player().pause();
    EXPECT_EQ(PlaybackStatus::Playing, root().playback.value());
    run(280);
    EXPECT_EQ(PlaybackStatus::Paused, root().playback.value());
}

TEST_F(PlayerControl, ButtonsOutOfStepServeTheEventsBehindTheClose)
{
    root().pSoundPlayer.Enabled = false;
    root().pPausePlayer.Enabled = false;
    std::string seen;
    desktop.events().after(std::chrono::milliseconds{0}, [&] { seen = told(); });
    pSoundPlayer_Click(root());
    EXPECT_EQ("close", seen);
}

TEST_F(PlayerControl, AResumedSingleTrackStartsTheTimerToo)
{
    tracks().DblClick();
    ASSERT_FALSE(root().Timer1.Enabled.value());
    root().pPausePlayer.Click();
    pSoundPlayer_Click(root());
    EXPECT_TRUE(root().Timer1.Enabled.value());
}

TEST_F(PlayerControl, GoingOnWhileItPlaysIsAStop)
{
    pSoundPlayer_Click(root());
    forgetCalls();
    mnuSoundplayer_Click(root(), 4);
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
}

TEST_F(PlayerControl, TheEndOfAHiddenProgramThatPlaysStopsThePlayerAndOfOneThatIsPausedTellsItNothing)
{
    for (const bool paused : {false, true}) {
        SCOPED_TRACE(paused ? "paused" : "playing");
        desktop.newProcess();
        SetUp();
        pSoundPlayer_Click(root());
        if (paused)
            root().pPausePlayer.Click();
        root().State = WindowState::Minimized;
        ASSERT_FALSE(root().Visible.value());
        forgetCalls();
        root().mnuBeenden.Click();
        EXPECT_EQ(std::string(paused ? "" : "Mediaplayer.controls.stop\n") + "tray.remove\nevents.endProcess",
                  calls({u"Mediaplayer."_s, u"tray."_s, u"events."_s}));
    }
}

} // namespace orvantine::fake
