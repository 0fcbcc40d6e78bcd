#pragma once

#include "desktop/tags/MpegHeader.h"

#include <QByteArray>

namespace orvantine::test {

/// A frame as an encoder lays it down; what it sounds like is of no matter.
struct FrameShape
{
    MpegVersion version = MpegVersion::V1;
    int layer = 3;
    /// Index into the rates of version and layer; 0 is the free format.
    unsigned rateIndex = 9;
    /// 0 to 2: 44100, 48000 and 32000 Hz in version 1, halves and quarters in the others.
    unsigned sampleIndex = 0;
    bool padded = false;
    bool mono = false;
    bool checksum = false;
    /// Bytes without padding; counts in the free format only.
    int freeLength = 0;
};

[[nodiscard]] QByteArray head(const FrameShape& shape);
[[nodiscard]] QByteArray frame(const FrameShape& shape, char content = '\x11');
[[nodiscard]] QByteArray frames(const FrameShape& shape, int count);

/// Version 1, layer III, 44100 Hz, stereo at 128 kbit/s: 417 bytes or 26.1 ms.
[[nodiscard]] inline QByteArray sound(int count = 4)
{
    return frames({}, count);
}

/// A frame with a "Xing" or "Info" head; a negative number leaves the field out.
[[nodiscard]] QByteArray xing(const FrameShape& shape, const QByteArray& mark, qint64 frameCount, qint64 byteCount);
[[nodiscard]] QByteArray vbri(const FrameShape& shape, quint32 frameCount, quint32 byteCount);

/// A tag of version 2 with so many bytes behind its head; `claimed` puts another size into the head.
[[nodiscard]] QByteArray id3v2(int content = 60, qint64 claimed = -1);
/// A tag of version 2 as it stands behind the sound, with a footer.
[[nodiscard]] QByteArray appendedId3v2(int content = 60);
/// 128 bytes: texts filled up with NUL, raw as they are given.
[[nodiscard]] QByteArray id3v1Tag(const QByteArray& title, const QByteArray& artist, const QByteArray& album = {},
                                  const QByteArray& year = {}, const QByteArray& comment = {}, int genre = 255);
[[nodiscard]] QByteArray ape(int content = 40, bool withHead = true);
[[nodiscard]] QByteArray lyrics1(const QByteArray& text = "la la");
[[nodiscard]] QByteArray lyrics2(const QByteArray& text = "LYR00005la la");

} // namespace orvantine::test
