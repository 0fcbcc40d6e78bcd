#include "system/sound/Tones.h"

#include "support/Wav.h"

#include <gtest/gtest.h>

namespace orvantine::sound {

namespace {

Recording played(const QList<fake::WavSound>& sounds)
{
    Recording whole;
    for (const fake::WavSound& sound : sounds) {
        const Recording part = readWav(fake::wav(sound)).value();
        whole.samplesPerSecond = part.samplesPerSecond;
        whole.samples.insert(whole.samples.end(), part.samples.begin(), part.samples.end());
    }
    return whole;
}

const ToneTable Table{.hertz = {440, 550, 660}};

TEST(FindTones, ListsTheTonesInTheirOrder)
{
    const QList<Tone> tones = findTones(played({{.milliseconds = 500, .hertz = 660},
                                                {.milliseconds = 300, .hertz = 440},
                                                {.milliseconds = 400, .hertz = 550}}),
                                        Table);
    EXPECT_EQ(hertzOf(tones), (QList<double>{660, 440, 550}));
    EXPECT_NEAR(tones[0].seconds, 0.5, 0.1);
    EXPECT_NEAR(tones[1].beginSeconds, 0.5, 0.1);
    EXPECT_NEAR(tones[1].seconds, 0.3, 0.1);
    EXPECT_NEAR(tones[2].seconds, 0.4, 0.1);
}

TEST(FindTones, FindsAToneTwiceWithSilenceBetween)
{
    EXPECT_EQ(
        hertzOf(findTones(
            played({{.milliseconds = 300, .hertz = 440}, {.milliseconds = 400}, {.milliseconds = 300, .hertz = 440}}),
            Table)),
        (QList<double>{440, 440}));
}

TEST(FindTones, MergesAToneThatGoesOn)
{
    EXPECT_EQ(
        hertzOf(findTones(played({{.milliseconds = 300, .hertz = 440}, {.milliseconds = 300, .hertz = 440}}), Table)),
        (QList<double>{440}));
}

TEST(FindTones, MarksAToneThatNoTrackHas)
{
    EXPECT_EQ(
        hertzOf(findTones(played({{.milliseconds = 300, .hertz = 440}, {.milliseconds = 300, .hertz = 480}}), Table)),
        (QList<double>{440, 0}));
}

TEST(FindTones, AcceptsAToneWithinTheTolerance)
{
    EXPECT_EQ(hertzOf(findTones(played({{.milliseconds = 300, .hertz = 445}}), Table)), (QList<double>{440}));
    EXPECT_EQ(hertzOf(findTones(played({{.milliseconds = 300, .hertz = 455}}), Table)), (QList<double>{0}));
}

TEST(FindTones, FindsNothingInSilence)
{
    EXPECT_TRUE(findTones(played({{.milliseconds = 500}}), Table).isEmpty());
    EXPECT_TRUE(findTones({.samplesPerSecond = 44100, .samples = {}}, Table).isEmpty());
}

TEST(FindTones, LeavesOutAClick)
{
    EXPECT_EQ(hertzOf(findTones(played({{.milliseconds = 400, .hertz = 440},
                                        {.milliseconds = 20, .hertz = 660},
                                        {.milliseconds = 400, .hertz = 440}}),
                                Table)),
              (QList<double>{440}));
}

TEST(ReadWav, ReadsAFileWhoseSizesWereNeverWritten)
{
    QByteArray file = fake::wav({.milliseconds = 100, .hertz = 440});
    const size_t whole = readWav(file).value().samples.size();
    file.replace(40, 4, QByteArray(4, '\0'));
    EXPECT_EQ(readWav(file).value().samples.size(), whole);
    file.replace(40, 4, QByteArray(4, '\xFF'));
    EXPECT_EQ(readWav(file).value().samples.size(), whole);
}

TEST(ReadWav, RefusesWhatIsNoWav)
{
    EXPECT_FALSE(readWav({}));
    EXPECT_FALSE(readWav("RIFF1234WAVE"));
    EXPECT_FALSE(readWav(fake::wav({}).left(30)));
    EXPECT_FALSE(readWav(QByteArray(100, 'x')));
}

} // namespace

} // namespace orvantine::sound
