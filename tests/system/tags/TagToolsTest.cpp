#include "desktop/posix/PosixFiles.h"
#include "desktop/tags/TagLibTags.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace orvantine::test {

using namespace Qt::StringLiterals;

namespace {

/// Tracks made by an encoder, and the tools of others that read and write them.
class TagTools : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString& name) const { return folder.path() + u'/' + name; }

    /// What a tool says; a tool that is missing or fails is a failure of the test.
    static QString said(const QString& tool, const QStringList& arguments)
    {
        const QString program = QStandardPaths::findExecutable(tool);
        EXPECT_FALSE(program.isEmpty()) << tool.toStdString() << " is not installed: see tools/packages/test.txt";
        QProcess process;
        process.start(program, arguments);
        const bool ended = process.waitForFinished();
        const QString output = QString::fromUtf8(process.readAllStandardOutput());
        EXPECT_TRUE(ended && process.exitCode() == 0)
            << tool.toStdString() << ": " << process.readAllStandardError().toStdString() << output.toStdString();
        return output;
    }

    /// Ten seconds that ask for a different rate all the time.
    void makeWave(int hertz, int channels)
    {
        said(u"sox"_s, {u"-R"_s, u"-n"_s, u"-r"_s, QString::number(hertz), u"-c"_s, QString::number(channels), u"-b"_s,
                        u"16"_s, path(u"t.wav"_s), u"synth"_s, u"10"_s, u"brownnoise"_s, u"tremolo"_s, u"0.2"_s,
                        u"90"_s, u"vol"_s, u"0.5"_s});
    }
    QString encode(const QString& name, const QStringList& options)
    {
        said(u"lame"_s, QStringList{u"--quiet"_s} + options + QStringList{path(u"t.wav"_s), path(name)});
        return path(name);
    }
    QString someTrack(const QString& name)
    {
        makeWave(44100, 2);
        return encode(name, {u"-b"_s, u"128"_s});
    }

    [[nodiscard]] Mp3Record read(const QString& track)
    {
        Mp3Record record;
        tags.Mp3FileInfo(track, record);
        return record;
    }
    /// A checksum of the compressed sound alone.
    static QString soundOf(const QString& track)
    {
        return said(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, track, u"-map"_s, u"0:a"_s, u"-c"_s, u"copy"_s, u"-f"_s,
                                  u"md5"_s, u"-"_s});
    }
    static QString probed(const QString& track, const QString& entries)
    {
        return said(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-show_entries"_s, entries, u"-of"_s,
                                   u"default=noprint_wrappers=1:nokey=1"_s, track})
            .trimmed();
    }

    QTemporaryDir folder;
    QTemporaryDir recovery;
    PosixFiles files{{.recoveryFolder = recovery.path()}};
    TagLibTags tags{files};
};

template <std::size_t Width>
void set(char (&field)[Width], const QByteArray& text)
{
    std::memcpy(field, text.leftJustified(Width, ' ', true).constData(), Width);
}

template <std::size_t Width>
std::string trimmed(const char (&field)[Width])
{
    return QByteArray(field, Width).trimmed().toStdString();
}

Mp3Record someRecord()
{
    Mp3Record record;
    set(record.title, "Der Titel");
    set(record.artist, "M\xfcller & S\xf6hne");
    set(record.album, "Das Album");
    set(record.year, "1999");
    set(record.comment, "Ein Kommentar");
    record.trackFlagA = record.trackFlagB = 2;
    record.track = 7;
    record.genre = 17;
    return record;
}

} // namespace

TEST_F(TagTools, WhatWeWriteTheyRead)
{
    const QString track = someTrack(u"a.mp3"_s);
    const QString before = soundOf(track);
    ASSERT_TRUE(tags.WriteID3V1(track, someRecord()));

    const QString listed = said(u"id3v2"_s, {u"-l"_s, track});
    for (const QString& text :
         {u"Der Titel"_s, u"Das Album"_s, u"1999"_s, u"Ein Kommentar"_s, u"Track: 7"_s, u"Rock (17)"_s})
        EXPECT_TRUE(listed.contains(text)) << text.toStdString() << " in\n" << listed.toStdString();
    const QString mutagen = said(u"mid3v2"_s, {u"-l"_s, track});
    for (const QString& text : {u"TIT2=Der Titel"_s, u"TPE1=Müller & Söhne"_s, u"TALB=Das Album"_s, u"TDRC=1999"_s,
                                u"TRCK=7"_s, u"Ein Kommentar"_s})
        EXPECT_TRUE(mutagen.contains(text)) << text.toStdString() << " in\n" << mutagen.toStdString();
    EXPECT_EQ("Der Titel", probed(track, u"format_tags=title"_s).toStdString());
    EXPECT_EQ("Das Album", probed(track, u"format_tags=album"_s).toStdString());
    EXPECT_EQ("7", probed(track, u"format_tags=track"_s).toStdString());
    EXPECT_EQ("Rock", probed(track, u"format_tags=genre"_s).toStdString());
    EXPECT_EQ(before.toStdString(), soundOf(track).toStdString());
}

