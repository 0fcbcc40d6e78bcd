#include "SoundContract.h"
#include "desktop/sound/PulseMixer.h"
#include "desktop/sound/PulseSound.h"
#include "platform/Cues.h"
#include "support/Wav.h"
#include "system/sound/SoundServer.h"
#include "system/sound/Tones.h"

#include <QRegularExpression>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Speakers = 4;
constexpr int Microphone = 4099;

/// Volumes of the sink's channels as the server's own tool tells them.
QList<int> sinkVolumes()
{
    const QString told = test::SoundServer::control({u"get-sink-volume"_s, u"@DEFAULT_SINK@"_s});
    QList<int> volumes;
    static const QRegularExpression channel(u": +([0-9]+) /"_s);
    for (auto match = channel.globalMatch(told); match.hasNext();)
        volumes.append(match.next().captured(1).toInt());
    return volumes;
}

class RealWorld : public SoundWorld
{
public:
    MixerDevice& mixer() override { return m_mixer; }
    SoundOutput& sound() override { return m_sound; }
    void turnElsewhere(long level) override
    {
        test::SoundServer::control({u"set-sink-volume"_s, u"@DEFAULT_SINK@"_s, QString::number(level)});
    }
    void setRunning(bool running) override { running ? m_server.start() : m_server.stop(); }
    void removeSinks() override { test::SoundServer::control({u"unload-module"_s, u"module-null-sink"_s}); }

private:
    test::SoundServer m_server;
    PulseMixer m_mixer;
    PulseSound m_sound;
};

INSTANTIATE_TEST_SUITE_P(Pulse, SoundContract,
                         testing::Values(SoundFactory{"Pulse", [] { return std::make_unique<RealWorld>(); }}),
                         SoundContract::nameOf);

class Pulse : public testing::Test
{
protected:
    test::SoundServer server;
    PulseMixer mixer;
    PulseSound sound;
    QString recording = server.path(u"heard.wav"_s);

    QList<double> heard(const QList<double>& hertz)
    {
        server.stopRecording();
        QFile file(recording);
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        const auto read = sound::readWav(file.readAll());
        EXPECT_TRUE(read);
        return read ? hertzOf(findTones(*read, {.hertz = hertz, .shortestSeconds = 0.05})) : QList<double>();
    }
};

/// A server that takes connections and says nothing.
class MuteServer
{
public:
    explicit MuteServer(const QString& path) : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, path.toUtf8().constData(), sizeof address.sun_path);
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(m_socket, 8), 0);
    }
    ~MuteServer() { ::close(m_socket); }
    MuteServer(const MuteServer&) = delete;
    MuteServer& operator=(const MuteServer&) = delete;

private:
    int m_socket;
};

} // namespace

