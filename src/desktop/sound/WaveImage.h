#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>

namespace orvantine {

/// The sound in a WAV image.
struct WaveImage
{
    enum class Format { Unsigned8, Signed16, Signed24, Signed32, Float32 };

    Format format = Format::Signed16;
    int channels = 1;
    int samplesPerSecond = 0;
    /// Whole frames; a view of the image that was read.
    QByteArrayView samples;

    [[nodiscard]] qsizetype bytesPerFrame() const;
    [[nodiscard]] std::chrono::milliseconds length() const;
};

/// Nothing for an image that is damaged, or of a kind that has no plain samples. A length that reaches beyond the
/// image ends with it.
[[nodiscard]] std::optional<WaveImage> readWaveImage(const QByteArray& image);

} // namespace orvantine
