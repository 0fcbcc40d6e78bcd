#include "playback/Volume.h"

#include "playback/PlaybackWorld.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr auto NoMixerBox =
    "box title \" Sound und Audiowiedergabe\" text \"Die Soundkarte konnte nicht gefunden oder initialisiert werden.   "
    " \\nWarscheinlich ist die Audiowiedergabe nicht verfügbar.\" icon critical buttons ok answer ok";

class MixerLines : public fake::PlaybackWorld
{
protected:
    void SetUp() override
    {
        startPlayback();
        root().volume.reset();
        forgetCalls();
    }

    fake::FakeMixer& mixer() { return desktop.mixer; }

    /// The class by itself, as its users make it.
    std::unique_ptr<clsVolume> made() { return std::make_unique<clsVolume>(desktop.services().mixer); }

    /// What the mixer was asked since the last look.
    [[nodiscard]] std::string asked()
    {
        QStringList calls;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (line.startsWith(u"mixer."_s))
                calls += line;
        return lines(calls);
    }

    void everyLine()
    {
        mixer().lines = {{4, {{0, 65535}, 1}},  {4099, {{1, 101}, 2}}, {4104, {{2, 102}, 3}}, {4100, {{3, 103}, 4}},
                         {4101, {{4, 104}, 5}}, {4098, {{5, 105}, 6}}, {4105, {{6, 106}, 7}}};
    }
};

} // namespace

TEST_F(MixerLines, AreLookedUpInTheirOrderWhenTheClassStarts)
{
    everyLine();
    const auto volume = made();
    EXPECT_EQ(asked(), "mixer.open\nmixer.line 4\nmixer.line 4099\nmixer.line 4104\nmixer.line 4100\nmixer.line 4101\n"
                       "mixer.line 4098");
}

TEST_F(MixerLines, TakeTheAuxiliaryOneAsTheSecondTryForLineIn)
{
    everyLine();
    mixer().lines.remove(4098);
    const auto volume = made();
    EXPECT_EQ(asked(), "mixer.open\nmixer.line 4\nmixer.line 4099\nmixer.line 4104\nmixer.line 4100\nmixer.line 4101\n"
                       "mixer.line 4098\nmixer.line 4105");
    EXPECT_EQ(volume->MinLineInVolume(), 6);
    EXPECT_EQ(volume->MaxLineInVolume(), 106);
    EXPECT_EQ(volume->LineInVolume(), 7);
    volume->setLineInVolume(50);
    EXPECT_EQ(mixer().lines[4105].level, 50);
}

TEST_F(MixerLines, GiveTheTwelveLimits)
{
    everyLine();
    const auto volume = made();
    EXPECT_EQ(volume->MinWaveVolume(), 0);
    EXPECT_EQ(volume->MaxWaveVolume(), 65535);
    EXPECT_EQ(volume->MinMicVolume(), 1);
    EXPECT_EQ(volume->MaxMicVolume(), 101);
    EXPECT_EQ(volume->MinWavInVolume(), 2);
    EXPECT_EQ(volume->MaxWavInVolume(), 102);
    EXPECT_EQ(volume->MinMidVolume(), 3);
    EXPECT_EQ(volume->MaxMidVolume(), 103);
    EXPECT_EQ(volume->MinCDVolume(), 4);
    EXPECT_EQ(volume->MaxCDVolume(), 104);
    EXPECT_EQ(volume->MinLineInVolume(), 5);
    EXPECT_EQ(volume->MaxLineInVolume(), 105);
}

TEST_F(MixerLines, KeepTheLimitsThatTheyHadWhenTheClassStarted)
{
    const auto volume = made();
    mixer().lines[4].range = {10, 20};
    EXPECT_EQ(volume->MinWaveVolume(), 0);
    EXPECT_EQ(volume->MaxWaveVolume(), 65535);
}

TEST_F(MixerLines, AreReadByTheSixLevels)
{
    everyLine();
    const auto volume = made();
    forgetCalls();
    EXPECT_EQ(volume->WaveVolume(), 1);
    EXPECT_EQ(volume->MicroVolume(), 2);
    EXPECT_EQ(volume->WaveInVolume(), 3);
    EXPECT_EQ(volume->MidVolume(), 4);
    EXPECT_EQ(volume->CD_Volume(), 5);
    EXPECT_EQ(volume->LineInVolume(), 6);
    EXPECT_EQ(asked(), "mixer.level 4\nmixer.level 4099\nmixer.level 4104\nmixer.level 4100\nmixer.level 4101\n"
                       "mixer.level 4098");
}

