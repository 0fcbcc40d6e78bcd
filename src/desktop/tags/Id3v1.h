#pragma once

#include "platform/Mp3Record.h"

#include <QByteArray>

#include <optional>

namespace orvantine {

constexpr qsizetype id3v1Size = 128;

/// The fields of a tag of the first kind, each cut at its first NUL, in the bytes of the file.
struct Id3v1
{
    QByteArray title;
    QByteArray artist;
    QByteArray album;
    QByteArray year;
    QByteArray comment;
    /// 0 for none.
    int track = 0;
    int genre = 255;
};

/// `bytes`: the last 128 of a file. Byte 125 = 0 and byte 126 ≠ 0 is a track number.
[[nodiscard]] std::optional<Id3v1> id3v1(QByteArrayView bytes);

/// The five texts, track and genre of the record; blank and 0 where there is no tag. The rest stays.
void fill(Mp3Record& record, const std::optional<Id3v1>& tag);

/// The tag for a record: 128 bytes, texts filled up with NUL. Flags 2 with a number from 1 to 255 give the form with a
/// track, which leaves 28 bytes to the comment. A genre beyond one byte becomes 255, which means none.
[[nodiscard]] QByteArray id3v1Bytes(const Mp3Record& record);

} // namespace orvantine
