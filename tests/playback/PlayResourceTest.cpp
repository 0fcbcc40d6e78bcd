#include "playback/PlayResource.h"

#include "platform/Cues.h"
#include "playback/PlaybackWorld.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class PlayCue : public fake::PlaybackWorld
{
protected:
    void SetUp() override
    {
        startPlayback();
        forgetCalls();
    }

    /// What was played since the last look: name and flags.
    [[nodiscard]] std::string cues()
    {
        QStringList calls;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (line.startsWith(u"cue."_s))
                calls += line;
        return lines(calls);
    }
};

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
    return file.readAll();
}

} // namespace

TEST_F(PlayCue, TheCommandsCuesAreFoundIgnoringCaseAndPlayedToTheirEnd)
{
    PlayResource(root(), u"Play"_s);
    PlayResource(root(), u"Stop"_s);
    PlayResource(root(), u"Ready"_s);
    PlayResource(root(), u"tipp"_s);
    EXPECT_EQ(cues(), "cue.play PLAY 6\n"
                      "cue.play STOP 6\n"
                      "cue.play READY 6\n"
                      "cue.play TIPP 6");
    ASSERT_EQ(desktop.sound.played.size(), 4);
    EXPECT_EQ(desktop.sound.played[2].wave, cueNamed(u"READY"_s));
}

TEST_F(PlayCue, AMachineWithNoWaveDevicePlaysNoCueAndRaisesNoError)
{
    desktop.sound.devices = 0;
    EXPECT_FALSE(SoundCardPresent(root()));
    PlayResource(root(), u"Play"_s);
    EXPECT_EQ(cues(), "");
}

TEST_F(PlayCue, ASoundCardIsPresentIfThereIsMoreThanNoWaveDevice)
{
    desktop.sound.devices = 1;
    EXPECT_TRUE(SoundCardPresent(root()));
    desktop.sound.devices = 3;
    EXPECT_TRUE(SoundCardPresent(root()));
}

TEST_F(PlayCue, AnUnknownNameIsSilence)
{
    PlayResource(root(), u"Fanfare"_s);
    PlayResource(root(), QString());
    EXPECT_EQ(cues(), "");
}

TEST_F(PlayCue, AFlagsValueOfOneBecomesFive)
{
    PlayResource(root(), u"Play"_s, 1);
    EXPECT_EQ(cues(), "cue.play PLAY 5");
}

TEST_F(PlayCue, FlagsGetTheBitFourIfTheyLackIt)
{
    for (const int flags : {0, 2, 3, 4, 6, 7, 16})
        PlayResource(root(), u"Stop"_s, flags);
    EXPECT_EQ(cues(), "cue.play STOP 4\n"
                      "cue.play STOP 6\n"
                      "cue.play STOP 7\n"
                      "cue.play STOP 4\n"
                      "cue.play STOP 6\n"
                      "cue.play STOP 7\n"
                      "cue.play STOP 20");
}

TEST(Cues, AreWhatTheirToolMakes)
{
    const QTemporaryDir made;
    ASSERT_EQ(QProcess::execute(QStringLiteral(ORVANTINE_MAKE_CUES), {made.path()}), 0);
    for (const QString& name : cueNames()) {
        const QByteArray bytes = bytesOf(made.filePath(name + u".wav"_s));
        EXPECT_EQ(bytes, bytesOf(QStringLiteral(ORVANTINE_CUES "/") + name + u".wav"_s)) << name.toStdString();
        EXPECT_EQ(bytes, cueNamed(name)) << name.toStdString();
    }
}

TEST(Cues, AreShort)
{
    // The window stands still for their length: half a second at the most, 44100 bytes of 22050 samples a second.
    for (const QString& name : cueNames()) {
        EXPECT_LE(cueNamed(name).size(), 44 + 44100 / 2) << name.toStdString();
        EXPECT_TRUE(cueNamed(name).startsWith("RIFF")) << name.toStdString();
    }
}

} // namespace orvantine
