#include "playback/SequencingWorld.h"

#include "app/PlayButtons.h"
#include "operations/ListInput.h"
#include "playback/PlaySingleTrack.h"
#include "playback/Timer2.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(Sequencing, TheRepeatModesAreARadioGroup)
{
    for (int mode = 1; mode <= 3; ++mode) {
        root().mnuWiederholung[mode].Click();
        for (int other = 1; other <= 3; ++other)
            EXPECT_EQ(mode == other, root().mnuWiederholung[other].Checked.value()) << mode << ' ' << other;
    }
}

TEST_F(Sequencing, WithoutRepetitionTheNextListOfTheCatalogueFollows)
{
    playToTheEnd(1);
    const auto begin = desktop.events().elapsed();
    run(180);
    EXPECT_EQ("close\nnewPlaylist(Zweite.m3u, 2)\nclose\nURL = Zweite.m3u", told());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 2/2 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
    EXPECT_EQ("Icon_6 Icon_C Icon_1 Icon_1", marks());
    EXPECT_EQ("0", root().pPausePlayer.Tag.toStdString());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("/m/Zweite 1.mp3", tracks().subItem(1, 3).toStdString());
    // One second before the next list and one behind it.
    EXPECT_GE((desktop.events().elapsed() - begin).count(), 2180);
}

