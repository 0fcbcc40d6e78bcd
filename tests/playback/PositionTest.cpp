#include "playback/Position.h"

#include "playback/PlaybackWorld.h"
#include "playback/PlayerControl.h"
#include "playback/RemoteControl.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Second = 1'000'000;

/// The first of two titles of 200 seconds plays, 30 seconds of it are over.
class Seeking : public PlaybackWorld
{
protected:
    Seeking()
    {
        startPlayback();
        remote.Sought = [this] { ++leaps; };
    }
    void play()
    {
        player().setDuration(200);
        pSoundPlayer_Click(root());
        player().pretendPosition(30);
        forgetCalls();
    }

    bool boxOpen = false;
    int leaps = 0;
    RemoteControl remote{root(), [this] { return boxOpen; }};
};

} // namespace

TEST(PositionText, TellsMinutesAndSecondsAndHoursWhereThereAreSome)
{
    const std::pair<double, const char*> cases[] = {{0, "0:00"},       {-3, "0:00"},         {9.99, "0:09"},
                                                    {65, "1:05"},      {3599.9, "59:59"},    {3600, "1:00:00"},
                                                    {3725, "1:02:05"}, {360000, "100:00:00"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(text, positionText(seconds).toStdString()) << seconds;
}

TEST_F(Seeking, IsToBeHadWhileATitleOfKnownLengthRuns)
{
    EXPECT_FALSE(remote.canSeek());
    EXPECT_EQ(0, remote.position());
    pSoundPlayer_Click(root());
    EXPECT_FALSE(remote.canSeek());
    EXPECT_FALSE(remote.seek(5 * Second));
    player().setDuration(200);
    player().pretendPosition(30);
    EXPECT_TRUE(remote.canSeek());
    EXPECT_EQ(30 * Second, remote.position());
    pPausePlayer_Click(root());
    EXPECT_TRUE(remote.canSeek());
    EXPECT_EQ(30 * Second, remote.position());
    pStopPlayer_Click(root());
    EXPECT_FALSE(remote.canSeek());
    EXPECT_EQ(0, remote.position());
    EXPECT_FALSE(remote.setPosition(5 * Second));
}

TEST_F(Seeking, GoesOnAndBackAndNotBeforeTheStart)
{
    play();
    EXPECT_TRUE(remote.seek(5 * Second + Second / 2));
    EXPECT_EQ("controls.currentPosition = 35.5", told());
    EXPECT_EQ(1, leaps);
    EXPECT_TRUE(remote.seek(-50 * Second));
    EXPECT_EQ(0, remote.position());
    EXPECT_EQ(2, leaps);
    EXPECT_EQ("Erste 1.mp3", player().currentSourceURL().section(u'/', -1).toStdString());
}

TEST_F(Seeking, BehindTheEndLiesTheNextTitle)
{
    play();
    EXPECT_TRUE(remote.seek(171 * Second));
    EXPECT_EQ("controls.next", told());
    EXPECT_EQ("Erste 2.mp3", player().currentSourceURL().section(u'/', -1).toStdString());
    EXPECT_EQ(0, leaps);
}

TEST_F(Seeking, APlaceThatTheTitleDoesNotHaveChangesNothing)
{
    play();
    EXPECT_FALSE(remote.setPosition(-1));
    EXPECT_FALSE(remote.setPosition(200 * Second + 1));
    EXPECT_EQ("", told());
    EXPECT_TRUE(remote.setPosition(120 * Second));
    EXPECT_EQ(120 * Second, remote.position());
    EXPECT_EQ(1, leaps);
}

TEST_F(Seeking, APausedTitleStaysPaused)
{
    play();
    pPausePlayer_Click(root());
    EXPECT_TRUE(remote.setPosition(120 * Second));
    EXPECT_EQ(PlaybackStatus::Paused, remote.status());
    EXPECT_EQ(120 * Second, remote.position());
}

TEST_F(Seeking, WhileABoxIsOpenNothingIsMoved)
{
    play();
    boxOpen = true;
    EXPECT_FALSE(remote.seek(5 * Second));
    EXPECT_FALSE(remote.setPosition(5 * Second));
    EXPECT_EQ("", told());
    EXPECT_EQ(30 * Second, remote.position());
}

TEST_F(Seeking, AfterTheEndOfTheProgramNothingIsMoved)
{
    play();
    root().services.events.endProcess();
    seekTo(root(), 50);
    EXPECT_EQ("", told());
}

TEST_F(Seeking, APlayGoesOnBehindANextThatFoundNoTitle)
{
    play();
    player().pretendItem(1);
    pPausePlayer_Click(root());
    root().pPlayForward.Click();
    ASSERT_EQ(PlayState::Paused, player().playState());
    ASSERT_TRUE(remote.canPlay());
    EXPECT_TRUE(remote.playPause());
    EXPECT_EQ(PlayState::Playing, player().playState());
}

} // namespace orvantine::fake