TEST_F(MixerLines, AreWrittenByTheSixLevels)
{
    everyLine();
    const auto volume = made();
    forgetCalls();
    volume->setWaveVolume(64000);
    volume->setMicroVolume(11);
    volume->setWaveInVolume(12);
    volume->setMidVolume(13);
    volume->setCD_Volume(14);
    volume->setLineInVolume(15);
    EXPECT_EQ(asked(),
              "mixer.setLevel 4 64000\nmixer.setLevel 4099 11\nmixer.setLevel 4104 12\nmixer.setLevel 4100 13\n"
              "mixer.setLevel 4101 14\nmixer.setLevel 4098 15");
}

TEST_F(MixerLines, AreWrittenWithinTheirBounds)
{
    everyLine();
    const auto volume = made();
    forgetCalls();
    volume->setMicroVolume(0);
    volume->setMicroVolume(102);
    volume->setWaveVolume(-1);
    volume->setWaveVolume(72000);
    EXPECT_EQ(asked(), "mixer.setLevel 4099 1\nmixer.setLevel 4099 101\nmixer.setLevel 4 0\nmixer.setLevel 4 65535");
}

TEST_F(MixerLines, ThatAreNotFoundKeepNoughtAsLimitsAndAreWrittenWithNought)
{
    mixer().lines.clear();
    const auto volume = made();
    EXPECT_EQ(volume->MinWaveVolume(), 0);
    EXPECT_EQ(volume->MaxWaveVolume(), 0);
    EXPECT_EQ(volume->MaxLineInVolume(), 0);
    EXPECT_EQ(volume->WaveVolume(), 0);
    forgetCalls();
    volume->setWaveVolume(8000);
    volume->setLineInVolume(8000);
    EXPECT_EQ(asked(), "mixer.setLevel 4 0\nmixer.setLevel 4098 0");
}

TEST_F(MixerLines, WithoutASoundCardAreToldAndReadAsNoughtAndAreNeverWritten)
{
    mixer().present = false;
    desktop.messages.answer(Answer::Ok);
    LoadVolume(root());
    EXPECT_EQ(boxes(), NoMixerBox);
    EXPECT_EQ(asked(), "mixer.open");
    const auto volume = root().volume;
    EXPECT_EQ(volume->MaxWaveVolume(), 0);
    EXPECT_EQ(volume->WaveVolume(), 0);
    EXPECT_EQ(volume->LineInVolume(), 0);
    volume->setWaveVolume(8000);
    EXPECT_EQ(asked(), "");
}

TEST_F(MixerLines, CallTheSpeakersWaveAndTheSourceOfTheWaveOutputWaveIn)
{
    everyLine();
    const auto volume = made();
    forgetCalls();
    EXPECT_EQ(volume->WaveVolume(), mixer().lines[4].level);
    EXPECT_EQ(volume->WaveInVolume(), mixer().lines[4104].level);
}

TEST_F(MixerLines, AreClosedWhenTheClassEnds)
{
    auto volume = made();
    forgetCalls();
    EXPECT_EQ(mixer().handles, 1);
    volume.reset();
    EXPECT_EQ(asked(), "mixer.close");
    EXPECT_EQ(mixer().handles, 0);
}

class VolumeSliderEvents : public MixerLines
{
protected:
    void level(long speakers)
    {
        mixer().lines[4].level = speakers;
        LoadVolume(root());
    }
    /// The user drags the thumb to a step.
    void scroll(int step)
    {
        root().sVolume.Value = step;
        root().sVolume.Scroll();
    }
};

TEST_F(VolumeSliderEvents, LoadVolumePutsTheSliderAtTheLevelDividedBy8000)
{
    const std::pair<long, int> cases[] = {{0, 0},      {3999, 0},   {4001, 1},   {8000, 1},
                                          {11'999, 1}, {32'000, 4}, {64'000, 8}, {65'535, 8}};
    for (const auto& [speakers, step] : cases) {
        level(speakers);
        EXPECT_EQ(root().sVolume.Value.value(), step) << speakers;
    }
}

