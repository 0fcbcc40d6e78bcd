#include "desktop/media/MpvPlayer.h"

#include "media/MusicFolder.h"
#include "support/Wav.h"

#include <QEventLoop>
#include <QFile>

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class RealPlayer : public ::testing::Test
{
protected:
    static MpvSetup silent() { return {.options = {{"ao", "null"}}}; }

    /// Notes each change of the player as "name", or "name!" once its data is known.
    void watch(MpvPlayer& player)
    {
        player.MediaChange = [this, &player] {
            const QString name = player.currentSourceURL().section(u'/', -1);
            changes.append(player.currentDuration() > 0 ? name + u'!' : name);
        };
    }

    [[nodiscard]] std::string changesText() const { return changes.join(u' ').toStdString(); }

    [[nodiscard]] static bool awaitEnd(MpvPlayer& player)
    {
        const bool ended = test::waitUntil([&] { return player.status() == u"Beendet"_s; });
        test::serveEvents();
        return ended;
    }

    QString longSound(const QString& name) { return music.write(name, fake::wav({.milliseconds = 120'000})); }
    QString shortSound(const QString& name) { return music.write(name, fake::wav({.milliseconds = 60})); }
    /// Long enough that its data is known before it ends, however busy the machine is.
    QString knownSound(const QString& name) { return music.write(name, fake::wav({.milliseconds = 700})); }

    test::MusicFolder music;
    test::CountingFiles files;
    QStringList changes;
};

TEST_F(RealPlayer, WithoutThePlayerLibraryNothingIsPlayed)
{
    MpvPlayer player{files, {.library = u"liborvantine-none.so.9"_s}};
    watch(player);
    shortSound(u"a.wav"_s);
    player.setURL(music.writeList({u"a.wav"_s, u"a.wav"_s}));
    EXPECT_EQ(player.status(), u"Beendet"_s);
    EXPECT_EQ(player.playState(), PlayState::Stopped);
    EXPECT_EQ(player.playlistCount(), 2);
    player.play();
    player.next();
    player.previous();
    player.fastForward();
    test::serveEvents();
    EXPECT_EQ(player.status(), u"Beendet"_s);
    EXPECT_EQ(changesText(), "");
    player.close();
    EXPECT_EQ(player.status(), QString{});
}

TEST_F(RealPlayer, StatusSaysThatAFileIsBeingOpened)
{
    MpvPlayer player{files, silent()};
    player.setURL(longSound(u"a.wav"_s));
    EXPECT_EQ(player.status(), u"Wird geöffnet"_s);
    EXPECT_EQ(player.playState(), PlayState::Playing);
}

TEST_F(RealPlayer, PauseHoldsWhileAFileIsBeingOpened)
{
    MpvPlayer player{files, silent()};
    player.setURL(longSound(u"a.wav"_s));
    player.pause();
    EXPECT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    EXPECT_EQ(player.status(), u"Angehalten"_s);
    player.play();
    EXPECT_EQ(player.status(), u"Wiedergabe"_s);
}

TEST_F(RealPlayer, MediaChangeIsNeverCalledFromWithinAnOperation)
{
    MpvPlayer player{files, silent()};
    watch(player);
    longSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    player.setURL(music.writeList({u"a.wav"_s, u"b.wav"_s}));
    player.next();
    player.previous();
    player.stop();
    player.play();
    EXPECT_EQ(changesText(), "");
}

TEST_F(RealPlayer, EventsComeInsideAHandlerThatYields)
{
    MpvPlayer player{files, silent()};
    int depth = 0;
    player.MediaChange = [&] {
        changes.append(player.currentDuration() > 0 ? u"known"_s : u"chosen"_s);
        if (++depth == 1) {
            EXPECT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0 && changes.size() == 2; }));
        }
    };
    player.setURL(longSound(u"a.wav"_s));
    EXPECT_TRUE(test::waitUntil([&] { return depth == 2; }));
    EXPECT_EQ(changesText(), "chosen known");
}

TEST_F(RealPlayer, CanGoAwayAtAnyTime)
{
    const QString track = longSound(u"a.wav"_s);
    {
        MpvPlayer player{files, silent()};
    }
    {
        MpvPlayer player{files, silent()};
        player.setURL(track);
    }
    test::serveEvents();
    {
        MpvPlayer player{files, silent()};
        player.setURL(track);
        EXPECT_TRUE(test::waitUntil([&] { return player.status() == u"Wiedergabe"_s; }));
    }
    test::serveEvents();
}

TEST_F(RealPlayer, TwoPlayersDoNotDisturbEachOther)
{
    MpvPlayer player{files, silent()};
    MpvPlayer info{files, silent()};
    player.setURL(longSound(u"a.wav"_s));
    info.setURL(music.write(u"b.wav"_s, fake::wav({.milliseconds = 90'000})));
    EXPECT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0 && info.currentDuration() > 0; }));
    EXPECT_EQ(player.currentDuration(), 120);
    EXPECT_EQ(info.currentDuration(), 90);
    info.close();
    test::serveEvents();
    EXPECT_EQ(player.status(), u"Wiedergabe"_s);
}

TEST_F(RealPlayer, BrokenFilesArePassedOver)
{
    MpvPlayer player{files, silent()};
    watch(player);
    knownSound(u"a.wav"_s);
    music.write(u"empty.mp3"_s, {});
    music.write(u"junk.mp3"_s, QByteArray(5000, '\x11'));
    music.write(u"cut.wav"_s, fake::wav({}).left(20));
    knownSound(u"b.wav"_s);
    player.setURL(music.writeList({u"empty.mp3"_s, u"a.wav"_s, u"junk.mp3"_s, u"cut.wav"_s, u"b.wav"_s}));
    ASSERT_TRUE(awaitEnd(player));
    EXPECT_EQ(changesText(), "empty.mp3 a.wav a.wav! junk.mp3 cut.wav b.wav b.wav!");
}

TEST_F(RealPlayer, AListOfBrokenFilesIsOverAfterOneRound)
{
    MpvPlayer player{files, silent()};
    watch(player);
    QStringList names;
    for (int i = 0; i < 20; ++i) {
        names.append(u"%1.mp3"_s.arg(i));
        music.write(names.last(), {});
    }
    player.setURL(music.writeList(names));
    ASSERT_TRUE(awaitEnd(player));
    EXPECT_EQ(changes, names);
    EXPECT_EQ(player.currentSourceURL(), music.path(u"19.mp3"_s));
}

TEST_F(RealPlayer, AFileThatVanishedMeanwhileIsPassedOver)
{
    MpvPlayer player{files, silent()};
    watch(player);
    const QString first = longSound(u"a.wav"_s);
    const QString second = shortSound(u"b.wav"_s);
    knownSound(u"c.wav"_s);
    player.setURL(music.writeList({u"a.wav"_s, u"b.wav"_s, u"c.wav"_s}));
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    ASSERT_TRUE(QFile::remove(second));
    for (int i = 0; i < 13; ++i)
        player.fastForward();
    ASSERT_TRUE(awaitEnd(player));
    EXPECT_EQ(changesText(), "a.wav a.wav! b.wav c.wav c.wav!");
}

TEST_F(RealPlayer, FastForwardBeyondTheEndGoesToTheNextTrack)
{
    MpvPlayer player{files, silent()};
    watch(player);
    music.write(u"a.wav"_s, fake::wav({.milliseconds = 9'000}));
    longSound(u"b.wav"_s);
    player.setURL(music.writeList({u"a.wav"_s, u"b.wav"_s}));
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    player.fastForward();
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() == 120; }));
    test::serveEvents();
    EXPECT_EQ(changesText(), "a.wav a.wav! b.wav b.wav!");
}

TEST_F(RealPlayer, AListThatIsNamedLikeATrackIsNotWalkedInto)
{
    MpvPlayer player{files, silent()};
    watch(player);
    longSound(u"inner.wav"_s);
    const QByteArray inner = "#EXTM3U\n" + music.path(u"inner.wav"_s).toUtf8() + "\n";
    music.write(u"list.mp3"_s, inner);
    knownSound(u"a.wav"_s);
    player.setURL(music.writeList({u"list.mp3"_s, u"a.wav"_s}));
    ASSERT_TRUE(awaitEnd(player));
    EXPECT_EQ(changesText(), "list.mp3 a.wav a.wav!");
}

TEST_F(RealPlayer, ATrackThatDescribesAStreamOpensNoPort)
{
    // 45678, as the kernel writes it.
    const auto listens = [] {
        QFile sockets{u"/proc/net/udp"_s};
        return sockets.open(QFile::ReadOnly) && sockets.readAll().contains(":B26E ");
    };
    MpvPlayer player{files, silent()};
    watch(player);
    music.write(u"stream.mp3"_s, "v=0\r\no=- 0 0 IN IP4 127.0.0.1\r\ns=x\r\nc=IN IP4 127.0.0.1\r\nt=0 0\r\n"
                                 "m=audio 45678 RTP/AVP 0\r\n");
    longSound(u"a.wav"_s);
    player.setURL(music.writeList({u"stream.mp3"_s, u"a.wav"_s}));
    bool listened = false;
    ASSERT_TRUE(test::waitUntil([&] {
        listened = listened || listens();
        return listened || player.currentDuration() > 0;
    }));
    EXPECT_FALSE(listened);
    test::serveEvents();
    EXPECT_EQ(changesText(), "stream.mp3 a.wav a.wav!");
}

TEST_F(RealPlayer, ATrackThatNamesOthersPlaysNoneOfThem)
{
    const QByteArray sound = longSound(u"inner.wav"_s).toUtf8();
    const std::initializer_list<QByteArray> texts{
        "#EXTM3U\n" + sound + '\n', "[playlist]\nFile1=" + sound + '\n', "# mpv EDL v0\n" + sound + '\n',
        "ffconcat version 1.0\nfile inner.wav\n", "FILE \"inner.wav\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"};
    for (const QByteArray& text : texts) {
        SCOPED_TRACE(text.toStdString());
        MpvPlayer player{files, silent()};
        player.setURL(music.write(u"names.mp3"_s, text));
        ASSERT_TRUE(awaitEnd(player));
        EXPECT_FALSE(player.heard());
    }
}

TEST_F(RealPlayer, ANameThatIsNotUtf8Plays)
{
    MpvPlayer player{files, silent()};
    const QByteArray path = music.path(QString{}).toUtf8() + "/gr\xF6sse.wav";
    {
        const QByteArray sound = fake::wav({.milliseconds = 120'000});
        FILE* file = std::fopen(path.constData(), "wb");
        ASSERT_NE(file, nullptr);
        ASSERT_EQ(std::fwrite(sound.constData(), 1, size_t(sound.size()), file), size_t(sound.size()));
        std::fclose(file);
    }
    player.setURL(music.writeList({u"größe.wav"_s, u"grösse.wav"_s}));
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    EXPECT_EQ(player.currentSourceURL(), music.path(u"grösse.wav"_s));
    EXPECT_EQ(std::remove(path.constData()), 0);
}

TEST_F(RealPlayer, NumbersAreWrittenWithAPointForThePlayerLibrary)
{
    MpvPlayer player{files, silent()};
    player.setURL(longSound(u"a.wav"_s));
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(RealPlayer, WithoutASoundDeviceTheListPlaysSilently)
{
    MpvPlayer player{files, {.options = {{"ao", "alsa"}, {"audio-device", "alsa/orvantine_none"}}}};
    watch(player);
    knownSound(u"a.wav"_s);
    longSound(u"b.wav"_s);
    longSound(u"c.wav"_s);
    player.setURL(music.writeList({u"a.wav"_s, u"b.wav"_s, u"c.wav"_s}));
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() == 120; }));
    ASSERT_TRUE(test::waitUntil([&] { return player.soundOutput() == "null"; }));
    test::serveEvents();
    EXPECT_EQ(changesText(), "a.wav a.wav! b.wav b.wav!");
    EXPECT_EQ(player.status(), u"Wiedergabe"_s);
}

TEST_F(RealPlayer, AThousandMissingTracksAreLookedUpAFewAtATime)
{
    MpvPlayer player{files, silent()};
    watch(player);
    QStringList lines;
    for (int i = 0; i < 1000; ++i)
        lines.append(u"gone%1.wav"_s.arg(i));
    lines.append(u"a.wav"_s);
    longSound(u"a.wav"_s);
    player.setURL(music.writeList(lines));
    EXPECT_LE(files.lookUps, 64);
    EXPECT_EQ(player.status(), u"Wird geöffnet"_s);
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    test::serveEvents();
    EXPECT_EQ(changesText(), "a.wav a.wav!");
}

TEST_F(RealPlayer, AThousandMissingTracksEndTheList)
{
    MpvPlayer player{files, silent()};
    watch(player);
    QStringList lines;
    for (int i = 0; i < 1000; ++i)
        lines.append(u"gone%1.wav"_s.arg(i));
    player.setURL(music.writeList(lines));
    ASSERT_TRUE(awaitEnd(player));
    EXPECT_EQ(files.lookUps, 1000);
    EXPECT_EQ(player.currentSourceURL(), music.path(u"gone999.wav"_s));
    EXPECT_EQ(changesText(), "");
}

TEST_F(RealPlayer, CloseEndsTheSearchForATrack)
{
    MpvPlayer player{files, silent()};
    QStringList lines;
    for (int i = 0; i < 1000; ++i)
        lines.append(u"gone%1.wav"_s.arg(i));
    player.setURL(music.writeList(lines));
    player.close();
    const int lookUps = files.lookUps;
    test::serveEvents();
    EXPECT_EQ(files.lookUps, lookUps);
    EXPECT_EQ(player.status(), QString{});
}

TEST_F(RealPlayer, APauseDuringTheSearchForATrackHolds)
{
    MpvPlayer player{files, silent()};
    QStringList lines;
    for (int i = 0; i < 1000; ++i)
        lines.append(u"gone%1.wav"_s.arg(i));
    lines.append(u"a.wav"_s);
    music.write(u"a.wav"_s, fake::wav({.milliseconds = 1000}));
    player.setURL(music.writeList(lines));
    player.pause();
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    EXPECT_EQ(player.status(), u"Angehalten"_s);

    // The other player's longer track is the clock.
    MpvPlayer clock{files, silent()};
    clock.setURL(music.write(u"clock.wav"_s, fake::wav({.milliseconds = 1500})));
    ASSERT_TRUE(awaitEnd(clock));
    EXPECT_EQ(player.status(), u"Angehalten"_s);
    player.play();
    EXPECT_TRUE(awaitEnd(player));
}

TEST_F(RealPlayer, OnlyOneTrackIsLookedUpAhead)
{
    MpvPlayer player{files, silent()};
    QStringList lines;
    for (int i = 0; i < 1000; ++i)
        lines.append(u"a.wav"_s);
    longSound(u"a.wav"_s);
    player.setURL(music.writeList(lines));
    ASSERT_TRUE(test::waitUntil([&] { return player.currentDuration() > 0; }));
    test::serveEvents();
    EXPECT_EQ(files.lookUps, 2);
}

TEST_F(RealPlayer, TracksFollowWithoutAGap)
{
    const QString recorded = music.path(u"recorded.pcm"_s);
    {
        MpvPlayer player{files,
                         {.options = {{"ao", "pcm"},
                                      {"ao-pcm-waveheader", "no"},
                                      {"ao-pcm-file", recorded.toUtf8()},
                                      {"audio-format", "s16"}}}};
        for (const QString& name : {u"a.wav"_s, u"b.wav"_s, u"c.wav"_s})
            music.write(name, fake::wav({.milliseconds = 500, .hertz = 440, .samplesPerSecond = 44100}));
        player.setURL(music.writeList({u"a.wav"_s, u"b.wav"_s, u"c.wav"_s}));
        ASSERT_TRUE(awaitEnd(player));
    }
    QFile file{recorded};
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QByteArray track = fake::wav({.milliseconds = 500, .hertz = 440, .samplesPerSecond = 44100}).mid(44);
    EXPECT_TRUE(file.readAll() == track + track + track) << file.size();
}

} // namespace

} // namespace orvantine
