#include "desktop/tags/TrackFacts.h"
#include "TrackBytes.h"
#include "desktop/tags/TrackLayout.h"

#include <gtest/gtest.h>

#include <string>

namespace orvantine::test {
namespace {

/// "128 kbit/s, 10 s"
std::string measured(const QByteArray& bytes)
{
    const std::optional<TrackFacts> facts = trackFacts(MemoryBytes(bytes));
    if (!facts)
        return "another kind of file";
    return std::to_string(facts->bitRate) + " kbit/s, " + std::to_string(facts->seconds) + " s";
}

std::string soundPlace(const QByteArray& bytes)
{
    const TrackLayout layout = trackLayout(MemoryBytes(bytes));
    return std::to_string(layout.soundBegin) + " to " + std::to_string(layout.soundEnd) +
           (layout.hasId3v1 ? ", tag" : "") + (layout.brokenId3v2 ? ", broken" : "");
}

/// Counts what is read, as the disk would see it.
class CountingBytes final : public ByteSource
{
public:
    explicit CountingBytes(QByteArrayView bytes) : m_bytes(bytes) {}
    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const override
    {
        const QByteArray bytes = m_bytes.read(offset, length);
        total += bytes.size();
        return bytes;
    }
    mutable qint64 total = 0;

private:
    MemoryBytes m_bytes;
};

constexpr const char* NoFrame = "-1 kbit/s, -1 s";

} // namespace

TEST(MpegHeader, EachVersionAndLayerHasItsRatesAndLengths)
{
    struct Case
    {
        FrameShape shape;
        int bitRate, sampleRate, samples, length;
    };
    constexpr auto V1 = MpegVersion::V1;
    constexpr auto V2 = MpegVersion::V2;
    constexpr auto V25 = MpegVersion::V25;
    const Case cases[] = {
        {{.version = V1, .layer = 1, .rateIndex = 14, .sampleIndex = 0}, 448, 44100, 384, 484},
        {{.version = V1, .layer = 2, .rateIndex = 14, .sampleIndex = 1}, 384, 48000, 1152, 1152},
        {{.version = V1, .layer = 3, .rateIndex = 14, .sampleIndex = 2}, 320, 32000, 1152, 1440},
        {{.version = V1, .layer = 3, .rateIndex = 9, .sampleIndex = 0}, 128, 44100, 1152, 417},
        {{.version = V1, .layer = 3, .rateIndex = 9, .sampleIndex = 0, .padded = true}, 128, 44100, 1152, 418},
        {{.version = V1, .layer = 1, .rateIndex = 1, .sampleIndex = 0, .padded = true}, 32, 44100, 384, 36},
        {{.version = V2, .layer = 1, .rateIndex = 14, .sampleIndex = 0}, 256, 22050, 384, 556},
        {{.version = V2, .layer = 2, .rateIndex = 14, .sampleIndex = 1}, 160, 24000, 1152, 960},
        {{.version = V2, .layer = 3, .rateIndex = 8, .sampleIndex = 0}, 64, 22050, 576, 208},
        {{.version = V25, .layer = 3, .rateIndex = 1, .sampleIndex = 2}, 8, 8000, 576, 72},
        {{.version = V25, .layer = 3, .rateIndex = 4, .sampleIndex = 0}, 32, 11025, 576, 208},
    };
    for (const Case& expected : cases) {
        const std::optional<MpegHeader> header = mpegHeader(head(expected.shape));
        ASSERT_TRUE(header) << expected.length;
        EXPECT_EQ(expected.bitRate, header->bitRate);
        EXPECT_EQ(expected.sampleRate, header->sampleRate);
        EXPECT_EQ(expected.samples, header->samples());
        EXPECT_EQ(expected.length, header->length());
    }
}

TEST(MpegHeader, ReservedValuesAreNoHead)
{
    const char* const heads[] = {"\xff\xeb\x90\x44", "\xff\xf9\x90\x44", "\xff\xfb\xf0\x44", "\xff\xfb\x9c\x44",
                                 "\xff\xfb\x90\x46", "\xff\x1b\x90\x44", "\xfe\xfb\x90\x44"};
    for (const char* const bytes : heads)
        EXPECT_FALSE(mpegHeader(QByteArrayView(bytes, 4))) << QByteArray(bytes, 4).toHex().toStdString();
    EXPECT_TRUE(mpegHeader(QByteArrayView("\xff\xfb\x90\x44", 4)));
    EXPECT_FALSE(mpegHeader(QByteArrayView("\xff\xfb\x90", 3)));
}

TEST(TrackFacts, AConstantRateGivesRateAndWholeSeconds)
{
    // 383 frames of 1152 samples are 10.005 s, one less is 9.98 s.
    EXPECT_EQ("128 kbit/s, 10 s", measured(sound(384)));
    EXPECT_EQ("128 kbit/s, 9 s", measured(sound(382)));
    EXPECT_EQ("128 kbit/s, 0 s", measured(sound(2)));
}

TEST(TrackFacts, EveryVersionAndLayerIsMeasured)
{
    constexpr auto V2 = MpegVersion::V2;
    constexpr auto V25 = MpegVersion::V25;
    EXPECT_EQ("448 kbit/s, 8 s", measured(frames({.layer = 1, .rateIndex = 14, .sampleIndex = 1}, 1001)));
    EXPECT_EQ("192 kbit/s, 24 s", measured(frames({.layer = 2, .rateIndex = 10, .sampleIndex = 1}, 1001)));
    EXPECT_EQ("64 kbit/s, 24 s", measured(frames({.version = V2, .rateIndex = 8, .sampleIndex = 1}, 1001)));
    EXPECT_EQ("8 kbit/s, 72 s", measured(frames({.version = V25, .rateIndex = 1, .sampleIndex = 2}, 1001)));
    EXPECT_EQ("16 kbit/s, 48 s",
              measured(frames({.version = V25, .rateIndex = 2, .sampleIndex = 1, .mono = true}, 1001)));
}

TEST(TrackFacts, TheFreeFormatIsMeasuredByTheDistanceOfItsFrames)
{
    // 1152 samples at 48000 Hz are 24 ms: 2160 bytes make 720 kbit/s.
    const FrameShape wide{.rateIndex = 0, .sampleIndex = 1, .freeLength = 2160};
    EXPECT_EQ("720 kbit/s, 0 s", measured(frames(wide, 3)));
    EXPECT_EQ("720 kbit/s, 12 s", measured(frames(wide, 501)));
    const FrameShape padded{.rateIndex = 0, .sampleIndex = 1, .padded = true, .freeLength = 2160};
    EXPECT_EQ("720 kbit/s, 2 s", measured((frame(wide) + frame(padded)).repeated(42)));
    EXPECT_EQ("100 kbit/s, 4 s",
              measured(frames({.layer = 1, .rateIndex = 0, .sampleIndex = 1, .freeLength = 100}, 501)));
}

TEST(TrackFacts, AVariableRateWithoutASummaryIsAveraged)
{
    // As many frames of 128 as of 320 kbit/s.
    const QByteArray pair = frame({}) + frame({.rateIndex = 14});
    EXPECT_EQ("224 kbit/s, 1 s", measured(pair.repeated(20)));
    EXPECT_EQ("224 kbit/s, 15 s", measured(pair.repeated(300)));
    // Quiet at first, loud from the middle on.
    EXPECT_EQ("224 kbit/s, 26 s", measured(sound(500) + frames({.rateIndex = 14}, 500)));
}

TEST(TrackFacts, ASummaryOfEitherNameGivesFramesAndBytes)
{
    const QByteArray loud = frames({.rateIndex = 14}, 500);
    const QByteArray quiet = sound(500);
    const qint64 size = loud.size() + quiet.size() + 417;
    EXPECT_EQ("224 kbit/s, 26 s", measured(xing({}, "Xing", 1000, size) + quiet + loud));
    EXPECT_EQ("224 kbit/s, 26 s", measured(xing({}, "Xing", 1000, -1) + quiet + loud));
    EXPECT_EQ("224 kbit/s, 26 s", measured(vbri({}, 1000, static_cast<quint32>(size)) + quiet + loud));
    EXPECT_EQ("128 kbit/s, 26 s", measured(xing({}, "Info", 1000, 1001 * 417) + sound(1000)));
    EXPECT_EQ("128 kbit/s, 26 s", measured(xing({.checksum = true}, "Info", 1000, 1001 * 417) + sound(1000)));
}

TEST(TrackFacts, ASummaryIsFoundBehindTheSideInformationOfItsKind)
{
    for (const MpegVersion version : {MpegVersion::V1, MpegVersion::V2, MpegVersion::V25}) {
        for (const bool mono : {false, true}) {
            const FrameShape shape{.version = version, .mono = mono};
            const QByteArray bytes = xing(shape, "Xing", 4711, 12345);
            const MpegHeader header = mpegHeader(bytes).value();
            const std::optional<StreamSummary> summary = streamSummary(header, bytes);
            ASSERT_TRUE(summary) << header.xingOffset();
            EXPECT_EQ(4711U, summary->frames);
            EXPECT_EQ(12345U, summary->bytes);
        }
    }
}

TEST(TrackFacts, AnInfoFrameOfAnotherRateDoesNotCount)
{
    EXPECT_EQ("32 kbit/s, 13 s",
              measured(xing({.rateIndex = 4}, "Info", 500, 500 * 104 + 182) + frames({.rateIndex = 1}, 500)));
}

TEST(TrackFacts, ASummaryThatLiesIsNotBelieved)
{
    const QByteArray real = sound(1000);
    const QByteArray varied = (sound(1) + frame({.rateIndex = 14})).repeated(500);
    const qint64 size = real.size() + 417;
    for (const QByteArray& mark : {QByteArrayLiteral("Xing"), QByteArrayLiteral("Info")}) {
        EXPECT_EQ("128 kbit/s, 26 s", measured(xing({}, mark, 1000000, size) + real));
        EXPECT_EQ("128 kbit/s, 26 s", measured(xing({}, mark, 1, size) + real));
        EXPECT_EQ("128 kbit/s, 26 s", measured(xing({}, mark, 0, 0) + real));
        EXPECT_EQ("128 kbit/s, 26 s", measured(xing({}, mark, 0xffffffff, 0xffffffff) + real));
        EXPECT_EQ("128 kbit/s, 26 s", measured(xing({}, mark, 2000, size) + real));
        EXPECT_EQ("224 kbit/s, 26 s", measured(xing({}, mark, 5000, varied.size() + 417) + varied));
        EXPECT_EQ("128 kbit/s, 1 s", measured(xing({}, mark, 1000000, 40000000) + sound(50)));
    }
    EXPECT_EQ("128 kbit/s, 26 s", measured(vbri({}, 0xffffffff, 0xffffffff) + real));
}

TEST(TrackFacts, ACutTrackCountsWhatIsThere)
{
    const QByteArray whole = xing({}, "Xing", 2000, 2001 * 417) + sound(2000);
    EXPECT_EQ("128 kbit/s, 26 s", measured(whole.left(1001 * 417)));
}

TEST(TrackFacts, LeadingTagsOfAnySizeAreLeaptOver)
{
    for (const int size : {0, 1, 127, 128, 4096, 300000, 5000000})
        EXPECT_EQ("128 kbit/s, 10 s", measured(id3v2(size) + sound(384))) << size;
    EXPECT_EQ("128 kbit/s, 10 s", measured(id3v2(100) + id3v2(200) + sound(384)));
    // A picture inside may look like sound.
    QByteArray misleading = id3v2(4000);
    misleading.replace(10, 2880, frames({.rateIndex = 14, .sampleIndex = 1}, 3));
    EXPECT_EQ("128 kbit/s, 10 s", measured(misleading + sound(384)));
    // Filled up with NUL beyond its size.
    EXPECT_EQ("128 kbit/s, 10 s", measured(id3v2(100) + QByteArray(20000, '\0') + sound(384)));
}

TEST(TrackFacts, ATagWithAFooterEndsBehindIt)
{
    QByteArray tag = id3v2(100);
    tag[3] = '\4';
    tag[5] = '\x10';
    EXPECT_EQ("120 to 288", soundPlace(tag + QByteArray(10, 'f') + QByteArray(168, 's')));
}

TEST(TrackFacts, ASizeThatCannotBeIsNotBelieved)
{
    constexpr qint64 Mebibytes256 = (qint64{1} << 28) - 1;
    const QByteArray liar = id3v2(0, Mebibytes256);
    EXPECT_EQ("0 to 1024, broken", soundPlace(liar + QByteArray(1014, 'x')));
    EXPECT_EQ(NoFrame, measured(liar + QByteArray(1014, 'x')));
    // The sound behind the lie is found all the same.
    EXPECT_EQ("128 kbit/s, 10 s", measured(liar + sound(384)));

    QByteArray eightBits = id3v2(60);
    eightBits[9] = '\x80';
    EXPECT_TRUE(trackLayout(MemoryBytes(eightBits + sound())).brokenId3v2);
    EXPECT_EQ("128 kbit/s, 0 s", measured(eightBits + sound()));
}

TEST(TrackFacts, TrailingBlocksAreNoSound)
{
    const QByteArray tag = id3v1Tag("T", "A");
    const QByteArray bytes = sound(384);
    const QByteArray tails[] = {tag,
                                ape(),
                                ape(40, false),
                                ape() + tag,
                                lyrics1() + tag,
                                lyrics2() + tag,
                                lyrics2(QByteArray(50000, 'l')) + tag,
                                ape() + lyrics2() + tag,
                                lyrics2() + ape() + tag,
                                appendedId3v2() + tag,
                                appendedId3v2(5000) + ape(),
                                ape(500000) + tag,
                                "TAG+" + QByteArray(223, '\0') + tag};
    for (const QByteArray& tail : tails) {
        const qint64 end = trackLayout(MemoryBytes(bytes + tail)).soundEnd;
        EXPECT_EQ(bytes.size(), end) << tail.left(20).toStdString() << " " << tail.size();
        EXPECT_EQ("128 kbit/s, 10 s", measured(bytes + tail));
    }
}

TEST(TrackFacts, TrailingBlocksWhoseSizeCannotBeAreSound)
{
    const QByteArray bytes = sound(8);
    QByteArray hugeApe = ape(40, false);
    hugeApe.replace(40 + 12, 4, "\xff\xff\xff\x7f");
    QByteArray hugeLyrics = lyrics2();
    hugeLyrics.replace(hugeLyrics.size() - 15, 6, "999999");
    QByteArray noNumber = lyrics2();
    noNumber.replace(noNumber.size() - 15, 6, "-00001");
    for (const QByteArray& tail : {hugeApe, hugeLyrics, noNumber, QByteArrayLiteral("LYRICSEND")}) {
        const QByteArray all = bytes + tail;
        EXPECT_EQ(all.size(), trackLayout(MemoryBytes(all)).soundEnd) << tail.toStdString();
        EXPECT_EQ("128 kbit/s, 0 s", measured(all));
    }
}

TEST(TrackFacts, TheHeadOfAnApeTagIsNoTagOfVersionOne)
{
    // 131 bytes: the "TAG" of "APETAGEX" stands 128 bytes before the end.
    const QByteArray bytes = sound() + ape(67);
    EXPECT_EQ("0 to 1668", soundPlace(bytes));
    EXPECT_FALSE(trackFacts(MemoryBytes(bytes))->tag);
}

TEST(TrackFacts, FilesBelow128BytesHaveNoTag)
{
    const QByteArray tag = id3v1Tag("T", "A");
    for (const int size : {0, 1, 3, 4, 9, 10, 100, 127}) {
        EXPECT_FALSE(trackFacts(MemoryBytes(tag.left(size)))->tag) << size;
        EXPECT_EQ(NoFrame, measured(tag.left(size))) << size;
    }
    EXPECT_TRUE(trackFacts(MemoryBytes(tag))->tag);
    EXPECT_EQ("8 kbit/s, 0 s", measured(frame({.version = MpegVersion::V25, .rateIndex = 1, .sampleIndex = 2})));
}

TEST(TrackFacts, BytesWithoutFramesHaveNoRateAndNoTime)
{
    EXPECT_EQ(NoFrame, measured({}));
    EXPECT_EQ(NoFrame, measured("no sound at all"));
    EXPECT_EQ(NoFrame, measured(QByteArray(100000, '\xff')));
    EXPECT_EQ(NoFrame, measured(QByteArray(100000, '\0')));
    // A head alone is no frame, nor are two that do not belong together.
    EXPECT_EQ(NoFrame, measured(head({})));
    EXPECT_EQ(NoFrame, measured(frame({}).left(400)));
    EXPECT_EQ(NoFrame, measured(frame({}) + frame({.sampleIndex = 1}).left(300)));
}

TEST(TrackFacts, SoundBehindOtherBytesIsFound)
{
    QByteArray noise(5000, '\x7f');
    for (qsizetype i = 0; i < noise.size(); i += 7)
        noise.replace(i, 4, head({}));
    EXPECT_EQ("128 kbit/s, 10 s", measured(QByteArray(3000, 'x') + sound(384)));
    EXPECT_EQ("128 kbit/s, 10 s", measured(noise + QByteArray(3000, 'x') + sound(384)));
    // The end of a frame that was cut.
    EXPECT_EQ("128 kbit/s, 10 s", measured(frame({}).right(300) + sound(384)));
}

TEST(TrackFacts, ACutLastFrameAndAGapInTheMiddleDoNotCount)
{
    EXPECT_EQ("128 kbit/s, 1 s", measured(sound(39) + frame({}).left(200)));
    EXPECT_EQ("128 kbit/s, 1 s", measured(sound(20) + QByteArray(1000, 'x') + sound(20)));
}

TEST(TrackFacts, OtherKindsOfFilesAreTold)
{
    const char* const marks[] = {"RIFF", "OggS", "fLaC", "FORM"};
    for (const char* const mark : marks)
        EXPECT_EQ("another kind of file", measured(QByteArray(mark) + sound(100) + id3v1Tag("T", "A"))) << mark;
    EXPECT_EQ("another kind of file", measured(QByteArrayLiteral("\x30\x26\xb2\x75\x8e\x66\xcf\x11") + sound(100)));
    EXPECT_EQ("another kind of file", measured(QByteArrayLiteral("\0\0\0\x20"
                                                                 "ftypM4A ") +
                                               sound(100)));
    EXPECT_EQ("another kind of file", measured(id3v2() + "fLaC" + sound(100)));
}

TEST(TrackFacts, ALongTrackIsReadInSomeBlocksOnly)
{
    const QByteArray constant = sound(20000);
    const QByteArray varied = (frame({}) + frame({.rateIndex = 14})).repeated(5000);
    const QByteArray summed = xing({}, "Xing", 10000, varied.size() + 417) + varied;
    for (const QByteArray& track : {constant, summed, id3v2(1000000) + summed}) {
        const CountingBytes bytes(track);
        ASSERT_TRUE(trackFacts(bytes));
        EXPECT_LT(bytes.total, 100000);
    }
}

} // namespace orvantine::test
