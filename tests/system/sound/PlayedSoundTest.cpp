#include "desktop/media/MpvPlayer.h"
#include "media/MusicFolder.h"
#include "support/Wav.h"
#include "system/sound/SoundServer.h"
#include "system/sound/Tones.h"

#include <QFile>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class PlayedSound : public ::testing::Test
{
protected:
    QString tone(const QString& name, double hertz, int milliseconds = 700)
    {
        return music.write(name, fake::wav({.milliseconds = milliseconds, .hertz = hertz, .samplesPerSecond = 44100}));
    }

    test::SoundServer server;
    test::MusicFolder music;
    PosixFiles files;
    MpvPlayer player{files, {.options = {{"ao", "pulse"}}}};
};

TEST_F(PlayedSound, IsHeardInTheOrderOfTheList)
{
    tone(u"a.wav"_s, 440);
    tone(u"b.wav"_s, 660);
    tone(u"c.wav"_s, 550);
    tone(u"silence.wav"_s, 0);
    const QString recorded = music.path(u"recorded.wav"_s);
    server.record(recorded);

    player.setURL(music.writeList({u"a.wav"_s, u"gone.wav"_s, u"b.wav"_s, u"c.wav"_s, u"silence.wav"_s}));
    EXPECT_TRUE(test::waitUntil([this] { return player.soundOutput() == "pulse"; }));
    EXPECT_TRUE(test::waitUntil([this] { return player.status() == u"Beendet"_s; }));
    server.stopRecording();

    QFile file{recorded};
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const auto recording = sound::readWav(file.readAll());
    ASSERT_TRUE(recording);
    EXPECT_EQ(sound::hertzOf(findTones(*recording, {.hertz = {440, 550, 660}})), (QList<double>{440, 660, 550}));
}

TEST_F(PlayedSound, IsASilentOneWhenTheSoundServerGoesAwayAndComesBackWithTheNextList)
{
    const QString list = music.writeList({u"a.wav"_s, u"b.wav"_s});
    tone(u"a.wav"_s, 440, 60'000);
    tone(u"b.wav"_s, 660, 60'000);
    player.setURL(list);
    ASSERT_TRUE(test::waitUntil([this] { return player.soundOutput() == "pulse"; }));

    server.stop();
    ASSERT_TRUE(test::waitUntil([this] { return player.soundOutput() == "null"; }));
    EXPECT_EQ(player.status(), u"Wiedergabe"_s);
    EXPECT_EQ(player.currentSourceURL(), music.path(u"a.wav"_s));
    player.next();
    ASSERT_TRUE(test::waitUntil([this] { return player.status() == u"Wiedergabe"_s; }));
    EXPECT_EQ(player.currentSourceURL(), music.path(u"b.wav"_s));

    server.start();
    player.close();
    player.setURL(list);
    EXPECT_TRUE(test::waitUntil([this] { return player.soundOutput() == "pulse"; }));
}

TEST_F(PlayedSound, BearsTheNameOfTheProgram)
{
    player.setURL(tone(u"a.wav"_s, 440, 60'000));
    ASSERT_TRUE(test::waitUntil([this] { return player.soundOutput() == "pulse"; }));
    const auto streams = [] { return test::SoundServer::control({u"list"_s, u"sink-inputs"_s}); };
    ASSERT_TRUE(test::waitUntil([&] { return streams().contains(u"media.name"_s); }));
    const QString told = streams();
    EXPECT_TRUE(told.contains(u"application.name = \"Orvanten Manager\""_s)) << told.toStdString();
    EXPECT_TRUE(told.contains(u"media.name = \"a.wav - Orvanten Manager\""_s)) << told.toStdString();
}

TEST_F(PlayedSound, ComesBackWithinTheTrack)
{
    player.setURL(tone(u"a.wav"_s, 440, 60'000));
    ASSERT_TRUE(test::waitUntil([this] { return player.soundOutput() == "pulse"; }));
    server.stop();
    ASSERT_TRUE(test::waitUntil([this] { return player.soundOutput() == "null"; }));
    server.start();
    EXPECT_TRUE(test::waitUntil([this] { return player.soundOutput() == "pulse"; }));
    EXPECT_EQ(player.status(), u"Wiedergabe"_s);
    EXPECT_EQ(player.currentSourceURL(), music.path(u"a.wav"_s));
}

TEST_F(PlayedSound, IsASilentOneWhenTheSinkGoesAway)
{
    // With the outputs that the program itself asks for.
    MpvPlayer asInTheProgram{files};
    const QString list = music.writeList({tone(u"a.wav"_s, 440, 60'000), tone(u"b.wav"_s, 660, 60'000)});
    asInTheProgram.setURL(list);
    ASSERT_TRUE(test::waitUntil([&] { return asInTheProgram.soundOutput() == "pulse"; }));
    test::SoundServer::control({u"unload-module"_s, u"module-null-sink"_s});
    ASSERT_TRUE(test::waitUntil([&] { return asInTheProgram.soundOutput() == "null"; }));
    EXPECT_EQ(asInTheProgram.status(), u"Wiedergabe"_s);
    asInTheProgram.next();
    EXPECT_TRUE(test::waitUntil([&] { return asInTheProgram.status() == u"Wiedergabe"_s; }));
    EXPECT_EQ(asInTheProgram.currentSourceURL(), music.path(u"b.wav"_s));
}

} // namespace

} // namespace orvantine