TEST_F(TagTools, WhatTheyWriteWeRead)
{
    const QString track = someTrack(u"a.mp3"_s);
    said(u"id3v2"_s, {u"-1"_s, u"-t"_s, u"Ihr Titel"_s, u"-a"_s, u"Ihr Interpret"_s, u"-A"_s, u"Ihr Album"_s, u"-y"_s,
                      u"2001"_s, u"-c"_s, u"Ihr Wort"_s, u"-T"_s, u"9"_s, track});
    Mp3Record record = read(track);
    EXPECT_EQ("Ihr Titel", trimmed(record.title));
    EXPECT_EQ("Ihr Interpret", trimmed(record.artist));
    EXPECT_EQ("Ihr Album", trimmed(record.album));
    EXPECT_EQ("2001", trimmed(record.year));
    EXPECT_EQ("Ihr Wort", trimmed(record.comment));
    EXPECT_EQ(9, record.track);
    EXPECT_EQ(128, record.bitRate);
    EXPECT_EQ(10, record.playingTime);

    // A tag of the second kind in front, and the one at the end anew.
    said(u"mid3v2"_s, {u"-t"_s, u"Müllers Titel"_s, u"-a"_s, u"Noch einer"_s, u"-T"_s, u"11"_s, track});
    record = read(track);
    EXPECT_EQ("M\xfcllers Titel", trimmed(record.title));
    EXPECT_EQ("Noch einer", trimmed(record.artist));
    EXPECT_EQ(11, record.track);
    EXPECT_EQ(128, record.bitRate);
    EXPECT_EQ(10, record.playingTime);
}

TEST_F(TagTools, TheirLeadingTagGoesAndTheSoundStays)
{
    const QString track = someTrack(u"a.mp3"_s);
    const QString before = soundOf(track);
    for (const QStringList& write : {QStringList{u"id3v2"_s, u"-2"_s}, QStringList{u"mid3v2"_s}}) {
        said(write.first(), write.mid(1) + QStringList{u"-t"_s, u"Vorne"_s, u"-a"_s, u"Einer"_s, track});
        ASSERT_TRUE(tags.WriteID3V1(track, someRecord()));
        ASSERT_TRUE(files.readBytes(track).bytes.startsWith("ID3"));
        ASSERT_TRUE(tags.EraseID3V2(track));
        EXPECT_FALSE(files.readBytes(track).bytes.startsWith("ID3"));
        EXPECT_FALSE(said(u"id3v2"_s, {u"-l"_s, track}).contains(u"id3v2 tag info"_s));
        EXPECT_EQ("Der Titel", probed(track, u"format_tags=title"_s).toStdString());
        EXPECT_EQ(before.toStdString(), soundOf(track).toStdString());
    }
}

