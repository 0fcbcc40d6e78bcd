#include "SoundContract.h"

#include "platform/Cues.h"

#include <QList>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Speakers = 4;
const QList<int> LinesThatAreNotThere{4104, 4100, 4101, 4098, 4105, 0};

} // namespace

TEST_P(SoundContract, TheSpeakersRunFromNoughtTo65535)
{
    const auto handle = world->mixer().open();
    ASSERT_TRUE(handle);
    const auto range = handle->line(Speakers);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->minimum, 0);
    EXPECT_EQ(range->maximum, 65535);
}

TEST_P(SoundContract, ALevelThatWasSetIsRead)
{
    const auto handle = world->mixer().open();
    ASSERT_TRUE(handle);
    for (const long level : {65'535L, 0L, 1L, 8000L, 32'767L, 32'768L, 64'000L, 65'534L}) {
        EXPECT_TRUE(handle->setLevel(Speakers, level)) << level;
        EXPECT_EQ(handle->level(Speakers), level);
    }
}

TEST_P(SoundContract, ALevelThatWasSetElsewhereIsRead)
{
    const auto handle = world->mixer().open();
    ASSERT_TRUE(handle);
    for (const long level : {16'000L, 48'000L}) {
        world->turnElsewhere(level);
        EXPECT_NEAR(static_cast<double>(handle->level(Speakers)), static_cast<double>(level), 1);
    }
}

TEST_P(SoundContract, ALineThatIsNotThereHasNoBoundsAndReadsAsNoughtAndCannotBeSet)
{
    const auto handle = world->mixer().open();
    ASSERT_TRUE(handle);
    for (const int line : LinesThatAreNotThere) {
        EXPECT_FALSE(handle->line(line)) << line;
        EXPECT_EQ(handle->level(line), 0) << line;
        EXPECT_FALSE(handle->setLevel(line, 0)) << line;
    }
    EXPECT_FALSE(handle->line(4099)) << "a source that listens to the speakers is no microphone";
}

TEST_P(SoundContract, WithoutASinkThereAreNoSpeakers)
{
    world->removeSinks();
    const auto handle = world->mixer().open();
    ASSERT_TRUE(handle);
    EXPECT_FALSE(handle->line(Speakers));
    EXPECT_EQ(handle->level(Speakers), 0);
    EXPECT_FALSE(handle->setLevel(Speakers, 8000));
    EXPECT_EQ(world->sound().deviceCount(), 0);
}

TEST_P(SoundContract, WithoutAServerThereIsNoMixerAndNoDevice)
{
    world->setRunning(false);
    EXPECT_FALSE(world->mixer().open());
    EXPECT_EQ(world->sound().deviceCount(), 0);
    world->sound().play(cueNamed(u"PLAY"_s), SoundFlag::Memory);
    world->sound().play(cueNamed(u"PLAY"_s), SoundFlag::Memory | SoundFlag::Async);
}

TEST_P(SoundContract, AHandleStandsByItself)
{
    auto first = world->mixer().open();
    const auto second = world->mixer().open();
    ASSERT_TRUE(first && second);
    EXPECT_TRUE(first->setLevel(Speakers, 24'000));
    first.reset();
    EXPECT_EQ(second->level(Speakers), 24'000);
    EXPECT_TRUE(second->setLevel(Speakers, 32'000));
    EXPECT_EQ(second->level(Speakers), 32'000);
}

TEST_P(SoundContract, AHandleIsDeadWhileTheServerIsAwayAndWorksOnceItIsBack)
{
    const auto handle = world->mixer().open();
    ASSERT_TRUE(handle);
    world->setRunning(false);
    EXPECT_FALSE(handle->line(Speakers));
    EXPECT_EQ(handle->level(Speakers), 0);
    EXPECT_FALSE(handle->setLevel(Speakers, 8000));
    world->setRunning(true);
    EXPECT_TRUE(handle->line(Speakers));
    EXPECT_TRUE(handle->setLevel(Speakers, 8000));
    EXPECT_EQ(handle->level(Speakers), 8000);
    EXPECT_TRUE(world->mixer().open());
}

TEST_P(SoundContract, ASinkIsADevice)
{
    EXPECT_EQ(world->sound().deviceCount(), 1);
}

TEST_P(SoundContract, ADamagedImageIsSilence)
{
    const QByteArray cue = cueNamed(u"PLAY"_s);
    for (const QByteArray& wave : {QByteArray(), QByteArray("RIFF"), cue.left(43), QByteArray(5000, 'x')}) {
        world->sound().play(wave, SoundFlag::Memory);
        world->sound().play(wave, SoundFlag::Memory | SoundFlag::Async);
    }
}

} // namespace orvantine
