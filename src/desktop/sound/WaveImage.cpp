#include "desktop/sound/WaveImage.h"

#include <QtEndian>

#include <algorithm>

namespace orvantine {

namespace {

constexpr int PlainSamples = 1;
constexpr int FloatSamples = 3;
constexpr int Extensible = 0xFFFE;
constexpr int MostChannels = 8;
constexpr int MostSamplesPerSecond = 192'000;

template <class Number>
Number number(QByteArrayView bytes, qsizetype at)
{
    return qFromLittleEndian<Number>(bytes.data() + at);
}

std::optional<WaveImage::Format> formatOf(int kind, int bits)
{
    if (kind == FloatSamples)
        return bits == 32 ? std::optional(WaveImage::Format::Float32) : std::nullopt;
    if (kind != PlainSamples)
        return std::nullopt;
    switch (bits) {
    case 8:
        return WaveImage::Format::Unsigned8;
    case 16:
        return WaveImage::Format::Signed16;
    case 24:
        return WaveImage::Format::Signed24;
    case 32:
        return WaveImage::Format::Signed32;
    default:
        return std::nullopt;
    }
}

std::optional<WaveImage> readFormat(QByteArrayView chunk)
{
    if (chunk.size() < 16)
        return std::nullopt;
    int kind = number<quint16>(chunk, 0);
    // The true kind begins the identity behind the extension's other fields.
    if (kind == Extensible && chunk.size() >= 26)
        kind = number<quint16>(chunk, 24);
    const auto format = formatOf(kind, number<quint16>(chunk, 14));
    const int channels = number<quint16>(chunk, 2);
    const quint32 rate = number<quint32>(chunk, 4);
    if (!format || channels < 1 || channels > MostChannels || rate < 1 || rate > MostSamplesPerSecond)
        return std::nullopt;
    return WaveImage{*format, channels, static_cast<int>(rate), {}};
}

} // namespace

qsizetype WaveImage::bytesPerFrame() const
{
    switch (format) {
    case Format::Unsigned8:
        return channels;
    case Format::Signed16:
        return qsizetype{2} * channels;
    case Format::Signed24:
        return qsizetype{3} * channels;
    case Format::Signed32:
    case Format::Float32:
        break;
    }
    return qsizetype{4} * channels;
}

std::chrono::milliseconds WaveImage::length() const
{
    const qsizetype frames = samples.size() / bytesPerFrame();
    return std::chrono::milliseconds{(frames * 1000 + samplesPerSecond - 1) / samplesPerSecond};
}

std::optional<WaveImage> readWaveImage(const QByteArray& image)
{
    const QByteArrayView bytes(image);
    if (bytes.size() < 12 || bytes.first(4) != "RIFF" || bytes.sliced(8, 4) != "WAVE")
        return std::nullopt;

    std::optional<WaveImage> found;
    for (qsizetype at = 12; at + 8 <= bytes.size();) {
        const QByteArrayView name = bytes.sliced(at, 4);
        const qsizetype told = number<quint32>(bytes, at + 4);
        at += 8;
        const QByteArrayView chunk = bytes.sliced(at, std::min(told, bytes.size() - at));
        if (name == "fmt ")
            found = readFormat(chunk);
        if (name == "data") {
            if (found)
                found->samples = chunk.first(chunk.size() - chunk.size() % found->bytesPerFrame());
            return found;
        }
        // A chunk of odd length is followed by a byte that counts for nothing.
        at += chunk.size() + told % 2;
    }
    return std::nullopt;
}

} // namespace orvantine
