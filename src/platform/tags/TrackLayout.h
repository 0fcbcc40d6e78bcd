#pragma once

#include "platform/tags/ByteSource.h"

namespace orvantine {

/// Where the sound of a track lies between its tags.
struct TrackLayout
{
    /// Behind the leading tags that can be trusted.
    qint64 soundBegin = 0;
    /// Before the trailing tags (version 1, APE, Lyrics3).
    qint64 soundEnd = 0;
    /// The last 128 bytes are a tag of version 1.
    bool hasId3v1 = false;
    /// That tag.
    QByteArray id3v1;
    /// A tag of version 2 begins where the sound should, but its size cannot be true.
    bool brokenId3v2 = false;
    /// Another kind of file: WAV, WMA and the like.
    bool foreign = false;
};

/// A leading tag is trusted only if its size bytes are below 0x80 and it ends inside the file; a trailing one only if
/// it begins behind the leading ones. The head is looked at through `head`, the end through a window of its own.
[[nodiscard]] TrackLayout trackLayout(ByteWindow& head);
[[nodiscard]] TrackLayout trackLayout(const ByteSource& source);

} // namespace orvantine
