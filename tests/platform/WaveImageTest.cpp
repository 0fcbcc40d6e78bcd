#include "desktop/sound/WaveImage.h"

#include "platform/Cues.h"
#include "support/Wav.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

template <class Number>
QByteArray little(Number value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

struct Head
{
    quint16 kind = 1;
    quint16 channels = 1;
    quint32 rate = 1000;
    quint16 bits = 16;
};

QByteArray chunk(const char* name, const QByteArray& content)
{
    return name + little(static_cast<quint32>(content.size())) + content + QByteArray(content.size() % 2, '\0');
}

QByteArray format(const Head& head)
{
    const auto frame = static_cast<quint16>(head.channels * head.bits / 8);
    return chunk("fmt ", little(head.kind) + little(head.channels) + little(head.rate) + little(head.rate * frame) +
                             little(frame) + little(head.bits));
}

QByteArray riff(const QByteArray& chunks)
{
    return "RIFF" + little(static_cast<quint32>(4 + chunks.size())) + "WAVE" + chunks;
}

QByteArray image(const Head& head, const QByteArray& samples)
{
    return riff(format(head) + chunk("data", samples));
}

} // namespace

TEST(WaveImage, EveryCueIsOne)
{
    for (const QString& name : cueNames()) {
        const auto cue = readWaveImage(cueNamed(name));
        ASSERT_TRUE(cue) << name.toStdString();
        EXPECT_EQ(cue->samplesPerSecond, 22050);
        EXPECT_EQ(cue->channels, 1);
        EXPECT_GT(cue->length(), 100ms);
        EXPECT_LE(cue->length(), 500ms);
    }
}

TEST(WaveImage, TellsItsSamplesAndItsLength)
{
    const QByteArray bytes = fake::wav({.milliseconds = 250, .hertz = 440});
    const auto read = readWaveImage(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->length(), 250ms);
    EXPECT_EQ(read->samples.size(), bytes.size() - 44);
}

TEST(WaveImage, HasSamplesOfOneToFourBytes)
{
    using Format = WaveImage::Format;
    const struct
    {
        Head head;
        Format format;
        qsizetype bytesPerFrame;
    } cases[] = {{{.bits = 8}, Format::Unsigned8, 1}, {{.channels = 2, .bits = 8}, Format::Unsigned8, 2},
                 {{.bits = 16}, Format::Signed16, 2}, {{.channels = 2, .bits = 24}, Format::Signed24, 6},
                 {{.bits = 32}, Format::Signed32, 4}, {{.kind = 3, .channels = 2, .bits = 32}, Format::Float32, 8}};
    for (const auto& [head, format, bytesPerFrame] : cases) {
        const QByteArray bytes = image(head, QByteArray(240, '\0'));
        const auto read = readWaveImage(bytes);
        ASSERT_TRUE(read) << head.bits;
        EXPECT_EQ(read->format, format);
        EXPECT_EQ(read->bytesPerFrame(), bytesPerFrame);
        EXPECT_EQ(read->length(), std::chrono::milliseconds{240 / bytesPerFrame});
    }
}

TEST(WaveImage, PassesOverOtherChunksAndTheByteBehindAnOddOne)
{
    const QByteArray bytes =
        riff(chunk("JUNK", "abc") + format({}) + chunk("fact", QByteArray(4, '\0')) + chunk("data", "1234"));
    const auto read = readWaveImage(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->samples, QByteArrayView("1234"));
}

TEST(WaveImage, EndsWithTheImageHoweverLongItSaysItIs)
{
    QByteArray bytes = image({}, "12345678");
    bytes.replace(bytes.size() - 12, 4, QByteArray(4, '\xFF'));
    const auto read = readWaveImage(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->samples, QByteArrayView("12345678"));
}

TEST(WaveImage, HasWholeFramesOnly)
{
    const QByteArray bytes = image({.channels = 2}, "1234567");
    const auto read = readWaveImage(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->samples, QByteArrayView("1234"));
}

TEST(WaveImage, IsNoneThatIsDamagedOrHasNoPlainSamples)
{
    const QByteArray good = image({}, "1234");
    for (qsizetype size = 0; size < 44; ++size)
        EXPECT_FALSE(readWaveImage(good.left(size))) << size;
    EXPECT_FALSE(readWaveImage(QByteArray(200, 'x')));
    EXPECT_FALSE(readWaveImage(riff(chunk("data", "1234") + format({}))));
    for (const Head& head :
         {Head{.kind = 2}, Head{.kind = 85}, Head{.channels = 0}, Head{.channels = 9}, Head{.rate = 0},
          Head{.rate = 4'000'000'000}, Head{.bits = 12}, Head{.bits = 0}, Head{.kind = 3, .bits = 64}})
        EXPECT_FALSE(readWaveImage(image(head, "12345678"))) << head.kind << ' ' << head.bits;
}

TEST(WaveImage, SurvivesAnyByteThatIsWrong)
{
    const QByteArray good = image({}, QByteArray(8, '\1'));
    for (qsizetype at = 0; at < good.size(); ++at)
        for (const char wrong : {'\x00', '\x7F', '\x80', '\xFF'}) {
            QByteArray bytes = good;
            bytes[at] = wrong;
            if (const auto read = readWaveImage(bytes)) {
                EXPECT_LE(read->samples.size(), bytes.size()) << at;
                EXPECT_GE(read->length(), 0ms) << at;
            }
        }
}

} // namespace orvantine