TEST_F(Pulse, TheTopStepOfTheSliderIsSeenByTheServer)
{
    const auto handle = mixer.open();
    ASSERT_TRUE(handle);
    EXPECT_TRUE(handle->setLevel(Speakers, 64'000));
    EXPECT_EQ(sinkVolumes(), (QList<int>{64'001, 64'001}));
    EXPECT_TRUE(handle->setLevel(Speakers, 65'535));
    EXPECT_EQ(sinkVolumes(), (QList<int>{65'536, 65'536}));
    EXPECT_TRUE(handle->setLevel(Speakers, 0));
    EXPECT_EQ(sinkVolumes(), (QList<int>{0, 0}));
}

TEST_F(Pulse, TheBalanceOfTheChannelsStays)
{
    test::SoundServer::control({u"set-sink-volume"_s, u"@DEFAULT_SINK@"_s, u"40000"_s, u"20000"_s});
    const auto handle = mixer.open();
    ASSERT_TRUE(handle);
    EXPECT_NEAR(static_cast<double>(handle->level(Speakers)), 40'000, 1);
    EXPECT_TRUE(handle->setLevel(Speakers, 20'000));
    EXPECT_EQ(sinkVolumes(), (QList<int>{20'000, 10'000}));
}

TEST_F(Pulse, WhatIsLouderThanFullReadsAsFull)
{
    test::SoundServer::control({u"set-sink-volume"_s, u"@DEFAULT_SINK@"_s, u"90000"_s});
    const auto handle = mixer.open();
    ASSERT_TRUE(handle);
    EXPECT_EQ(handle->level(Speakers), 65'535);
}

TEST_F(Pulse, TheDefaultSourceIsTheMicrophone)
{
    test::SoundServer::control({u"load-module"_s, u"module-null-source"_s, u"source_name=mic"_s});
    test::SoundServer::control({u"set-default-source"_s, u"mic"_s});
    const auto handle = mixer.open();
    ASSERT_TRUE(handle);
    const auto range = handle->line(Microphone);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->maximum, 65'535);
    EXPECT_TRUE(handle->setLevel(Microphone, 24'000));
    EXPECT_EQ(handle->level(Microphone), 24'000);
    EXPECT_TRUE(test::SoundServer::control({u"get-source-volume"_s, u"mic"_s}).contains(u" 24000 "_s));
}

TEST_F(Pulse, ADefaultSinkThatChangedIsTheSpeakersFromThenOn)
{
    const auto handle = mixer.open();
    ASSERT_TRUE(handle);
    EXPECT_TRUE(handle->setLevel(Speakers, 8000));
    test::SoundServer::control({u"load-module"_s, u"module-null-sink"_s, u"sink_name=other"_s});
    test::SoundServer::control({u"set-default-sink"_s, u"other"_s});
    test::SoundServer::control({u"set-sink-volume"_s, u"other"_s, u"30000"_s});
    EXPECT_EQ(handle->level(Speakers), 30'000);
    EXPECT_EQ(sound.deviceCount(), 2);
}

TEST_F(Pulse, AServerThatTakesTheConnectionAndIsSilentIsNone)
{
    const MuteServer mute(server.path(u"mute"_s));
    qputenv("PULSE_SERVER", "unix:" + server.path(u"mute"_s).toUtf8());
    EXPECT_FALSE(mixer.open());
    EXPECT_EQ(sound.deviceCount(), 0);
    sound.play(cueNamed(u"READY"_s), SoundFlag::Memory);
}

TEST_F(Pulse, AServerThatIsOnlyStartingIsWaitedFor)
{
    // It takes the connection at once and works only a while later.
    QFile number(server.path(u"server.pid"_s));
    ASSERT_TRUE(number.open(QFile::ReadOnly));
    const QString pid = QString::fromLatin1(number.readAll()).trimmed();
    ASSERT_EQ(QProcess::execute(u"kill"_s, {u"-STOP"_s, pid}), 0);
    QProcess goesOn;
    goesOn.start(u"sh"_s, {u"-c"_s, u"sleep 0.8; kill -CONT $0"_s, pid});
    ASSERT_TRUE(goesOn.waitForStarted());
    EXPECT_TRUE(mixer.open());
    EXPECT_TRUE(goesOn.waitForFinished());
}

TEST_F(Pulse, AServerThatRefusesTheConnectionIsNoneAtOnce)
{
    qputenv("PULSE_SERVER", "unix:" + server.path(u"nobody"_s).toUtf8());
    EXPECT_FALSE(mixer.open());
}

TEST_F(Pulse, ASoundIsHeardWholeBeforePlayReturns)
{
    server.record(recording);
    sound.play(fake::wav({.milliseconds = 400, .hertz = 440, .samplesPerSecond = 44100}), SoundFlag::Memory);
    sound.play(fake::wav({.milliseconds = 400, .hertz = 660, .samplesPerSecond = 22050}), SoundFlag::Memory);
    // The recorder hears everything with a delay, so something is played behind what is to be heard.
    sound.play(fake::wav({.milliseconds = 400, .hertz = 880}), SoundFlag::Memory);
    EXPECT_EQ(heard({440, 660, 880}).mid(0, 2), (QList<double>{440, 660}));
}

TEST_F(Pulse, TheCuesAreHeard)
{
    server.record(recording);
    for (const QString& name : {u"PLAY"_s, u"STOP"_s, u"READY"_s}) {
        sound.play(cueNamed(name), SoundFlag::Memory | SoundFlag::NoDefault);
        sound.play(fake::wav({.milliseconds = 200}), SoundFlag::Memory);
    }
    QList<double> tones = heard({523.25, 659.26, 783.99, 1046.5});
    EXPECT_TRUE(tones.contains(783.99) && tones.contains(523.25) && tones.contains(1046.5));
    EXPECT_LT(tones.indexOf(783.99), tones.indexOf(1046.5));
}

TEST_F(Pulse, ASoundThatIsNotWaitedForPlaysOnAndIsEndedByTheNextOne)
{
    server.record(recording);
    sound.play(fake::wav({.milliseconds = 60'000, .hertz = 440, .samplesPerSecond = 44100}),
               SoundFlag::Memory | SoundFlag::Async);
    // The program is free meanwhile; after that much of another sound's time the first one is heard.
    PulseSound other;
    other.play(fake::wav({.milliseconds = 800}), SoundFlag::Memory);
    sound.play(fake::wav({.milliseconds = 500, .hertz = 660, .samplesPerSecond = 44100}), SoundFlag::Memory);
    sound.play(fake::wav({.milliseconds = 400}), SoundFlag::Memory);
    EXPECT_EQ(heard({440, 660}), (QList<double>{440, 660}));
}

TEST_F(Pulse, ASoundEndsWithTheProgramAndWithTheServer)
{
    {
        PulseSound ended;
        ended.play(fake::wav({.milliseconds = 60'000, .hertz = 440}), SoundFlag::Memory | SoundFlag::Async);
    }
    sound.play(fake::wav({.milliseconds = 60'000, .hertz = 440}), SoundFlag::Memory | SoundFlag::Async);
    server.stop();
    sound.play(cueNamed(u"PLAY"_s), SoundFlag::Memory);
    server.start();
    EXPECT_EQ(sound.deviceCount(), 1);
}

} // namespace orvantine
