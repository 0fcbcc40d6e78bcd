#include "support/Wav.h"
#include "system/app/Ear.h"
#include "system/app/Program.h"

#include <QDir>

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

constexpr auto StartButton = "Wiedergabe starten";
constexpr auto StopButton = "Wiedergabe stoppen";

/// Lists of a user, played through a sound server whose sound is recorded.
class PlayedLists : public ::testing::Test
{
protected:
    PlayedLists() { ear.table.hertz = {440, 550, 660, 770}; }

    /// A track of a tone with a little silence behind it, so that it can be heard twice.
    QString tone(const QString& name, double hertz, int milliseconds = 1000)
    {
        QByteArray wav = fake::wav({.milliseconds = milliseconds, .hertz = hertz, .samplesPerSecond = 44100});
        const qsizetype silence = 2 * 44100 * 3 / 10;
        wav.replace(wav.size() - silence, silence, QByteArray(silence, '\0'));
        return track(name, wav);
    }
    QString track(const QString& name, const QByteArray& bytes)
    {
        const QString path = desk.path(u"music/"_s + name);
        desk.write(path, bytes);
        return path;
    }
    /// The same sound in another form, by its name's ending.
    QString converted(const QString& from, const QString& name)
    {
        const QString path = desk.path(u"music/"_s + name);
        EXPECT_TRUE(desk.tool(u"ffmpeg"_s, {u"-loglevel"_s, u"error"_s, u"-i"_s, from, path}));
        return path;
    }

    QString list(const QString& name, const QStringList& entries)
    {
        const QString path = desk.dataPath(u"Playlisten/"_s + name + u".m3u"_s);
        desk.write(path, (entries.join(u"\r\n"_s) + u"\r\n"_s).toUtf8());
        return path;
    }
    /// Settles the user with these lists, of which the first is open at the start.
    void settle(const QStringList& lists, const QStringList& settings = {})
    {
        desk.settle(settings);
        desk.writeCatalogue(lists);
    }

    static void play(Program& program) { program.click(QString::fromLatin1(StartButton)); }
    static void stop(Program& program) { program.click(QString::fromLatin1(StopButton)); }

    Desk desk;
    Ear ear{desk};
};

TEST_F(PlayedLists, AListBeginsAgainInModeOne)
{
    settle({list(u"Eins"_s, {tone(u"a.wav"_s, 440), tone(u"b.wav"_s, 660)}), list(u"Zwei"_s, {tone(u"c.wav"_s, 550)})},
           {u"\"ReCall\"=dword:00000001"_s});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    play(program);
    EXPECT_TRUE(ear.awaitTones(5)) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(ear.allTones().mid(0, 5), (QList<double>{440, 660, 440, 660, 440}));
    EXPECT_EQ(program.boxes(), QStringList());
}

TEST_F(PlayedLists, TheSelectedTrackPlaysAgainAndAgainInModeTwo)
{
    settle({list(u"Eins"_s, {tone(u"a.wav"_s, 440), tone(u"b.wav"_s, 660)}), list(u"Zwei"_s, {tone(u"c.wav"_s, 550)})},
           {u"\"ReCall\"=dword:00000002"_s});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    play(program);
    // The list is played to its end; from then on the selected track, which is the first one, is the sequence.
    EXPECT_TRUE(ear.awaitTones(5)) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(ear.allTones().mid(0, 5), (QList<double>{440, 660, 440, 440, 440}));
    EXPECT_EQ(program.boxes(), QStringList());
}

TEST_F(PlayedLists, TwoListsFollowOneAnotherInModeThree)
{
    settle({list(u"Eins"_s, {tone(u"a.wav"_s, 440), tone(u"b.wav"_s, 660)}),
            list(u"Zwei"_s, {tone(u"c.wav"_s, 550), tone(u"d.wav"_s, 770)})},
           {u"\"ReCall\"=dword:00000003"_s});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    play(program);
    EXPECT_TRUE(ear.awaitTones(6)) << program.complaints();
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(ear.allTones().mid(0, 6), (QList<double>{440, 660, 550, 770, 440, 660}));
    EXPECT_EQ(program.boxes(), QStringList());
}