TEST_F(TagTools, RateAndTimeAreThoseThatOthersFind)
{
    struct Case
    {
        int hertz;
        int channels;
        QStringList options;
    };
    const QList<Case> cases{
        {44100, 2, {u"-b"_s, u"128"_s}},        {44100, 2, {u"-b"_s, u"320"_s, u"-t"_s}},
        {48000, 1, {u"-b"_s, u"64"_s}},         {32000, 2, {u"-V"_s, u"2"_s}},
        {44100, 2, {u"-V"_s, u"0"_s}},          {44100, 2, {u"-V"_s, u"9"_s}},
        {44100, 2, {u"-V"_s, u"4"_s, u"-t"_s}}, {44100, 2, {u"-p"_s, u"-V"_s, u"4"_s}},
        {44100, 2, {u"--abr"_s, u"150"_s}},     {22050, 2, {u"-b"_s, u"56"_s}},
        {24000, 1, {u"-V"_s, u"4"_s}},          {16000, 2, {u"-b"_s, u"32"_s, u"-t"_s}},
        {11025, 1, {u"-b"_s, u"16"_s}},         {8000, 1, {u"-b"_s, u"8"_s}},
        {8000, 1, {u"-V"_s, u"5"_s}},
    };
    const QRegularExpression rateOf(u"(\\d+) bps"_s);
    for (const Case& made : cases) {
        makeWave(made.hertz, made.channels);
        const QString track = encode(u"t.mp3"_s, made.options + QStringList{u"--id3v2-only"_s, u"--tt"_s, u"T"_s});
        const std::string name = std::to_string(made.hertz) + " " + made.options.join(u' ').toStdString();
        const Mp3Record record = read(track);

        const QRegularExpressionMatch found = rateOf.match(said(u"mutagen-inspect"_s, {track}));
        ASSERT_TRUE(found.hasMatch()) << name;
        // Without a summary that tool takes the first frame's rate for the track's.
        if (!made.options.contains(u"-t"_s)) {
            const double rate = found.captured(1).toDouble() / 1000;
            EXPECT_NEAR(rate, record.bitRate, std::max(1.0, rate / 50)) << name;
        }
        EXPECT_EQ(10, record.playingTime) << name;
        const QString packets = said(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-show_entries"_s, u"packet=size"_s, u"-of"_s,
                                                    u"csv=print_section=0"_s, track});
        double bytes = 0;
        const QStringList sizes = packets.split(u'\n', Qt::SkipEmptyParts);
        for (const QString& size : sizes)
            bytes += QString(size).remove(u',').toDouble();
        const int samples = made.hertz >= 32000 ? 1152 : 576;
        const double seconds = static_cast<double>(sizes.size()) * samples / made.hertz;
        EXPECT_EQ(static_cast<int>(seconds), record.playingTime) << name;
        EXPECT_NEAR(bytes * 8 / seconds / 1000, record.bitRate, 1) << name;
    }
}

TEST_F(TagTools, TheSecondLayerAndTheFreeFormatAreMeasured)
{
    makeWave(44100, 2);
    said(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, path(u"t.wav"_s), u"-c:a"_s, u"mp2"_s, u"-b:a"_s, u"192k"_s,
                       u"-f"_s, u"mp2"_s, path(u"second.mp3"_s)});
    EXPECT_EQ(192, read(path(u"second.mp3"_s)).bitRate);
    EXPECT_EQ(10, read(path(u"second.mp3"_s)).playingTime);

    const QString free = encode(u"free.mp3"_s, {u"--freeformat"_s, u"-b"_s, u"200"_s});
    EXPECT_NEAR(200, read(free).bitRate, 1);
    EXPECT_EQ(10, read(free).playingTime);
    EXPECT_TRUE(tags.WriteID3V1(free, someRecord()));
}

TEST_F(TagTools, OtherKindsOfSoundAreReadAndStayUntouched)
{
    makeWave(44100, 2);
    const QString wave = path(u"t.wav"_s);
    const QString window = path(u"t.wma"_s);
    const QString disguised = path(u"wma.mp3"_s);
    said(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, wave, u"-c:a"_s, u"wmav2"_s, u"-metadata"_s, u"title=Ihr Lied"_s,
                       u"-metadata"_s, u"artist=Wir"_s, u"-metadata"_s, u"track=3"_s, window});
    ASSERT_TRUE(files.copy(window, disguised));
    for (const QString& track : {wave, window, disguised}) {
        const QByteArray before = files.readBytes(track).bytes;
        Mp3Record record = someRecord();
        tags.Mp3FileInfo(track, record);
        EXPECT_EQ(track == wave ? "" : "Ihr Lied", trimmed(record.title)) << track.toStdString();
        EXPECT_EQ(track == wave ? "" : "Wir", trimmed(record.artist)) << track.toStdString();
        EXPECT_EQ(track == wave ? 0 : 3, record.track) << track.toStdString();
        EXPECT_NEAR(probed(track, u"stream=bit_rate"_s).toDouble() / 1000, record.bitRate, 2) << track.toStdString();
        EXPECT_EQ(10, record.playingTime) << track.toStdString();
        EXPECT_FALSE(tags.WriteID3V1(track, someRecord()));
        EXPECT_FALSE(tags.EraseID3V2(track));
        EXPECT_EQ(before, files.readBytes(track).bytes);
    }
}

} // namespace orvantine::test
