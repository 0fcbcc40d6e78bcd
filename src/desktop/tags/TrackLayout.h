#pragma once

#include "desktop/tags/ByteSource.h"

#include <vector>

namespace orvantine {

/// Bytes from `begin` to before `end`.
struct ByteSpan
{
    qint64 begin = 0;
    qint64 end = 0;
};

/// Where the sound of a track lies between its tags.
struct TrackLayout
{
    /// Behind the leading tags that can be trusted.
    qint64 soundBegin = 0;
    /// Before the trailing tags (version 1, appended ones of version 2, APE, Lyrics3).
    qint64 soundEnd = 0;
    /// Tags of version 2 behind the sound, the last one first.
    std::vector<ByteSpan> appendedId3v2;
    /// The last 128 bytes are a tag of version 1.
    bool hasId3v1 = false;
    /// That tag.
    QByteArray id3v1;
    /// A tag of version 2 begins where the sound should, but its size cannot be true.
    bool brokenId3v2 = false;
    /// Another kind of file by its head: WAV, WMA and the like.
    bool foreign = false;
};

/// A leading tag is trusted only if its size bytes are below 0x80 and it ends inside the file; a trailing one only if
/// it begins behind the leading ones, one of version 2 also only if its head says the same as its footer. The head is
/// looked at through `head`, the end through a window of its own.
[[nodiscard]] TrackLayout trackLayout(ByteWindow& head);
[[nodiscard]] TrackLayout trackLayout(const ByteSource& source);

} // namespace orvantine