TEST_F(VolumeSliderEvents, LoadVolumeRoundsHalvesToTheEvenStep)
{
    const std::pair<long, int> cases[] = {{4000, 0}, {12'000, 2}, {20'000, 2}, {28'000, 4}, {36'000, 4}, {60'000, 8}};
    for (const auto& [speakers, step] : cases) {
        level(speakers);
        EXPECT_EQ(root().sVolume.Value.value(), step) << speakers;
    }
}

TEST_F(VolumeSliderEvents, TheSliderRunsFromNoughtToEightWhateverTheMixerGives)
{
    EXPECT_EQ(root().sVolume.Min.value(), 0);
    EXPECT_EQ(root().sVolume.Max.value(), 8);
    mixer().lines[4].range = {-100'000, 100'000};
    level(100'000);
    EXPECT_EQ(root().sVolume.Value.value(), 8);
    level(-100'000);
    EXPECT_EQ(root().sVolume.Value.value(), 0);
}

TEST_F(VolumeSliderEvents, EveryLoadOpensTheMixerAnewBeforeTheOldOneIsClosed)
{
    LoadVolume(root());
    EXPECT_EQ(mixer().handles, 1);
    forgetCalls();
    mixer().lines = {{4, {{0, 65535}, 48'000}}};
    LoadVolume(root());
    EXPECT_EQ(asked(), "mixer.open\nmixer.line 4\nmixer.line 4099\nmixer.line 4104\nmixer.line 4100\nmixer.line 4101\n"
                       "mixer.line 4098\nmixer.line 4105\nmixer.close\nmixer.level 4");
    EXPECT_EQ(mixer().handles, 1);
    EXPECT_EQ(root().sVolume.Value.value(), 6);
}

TEST_F(VolumeSliderEvents, APressPicksUpAChangeThatWasMadeElsewhere)
{
    level(16'000);
    mixer().lines[4].level = 56'000;
    root().sVolume.MouseDown();
    EXPECT_EQ(root().sVolume.Value.value(), 7);
}

TEST_F(VolumeSliderEvents, AMachineWithoutAMixerShowsTheMessageAgainWithEachPress)
{
    level(16'000);
    mixer().present = false;
    for (int press = 0; press < 2; ++press) {
        desktop.messages.answer(Answer::Ok);
        root().sVolume.MouseDown();
        EXPECT_EQ(boxes(), NoMixerBox);
        EXPECT_EQ(root().sVolume.Value.value(), 0);
    }
    forgetCalls();
    scroll(5);
    EXPECT_EQ(asked(), "");
    EXPECT_EQ(root().sVolume.Text.value(), u"62"_s);
}

TEST_F(VolumeSliderEvents, AScrollTells12Comma5TimesTheValueRoundedToTheEvenNumber)
{
    LoadVolume(root());
    QStringList texts;
    for (int step = 0; step <= 8; ++step) {
        scroll(step);
        texts += root().sVolume.Text;
    }
    EXPECT_EQ(texts.join(u' ').toStdString(), "0 12 25 38 50 62 75 88 100");
}

TEST_F(VolumeSliderEvents, AScrollWrites8000TimesTheValueToTheSpeakers)
{
    LoadVolume(root());
    forgetCalls();
    scroll(3);
    scroll(0);
    EXPECT_EQ(asked(), "mixer.setLevel 4 24000\nmixer.setLevel 4 0");
}

TEST_F(VolumeSliderEvents, TheTopPositionGives64000NotTheMaximum)
{
    LoadVolume(root());
    scroll(8);
    EXPECT_EQ(mixer().lines[4].level, 64'000);
}

TEST_F(VolumeSliderEvents, AScrollBeforeAnyLoadTellsTheTextAndWritesNothing)
{
    scroll(4);
    EXPECT_EQ(asked(), "");
    EXPECT_EQ(root().sVolume.Text.value(), u"50"_s);
}

TEST_F(VolumeSliderEvents, AClickMovesTheFocusToTheCatalogue)
{
    int calls = 0;
    root().LListView1.SetFocus = [&calls] { ++calls; };
    root().sVolume.Click();
    EXPECT_EQ(calls, 1);
}

TEST_F(VolumeSliderEvents, ALineThatCameLaterIsNotMutedByTheFirstStep)
{
    const auto speakers = mixer().lines[4];
    mixer().lines.clear();
    LoadVolume(root());
    mixer().lines[4] = speakers;
    mixer().lines[4].level = 40'000;
    root().sVolume.Refresh();
    EXPECT_EQ(root().sVolume.Value.value(), 5);
    scroll(3);
    EXPECT_EQ(mixer().lines[4].level, 24'000);
}

TEST_F(VolumeSliderEvents, WithoutTheSpeakersLineARefreshLeavesTheSlider)
{
    mixer().lines.clear();
    LoadVolume(root());
    root().sVolume.Value = 6;
    root().sVolume.Refresh();
    EXPECT_EQ(root().sVolume.Value.value(), 6);
}

class VolumeAtStart : public fake::PlaybackWorld
{
};

TEST_F(VolumeAtStart, PutsTheSliderAtTheLevelOfTheSpeakers)
{
    desktop.mixer.lines[4].level = 40'000;
    startPlayback();
    EXPECT_EQ(root().sVolume.Value.value(), 5);
}

TEST_F(VolumeAtStart, TellsOnceThatThereIsNoMixer)
{
    desktop.mixer.present = false;
    desktop.messages.answer(Answer::Ok);
    startPlayback();
    EXPECT_EQ(boxes(), NoMixerBox);
    EXPECT_EQ(root().sVolume.Value.value(), 0);
}

} // namespace orvantine