TEST_F(Sequencing, TheLastRowWrapsToRowOne)
{
    click(4);
    pSoundPlayer_Click(root());
    player().pretendEnded();
    root().Timer1.Enabled = true;
    forgetCalls();
    run(180);
    EXPECT_EQ("close\nnewPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
    EXPECT_EQ("1", root().pSoundPlayer.Tag.toStdString());
    EXPECT_EQ(1, catalogue().selectedRow());
}

TEST_F(Sequencing, TheViewReturnsToTheUsersRowOnlyWithShowChangeOne)
{
    struct Case
    {
        const char* name;
        std::optional<SettingValue> showChange;
        bool returns;
    };
    for (const Case& c : {Case{"absent", std::nullopt, false}, Case{"1", dwordSetting(1), true},
                          Case{"-1", dwordSetting(-1), true}, Case{"0", dwordSetting(0), false},
                          Case{"2", dwordSetting(2), false}, Case{"text 1", stringSetting(u"1"_s), true}}) {
        SCOPED_TRACE(c.name);
        desktop.newProcess();
        SetUp();
        if (c.showChange)
            setting(u"ShowChange"_s, *c.showChange);
        pSoundPlayer_Click(root());
        click(3);
        player().pretendEnded();
        run(180);
        EXPECT_EQ("2", root().pSoundPlayer.Tag.toStdString());
        EXPECT_EQ(c.returns ? 3 : 2, catalogue().selectedRow());
        EXPECT_EQ(c.returns ? "3" : "2", catalogue().Tag.toStdString());
        EXPECT_EQ(c.returns ? "/m/Dritte 1.mp3" : "/m/Zweite 1.mp3", tracks().subItem(1, 3).toStdString());
        EXPECT_EQ("Icon_6 Icon_C Icon_1 Icon_1", marks());
    }
}

TEST_F(Sequencing, ARepeatedListIsPlayedAgainAlsoASecondTimeAndTheViewStays)
{
    chooseMode(1);
    setting(u"ShowChange"_s, dwordSetting(1));
    playToTheEnd(2);
    tracks().select(2);
    for (int round = 1; round <= 2; ++round) {
        SCOPED_TRACE(round);
        run(180);
        EXPECT_EQ("controls.stop\ncontrols.play\nnewPlaylist(Zweite.m3u, 2)\nclose\nURL = Zweite.m3u", told());
        EXPECT_EQ("play 0 pause 1 tag 1 lists 2/2 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
        EXPECT_EQ(2, catalogue().selectedRow());
        EXPECT_EQ(2, tracks().selectedRow());
        run(360);
        EXPECT_EQ("", told());
        player().pretendEnded();
    }
}

TEST_F(Sequencing, ARepeatedTrackIsTheSelectedOneNotTheOneThatEndedAndTheTimerGoesOn)
{
    for (const int row : {1, 2}) {
        SCOPED_TRACE(row);
        desktop.newProcess();
        SetUp();
        chooseMode(2);
        playToTheEnd(1);
        tracks().select(row);
        const std::string track = "/m/Erste " + std::to_string(row) + ".mp3";
        // Showing the track runs the housekeeping, which sees the end and stops after a second.
        const std::string again = "controls.stop\nclose\nclose\nnewMedia(" + track + ")\nURL = " + track;
        run(180);
        EXPECT_EQ(again, told());
        EXPECT_EQ("play 0 pause 1 tag 0 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
        player().pretendEnded();
        run(180);
        EXPECT_EQ(again, told());
    }
}

TEST_F(Sequencing, WithoutAModeTheButtonsAreIdleAndNothingIsTold)
{
    chooseMode(0);
    playToTheEnd(1);
    run(180);
    EXPECT_EQ("", told());
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
    EXPECT_EQ("Wiedergabe starten ", root().mnuWiedergabe.Caption.value().toStdString());
    run(2000);
    EXPECT_EQ("", told());
}

TEST_F(Sequencing, WithoutTracksTheHintShowsAndTheTickEnds)
{
    playToTheEnd(1);
    tracks().clear();
    root().pHinweistext.Visible = false;
    run(180);
    EXPECT_TRUE(root().pHinweistext.Visible.value());
    EXPECT_EQ("", told());
}

TEST_F(Sequencing, AtTheEndTheTwoViewsOfTheMenuComeBack)
{
    playToTheEnd(1);
    root().mnuOrvmenu[1].Visible = false;
    root().mnuOrvmenu[2].Visible = false;
    root().pHinweistext.Visible = true;
    run(180);
    EXPECT_TRUE(root().mnuOrvmenu[1].Visible.value());
    EXPECT_TRUE(root().mnuOrvmenu[2].Visible.value());
    EXPECT_FALSE(root().pHinweistext.Visible.value());
}

TEST_F(Sequencing, WithAllPlaylistsOffTheTickEndsTheTimerInEveryMode)
{
    for (int mode = 1; mode <= 3; ++mode) {
        SCOPED_TRACE(mode);
        chooseMode(mode);
        root().mnuAllesWiedergeben.Checked = false;
        pSoundPlayer_Click(root());
        player().pretendEnded();
        forgetCalls();
        run(180);
        EXPECT_FALSE(root().Timer1.Enabled.value());
        EXPECT_EQ("", told());
        root().pStopPlayer.Click();
    }
}

TEST_F(Sequencing, AllPlaylistsOffEndsTheTimerAndOnStartsItWhileSomethingRuns)
{
    pSoundPlayer_Click(root());
    root().mnuAllesWiedergeben.Click();
    EXPECT_FALSE(root().mnuAllesWiedergeben.Checked.value());
    EXPECT_FALSE(root().Timer1.Enabled.value());
    root().mnuAllesWiedergeben.Click();
    EXPECT_TRUE(root().mnuAllesWiedergeben.Checked.value());
    EXPECT_TRUE(root().Timer1.Enabled.value());
    pStopPlayer_Click(root());
    root().mnuAllesWiedergeben.Click();
    root().mnuAllesWiedergeben.Click();
    EXPECT_FALSE(root().Timer1.Enabled.value());
}

TEST_F(Sequencing, WithAllPlaylistsOffTheHousekeepingStopsAfterASecond)
{
    root().mnuAllesWiedergeben.Checked = false;
    playToTheEnd(1);
    const auto begin = desktop.events().elapsed();
    root().Timer2.Enabled = true;
    run(280);
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_GE((desktop.events().elapsed() - begin).count(), 1280);
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
}

TEST_F(Sequencing, AStatusThatChangedWithinThatSecondIsNotStopped)
{
    root().mnuAllesWiedergeben.Checked = false;
    playToTheEnd(1);
    desktop.events().after(std::chrono::milliseconds{900}, [&] { player().pretendPlaying(); });
    Timer2_Tick(root());
    EXPECT_EQ("", told());
    EXPECT_TRUE(root().pPausePlayer.Enabled.value());
}

TEST_F(Sequencing, AProgramThatEndsWithinThePauseStartsNoFurtherList)
{
    playToTheEnd(1);
    desktop.events().after(std::chrono::milliseconds{600}, [&] { desktop.events().endProcess(); });
    run(180);
    EXPECT_EQ("", told());
}

TEST_F(Sequencing, ADoubleClickOnATrackPlaysThatOneAlone)
{
    tracks().select(2);
    root().mnuSoundplayerExt.Visible = true;
    root().Timer1.Enabled = true;
    tracks().DblClick();
    EXPECT_EQ("close\nnewMedia(/m/Erste 2.mp3)\nURL = /m/Erste 2.mp3", told());
    EXPECT_EQ("play 0 pause 1 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe stoppen ", state());
    EXPECT_FALSE(root().mnuSoundplayerExt.Visible.value());
}

TEST_F(Sequencing, ADoubleClickWhileAListPlaysSwitchesAtOnce)
{
    pSoundPlayer_Click(root());
    tracks().select(2);
    forgetCalls();
    tracks().DblClick();
    EXPECT_EQ("close\nclose\nnewMedia(/m/Erste 2.mp3)\nURL = /m/Erste 2.mp3", told());
    EXPECT_FALSE(root().pSoundPlayer.Enabled.value());
    EXPECT_TRUE(root().pPausePlayer.Enabled.value());
    EXPECT_FALSE(root().Timer1.Enabled.value());
    EXPECT_EQ("/m/Erste 2.mp3", player().URL().toStdString());
}

TEST_F(Sequencing, ABareNameGetsTheFolderOfTheList)
{
    tracks().setSubItem(1, 3, u"lied.mp3"_s);
    tracks().select(1);
    playSingleTrack(root());
    EXPECT_EQ("close\nnewMedia(lied.mp3)\nURL = lied.mp3", told());
    EXPECT_EQ((data() + u"Playlisten/lied.mp3"_s).toStdString(), player().URL().toStdString());
}

TEST_F(Sequencing, ADoubleClickOnAnEmptyListDoesNothing)
{
    tracks().clear();
    tracks().DblClick();
    EXPECT_EQ("", told());
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
}

TEST_F(Sequencing, AListOfOneTrackIsRepeatedOncePerEnd)
{
    chooseMode(1);
    click(4);
    catalogue().DblClick();
    player().pretendEnded();
    run(180);
    ASSERT_EQ("/m/Einzeln 1.mp3", player().URL().toStdString());
    forgetCalls();
    run(720);
    EXPECT_EQ("", told());
    EXPECT_TRUE(root().Timer1.Enabled.value());
    player().pretendEnded();
    run(180);
    EXPECT_EQ(1, QString::fromStdString(told()).count(u"URL = "_s));
}

TEST_F(Sequencing, AnEndSeenWithoutAModeIsForgottenByTheNextSingleTrack)
{
    chooseMode(0);
    playToTheEnd(1);
    run(180);
    ASSERT_EQ("1", root().pPausePlayer.Tag.toStdString());
    tracks().DblClick();
    EXPECT_EQ("0", root().pPausePlayer.Tag.toStdString());
}

TEST_F(Sequencing, AClosedPlayerIsTheEndOfAListToo)
{
    for (const int mode : {3, 0}) {
        SCOPED_TRACE(mode);
        desktop.newProcess();
        SetUp();
        chooseMode(mode);
        pSoundPlayer_Click(root());
        player().close();
        forgetCalls();
        run(180);
        EXPECT_EQ(mode == 3 ? "close\nnewPlaylist(Zweite.m3u, 2)\nclose\nURL = Zweite.m3u" : "", told());
        if (mode == 0) {
            EXPECT_EQ("1", root().pPausePlayer.Tag.toStdString());
            EXPECT_EQ("play 1 pause 0 tag 1 lists 1/1 timer 1 item3 1 item4 0 Wiedergabe starten ", state());
        }
    }
}

TEST_F(Sequencing, APlayerThatStoppedBeforeTheLastTrackIsNoEnd)
{
    for (const int mode : {1, 2, 3}) {
        SCOPED_TRACE(mode);
        chooseMode(mode);
        pSoundPlayer_Click(root());
        player().stop();
        root().pHinweistext.Visible = true;
        forgetCalls();
        run(180);
        EXPECT_EQ("", told());
        EXPECT_EQ("0", root().pPausePlayer.Tag.toStdString());
        EXPECT_TRUE(root().pHinweistext.Visible.value());
        root().pStopPlayer.Click();
    }
}

TEST_F(Sequencing, AListOfOneTrackIsALinkOfTheSequence)
{
    playToTheEnd(3);
    run(180);
    EXPECT_EQ("close\nnewPlaylist(Einzeln.m3u, 1)\nclose\nnewMedia(/m/Einzeln 1.mp3)\nURL = /m/Einzeln 1.mp3", told());
    EXPECT_EQ("4/4", root().pSoundPlayer.Tag.toStdString() + '/' + root().LListView2.Tag.toStdString());
    EXPECT_TRUE(root().Timer1.Enabled.value());
    player().pretendEnded();
    run(180);
    EXPECT_EQ("close\nnewPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
}

TEST_F(Sequencing, WithTheHousekeepingBesideItTheNextListIsStartedOnceAndNeverStopped)
{
    // The housekeeping is due behind the sequence, and before it.
    for (const int before : {0, 550}) {
        SCOPED_TRACE(before);
        desktop.newProcess();
        SetUp();
        pSoundPlayer_Click(root());
        root().Timer2.Enabled = true;
        run(before);
        player().pretendEnded();
        forgetCalls();
        run(5000);
        EXPECT_EQ("close\nnewPlaylist(Zweite.m3u, 2)\nclose\nURL = Zweite.m3u", told());
        EXPECT_EQ("play 0 pause 1 tag 1 lists 2/2 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
    }
}

TEST_F(Sequencing, ThePauseButtonIsOffBeforeTheFirstEventIsServed)
{
    playToTheEnd(1);
    bool on = true;
    desktop.events().after(std::chrono::milliseconds{0}, [&] { on = root().pPausePlayer.Enabled.value(); });
    Timer1_Tick(root());
    EXPECT_FALSE(on);
}

TEST_F(Sequencing, TheHousekeepingTicksInTheWaitForTheNextList)
{
    playToTheEnd(1);
    root().Timer2.Enabled = true;
    root().LListenCaption.Caption = QString();
    QString inTheWait;
    desktop.events().after(std::chrono::milliseconds{900}, [&] { inTheWait = root().LListenCaption.Caption.value(); });
    Timer1_Tick(root());
    EXPECT_FALSE(inTheWait.isEmpty());
}

TEST_F(Sequencing, AnEndThatNobodyPlaysToIsOnlyNoted)
{
    playToTheEnd(1);
    showRunning(root(), false);
    run(180);
    EXPECT_EQ("1", root().pPausePlayer.Tag.toStdString());
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
    EXPECT_EQ("", told());
}

TEST_F(Sequencing, ADoubleClickReadsTheTrackInTheEndEvenIfItIsGone)
{
    desktop.disk().remove(u"/m/Erste 2.mp3"_s);
    const QList<Label*> labels{&root().sTitle, &root().sArtist, &root().sAlbum, &root().sKommentar, &root().sJahr};
    for (Label* label : labels)
        label->Caption = u"alt"_s;
    tracks().select(2);
    tracks().DblClick();
    EXPECT_EQ("/m/Erste 2.mp3", root().CurrentMp3File.toStdString());
    for (const Label* label : labels)
        EXPECT_EQ("", label->Caption.value().toStdString()) << label->name.toStdString();
}

TEST_F(Sequencing, ANameWithASeparatorGoesAsItStands)
{
    tracks().setSubItem(1, 3, u"sub\\lied.mp3"_s);
    tracks().select(1);
    playSingleTrack(root());
    EXPECT_EQ("close\nnewMedia(sub\\lied.mp3)\nURL = sub\\lied.mp3", told());
}

TEST_F(Sequencing, TracksThatAreGoneWhenTheStepsRunAgainArePlayedNoMore)
{
    pSoundPlayer_Click(root());
    forgetCalls();
    desktop.events().after(std::chrono::milliseconds{0}, [&] { tracks().clear(); });
    tracks().DblClick();
    EXPECT_EQ("close", told());
}

TEST_F(Sequencing, AButtonThatStaysOffEndsTheStepsAfterSomeRounds)
{
    // Without a catalogue the housekeeping inside the steps takes the button back each time.
    catalogue().clear();
    tracks().select(1);
    root().pSoundPlayer.Enabled = false;
    tracks().DblClick();
    EXPECT_EQ("close\nclose", told());
}

TEST_F(Sequencing, AProgramThatEndsBehindTheStartOfTheNextListReadsNoFurtherOne)
{
    setting(u"ShowChange"_s, dwordSetting(1));
    pSoundPlayer_Click(root());
    click(3);
    player().pretendEnded();
    desktop.events().after(std::chrono::milliseconds{1500}, [&] {
        EXPECT_EQ("2", root().pSoundPlayer.Tag.toStdString());
        desktop.events().endProcess();
        forgetCalls();
    });
    Timer1_Tick(root());
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("", calls({u"files."_s}));
}

} // namespace orvantine::fake
