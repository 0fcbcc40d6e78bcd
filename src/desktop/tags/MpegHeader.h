#pragma once

#include <QByteArrayView>

#include <optional>

namespace orvantine {

enum class MpegVersion { V1, V2, V25 };

/// The head of one frame of MPEG audio.
struct MpegHeader
{
    MpegVersion version = MpegVersion::V1;
    /// 1 to 3
    int layer = 3;
    /// Kilobits per second; 0 for the free format, whose rate only the distance of two frames tells.
    int bitRate = 0;
    /// Hertz
    int sampleRate = 0;
    bool padded = false;
    bool protectedByChecksum = false;
    bool mono = false;

    /// Samples of each channel.
    [[nodiscard]] int samples() const;
    /// Bytes of the whole frame, head included; not for the free format.
    [[nodiscard]] int length() const;
    /// Bytes that padding adds.
    [[nodiscard]] int slot() const { return layer == 1 ? 4 : 1; }
    /// Where an encoder puts the "Xing" of a frame that describes the stream, from the head of the frame.
    [[nodiscard]] int xingOffset() const;
    /// Whether both can be frames of one stream.
    [[nodiscard]] bool continues(const MpegHeader& other) const;
};

constexpr qsizetype mpegHeaderSize = 4;

/// The first four bytes as a head; nothing if they are none.
[[nodiscard]] std::optional<MpegHeader> mpegHeader(QByteArrayView bytes);

/// What the first frame of a stream says of the whole of it.
struct StreamSummary
{
    /// Frames behind this one.
    quint32 frames = 0;
    /// Bytes with this frame; 0 where it does not say.
    quint32 bytes = 0;
    /// All frames have one rate.
    bool constant = false;
};

/// Of a frame that bears a "Xing", "Info" or "VBRI" head; nothing of any other. `frame`: the frame's first bytes.
[[nodiscard]] std::optional<StreamSummary> streamSummary(const MpegHeader& header, QByteArrayView frame);
/// So many bytes of a frame are enough for `streamSummary`.
constexpr qsizetype streamSummarySize = 64;
/// Whether a frame bears such a head at all; it then holds no sound, whatever the head says.
[[nodiscard]] bool describesStream(const MpegHeader& header, QByteArrayView frame);

} // namespace orvantine
