#include "media/PlayerContract.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

using test::Which;

constexpr double Near = 0.5;

/// Two tracks of two minutes, the first one plays.
class PositionContract : public test::PlayerContract
{
protected:
    PositionContract()
    {
        player().PositionChange = [this] { ++moves; };
        know({}, {}, 120);
        longSound(u"a.wav"_s);
        longSound(u"b.wav"_s);
    }

    void play() { playList({u"a.wav"_s, u"b.wav"_s}); }
    /// The position, once the move was told.
    double moved()
    {
        awaitMove(moves);
        EXPECT_EQ(1, moves);
        moves = 0;
        return player().currentPosition();
    }

    int moves = 0;
};

INSTANTIATE_TEST_SUITE_P(, PositionContract, ::testing::Values(Which::Fake, Which::Real), test::nameOfPlayer);

} // namespace

TEST_P(PositionContract, WithoutAnItemThereIsNone)
{
    EXPECT_EQ(player().currentPosition(), 0);
    player().setCurrentPosition(30);
    EXPECT_EQ(player().currentPosition(), 0);
    play();
    player().stop();
    player().setCurrentPosition(30);
    EXPECT_EQ(player().currentPosition(), 0);
    player().close();
    EXPECT_EQ(player().currentPosition(), 0);
    test::serveEvents();
    EXPECT_EQ(moves, 0);
}

TEST_P(PositionContract, APausedPlayerGoesToTheSecondAndStaysPaused)
{
    play();
    player().pause();
    player().setCurrentPosition(90);
    EXPECT_NEAR(player().currentPosition(), 90, Near) << "before the engine is there";
    EXPECT_NEAR(moved(), 90, Near);
    EXPECT_EQ(shown(), "2 Angehalten [a.wav]");
    player().setCurrentPosition(30.5);
    EXPECT_NEAR(moved(), 30.5, Near);
}

TEST_P(PositionContract, APlayingOneGoesOnFromThere)
{
    play();
    player().setCurrentPosition(60);
    const double place = moved();
    EXPECT_GE(place, 60 - Near);
    EXPECT_LT(place, 120);
    EXPECT_EQ(shown(), "3 Wiedergabe [a.wav]");
    EXPECT_EQ(takeChanges(), "");
}

TEST_P(PositionContract, StartAndEndAreTheLimits)
{
    play();
    player().pause();
    player().setCurrentPosition(-5);
    EXPECT_NEAR(moved(), 0, Near);
    player().setCurrentPosition(5000);
    EXPECT_NEAR(player().currentPosition(), 120, Near);
    EXPECT_EQ(shown(), "2 Angehalten [a.wav]");
}

TEST_P(PositionContract, AtTheEndOfAnItemTheListGoesOn)
{
    play();
    player().setCurrentPosition(5000);
    EXPECT_TRUE(test::waitUntil([this] { return player().currentSourceURL().endsWith(u"b.wav"); }));
    awaitPlaying();
    EXPECT_EQ(shown(), "3 Wiedergabe [b.wav]");
    EXPECT_EQ(takeChanges(), "b.wav b.wav");
    EXPECT_LT(player().currentPosition(), 60);
}

TEST_P(PositionContract, AnotherItemBeginsAtItsStart)
{
    play();
    player().pause();
    player().setCurrentPosition(90);
    static_cast<void>(moved());
    player().next();
    awaitPlaying();
    EXPECT_LT(player().currentPosition(), 60);
    EXPECT_EQ(shown(), "3 Wiedergabe [b.wav]");
}

TEST_P(PositionContract, FastForwardAndFastReverseMoveItByTenSeconds)
{
    play();
    player().pause();
    player().setCurrentPosition(50);
    static_cast<void>(moved());
    player().fastForward();
    EXPECT_NEAR(moved(), 60, Near);
    player().fastReverse();
    EXPECT_NEAR(moved(), 50, Near);
}

TEST_P(PositionContract, OfTwoQuickMovesTheLastOneIsTold)
{
    play();
    QList<double> told;
    player().setCurrentPosition(30);
    player().PositionChange = [&] { told.append(player().currentPosition()); };
    player().setCurrentPosition(80);
    EXPECT_TRUE(test::waitUntil([&] { return !told.isEmpty(); }));
    for (const double place : told)
        EXPECT_GE(place, 80 - Near);
}

TEST(PlayedPosition, GoesOnWhileItIsHeardAndStandsWhileItIsPaused)
{
    const test::MusicFolder music;
    test::CountingFiles files;
    MpvPlayer player{files, {.options = {{"ao", "null"}}}};
    player.setURL(music.write(u"a.wav"_s, fake::wav({.milliseconds = 120'000})));
    double before = 0;
    ASSERT_TRUE(test::waitUntil([&] {
        before = player.currentPosition();
        return before > 1.5;
    }));
    player.pause();
    const double held = player.currentPosition();
    ASSERT_TRUE(test::waitUntil([&, looks = 0]() mutable { return ++looks > 20; }));
    EXPECT_NEAR(player.currentPosition(), held, Near);
    EXPECT_LT(player.currentPosition(), 60);
}

} // namespace orvantine
