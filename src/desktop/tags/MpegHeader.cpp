#include "desktop/tags/MpegHeader.h"

#include <QtEndian>

#include <array>

namespace orvantine {
namespace {

using Rates = std::array<int, 15>;

constexpr Rates rates1Layer1{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
constexpr Rates rates1Layer2{0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
constexpr Rates rates1Layer3{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr Rates rates2Layer1{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
constexpr Rates rates2Layers23{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};

constexpr std::array<int, 3> sampleRates1{44100, 48000, 32000};

const Rates& ratesOf(MpegVersion version, int layer)
{
    if (version != MpegVersion::V1)
        return layer == 1 ? rates2Layer1 : rates2Layers23;
    return layer == 1 ? rates1Layer1 : layer == 2 ? rates1Layer2 : rates1Layer3;
}

/// The offset of a "Xing" or "Info"; 0 where there is none. Some encoders count the checksum before it, some do not.
qsizetype xingPlace(const MpegHeader& header, QByteArrayView frame)
{
    for (const qsizetype place : {header.xingOffset(), header.xingOffset() + 2}) {
        const bool possible = place == header.xingOffset() || header.protectedByChecksum;
        if (!possible || frame.size() < place + 4)
            continue;
        const QByteArrayView mark = frame.sliced(place, 4);
        if (mark == QByteArrayView("Xing", 4) || mark == QByteArrayView("Info", 4))
            return place;
    }
    return 0;
}

constexpr qsizetype vbriPlace = 36;

bool hasVbri(QByteArrayView frame)
{
    return frame.size() >= vbriPlace + 4 && frame.sliced(vbriPlace, 4) == QByteArrayView("VBRI", 4);
}

quint32 bigEndian(QByteArrayView bytes, qsizetype offset)
{
    return bytes.size() >= offset + 4 ? qFromBigEndian<quint32>(bytes.data() + offset) : 0;
}

} // namespace

int MpegHeader::samples() const
{
    if (layer == 1)
        return 384;
    return layer == 3 && version != MpegVersion::V1 ? 576 : 1152;
}

int MpegHeader::length() const
{
    const int slots = samples() / 8 / slot() * bitRate * 1000 / sampleRate;
    return (slots + (padded ? 1 : 0)) * slot();
}

int MpegHeader::xingOffset() const
{
    const int sideInformation = version == MpegVersion::V1 ? (mono ? 17 : 32) : (mono ? 9 : 17);
    return static_cast<int>(mpegHeaderSize) + sideInformation;
}

bool MpegHeader::continues(const MpegHeader& other) const
{
    return version == other.version && layer == other.layer && sampleRate == other.sampleRate &&
           (bitRate == 0) == (other.bitRate == 0);
}

std::optional<MpegHeader> mpegHeader(QByteArrayView bytes)
{
    if (bytes.size() < mpegHeaderSize)
        return std::nullopt;
    const auto word = qFromBigEndian<quint32>(bytes.data());
    const auto field = [word](unsigned shift, unsigned mask) { return (word >> shift) & mask; };

    const unsigned version = field(19, 3);
    const unsigned layer = field(17, 3);
    const unsigned rate = field(12, 15);
    const unsigned sampleRate = field(10, 3);
    constexpr unsigned reservedEmphasis = 2;
    if (field(21, 0x7ff) != 0x7ff || version == 1 || layer == 0 || rate == 15 || sampleRate == 3 ||
        field(0, 3) == reservedEmphasis)
        return std::nullopt;

    MpegHeader header;
    header.version = version == 3 ? MpegVersion::V1 : version == 2 ? MpegVersion::V2 : MpegVersion::V25;
    header.layer = 4 - static_cast<int>(layer);
    header.bitRate = ratesOf(header.version, header.layer)[rate];
    header.sampleRate = sampleRates1[sampleRate] / (version == 3 ? 1 : version == 2 ? 2 : 4);
    header.padded = field(9, 1) != 0;
    header.protectedByChecksum = field(16, 1) == 0;
    header.mono = field(6, 3) == 3;
    return header;
}

bool describesStream(const MpegHeader& header, QByteArrayView frame)
{
    return header.layer == 3 && (xingPlace(header, frame) > 0 || hasVbri(frame));
}

std::optional<StreamSummary> streamSummary(const MpegHeader& header, QByteArrayView frame)
{
    if (!describesStream(header, frame))
        return std::nullopt;
    const qsizetype xing = xingPlace(header, frame);
    if (xing == 0)
        return StreamSummary{
            .frames = bigEndian(frame, vbriPlace + 14), .bytes = bigEndian(frame, vbriPlace + 10), .constant = false};

    constexpr quint32 hasFrames = 1;
    constexpr quint32 hasBytes = 2;
    const quint32 flags = bigEndian(frame, xing + 4);
    if ((flags & hasFrames) == 0)
        return std::nullopt;
    return StreamSummary{.frames = bigEndian(frame, xing + 8),
                         .bytes = (flags & hasBytes) != 0 ? bigEndian(frame, xing + 12) : 0,
                         .constant = frame.sliced(xing, 4) == QByteArrayView("Info", 4)};
}

} // namespace orvantine