TEST_F(PlayedLists, WhatCannotBePlayedIsPassedOverAndEveryKindOfTrackIsHeard)
{
    const QString first = tone(u"a.wav"_s, 440);
    QByteArray one = fake::wav({.milliseconds = 1, .hertz = 440, .samplesPerSecond = 1000});
    settle({list(u"Eins"_s,
                 {first, desk.path(u"music/fehlt.mp3"_s), track(u"kaputt.mp3"_s, QByteArray(50'000, 'x')),
                  track(u"leer.wav"_s, {}), converted(tone(u"b.wav"_s, 550), u"b.wma"_s), track(u"eins.wav"_s, one),
                  desk.path(u"music"_s), converted(tone(u"c.wav"_s, 660), u"c.mp3"_s), tone(u"d.wav"_s, 770)})},
           {u"\"ReCall\"=dword:00000003"_s});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    play(program);
    EXPECT_TRUE(ear.awaitTones(4)) << program.complaints();
    stop(program);
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(ear.allTones().mid(0, 4), (QList<double>{440, 550, 660, 770}));
}

TEST_F(PlayedLists, BehindAThousandMissingTracksOneIsHeardAndTheWindowObeysMeanwhile)
{
    QStringList entries;
    for (int i = 1; i <= 1000; ++i)
        entries += desk.path(u"music/fehlt %1.mp3"_s.arg(i));
    const QString missing = list(u"Fehlt"_s, entries);
    settle({list(u"Eins"_s, entries + QStringList{tone(u"a.wav"_s, 440, 60'000)}), missing},
           {u"\"ReCall\"=dword:00000003"_s, u"\"Error\"=dword:00000000"_s});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    play(program);
    EXPECT_TRUE(ear.awaitTone(440)) << program.complaints();
    stop(program);
    EXPECT_TRUE(ear.awaitSilence());

    // Nothing of this list can be played: it is over, and the sequence goes on to the one that has a track.
    program.click(u"Fehlt"_s);
    play(program);
    EXPECT_TRUE(ear.awaitTone(440)) << program.complaints();
    stop(program);
    EXPECT_TRUE(program.closes()) << program.complaints();
}

TEST_F(PlayedLists, ASinkThatVanishesLeavesASilentPlaybackAndTheNextListIsHeardOnANewOne)
{
    settle({list(u"Eins"_s, {tone(u"a.wav"_s, 440, 120'000), tone(u"b.wav"_s, 660, 120'000)})});
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    play(program);
    ASSERT_TRUE(ear.awaitTone(440));
    ear.control({u"unload-module"_s, u"module-null-sink"_s});
    // The playback goes on in silence, and the window obeys.
    program.click(u"Nächster Titel"_s);
    program.click(u"Pause"_s);
    program.click(u"Weiterspielen"_s);
    stop(program);

    ear.control({u"load-module"_s, u"module-null-sink"_s, u"sink_name=test"_s, u"rate=44100"_s, u"channels=2"_s});
    play(program);
    EXPECT_TRUE(await([this] { return ear.control({u"list"_s, u"short"_s, u"sink-inputs"_s}).contains(u'\n'); }));
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(program.boxes(), QStringList());
}

/// The first channel's volume as the server tells it.
class TurnedVolume : public PlayedLists
{
protected:
    TurnedVolume() { settle({list(u"Eins"_s, {tone(u"a.wav"_s, 440)})}, {u"\"Volume\"=dword:00000001"_s}); }

    [[nodiscard]] int volume() const
    {
        return ear.control({u"get-sink-volume"_s, u"@DEFAULT_SINK@"_s}).section(u':', 2, 2).section(u'/', 0, 0).toInt();
    }
    void setVolume(int volume) const
    {
        ear.control({u"set-sink-volume"_s, u"@DEFAULT_SINK@"_s, QString::number(volume)});
    }
    /// Clicks at a share of the slider's width.
    void clickSlider(Program& program, double share)
    {
        std::optional<Control> slider;
        ASSERT_TRUE(await([&] {
            slider = program.control(u"Lautstärke"_s);
            return slider && slider->place.isValid();
        })) << program.complaints();
        desk.click(
            {slider->place.left() + static_cast<int>(share * slider->place.width()), slider->place.center().y()});
    }
};

TEST_F(TurnedVolume, TheServerGetsWhatTheSliderShows)
{
    setVolume(20'000);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    clickSlider(program, 0.99);
    EXPECT_TRUE(await([this] { return volume() == 64'001; })) << volume();
    clickSlider(program, 0.01);
    EXPECT_TRUE(await([this] { return volume() == 0; })) << volume();
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(program.boxes(), QStringList());
}

TEST_F(TurnedVolume, APressPicksUpWhatTheServerHas)
{
    setVolume(0);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    // A press on the thumb moves nothing: it lies in the middle only once the change has been picked up.
    setVolume(33'000);
    clickSlider(program, 0.5);
    clickSlider(program, 0.99);
    EXPECT_TRUE(await([this] { return volume() == 64'001; })) << volume();
    setVolume(33'000);
    clickSlider(program, 0.5);
    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_EQ(volume(), 33'000);
}

TEST_F(TurnedVolume, APressWithoutASoundServerTellsSoEachTimeAndHarmsNothing)
{
    desk.environment.insert(u"PULSE_SERVER"_s, u"unix:"_s + desk.path(u"no-sound"_s));
    const QString title = u" Sound und Audiowiedergabe"_s;
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_EQ(program.boxes(), QStringList{title});
    for (int press = 0; press < 2; ++press) {
        clickSlider(program, 0.5);
        ASSERT_TRUE(await([&] { return desk.windows().contains(title); })) << press;
        desk.press(title, u"Return"_s);
        ASSERT_TRUE(await([&] { return !desk.windows().contains(title); })) << press;
    }
    EXPECT_TRUE(program.closes()) << program.complaints();
}

} // namespace

} // namespace orvantine::desk
