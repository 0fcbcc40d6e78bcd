#pragma once

#include "desktop/tags/ByteSource.h"
#include "desktop/tags/Id3v1.h"

#include <optional>

namespace orvantine {

/// What the record needs to know of a track.
struct TrackFacts
{
    std::optional<Id3v1> tag;
    /// Kilobits per second, the average where it varies; -1 where no frame was found.
    int bitRate = -1;
    /// Whole seconds, the begun one left out; -1 where no frame was found.
    int seconds = -1;
};

/// Nothing for another kind of file. Reads some blocks of a long track and only those; the whole of it only where its
/// own summary (Xing, Info, VBRI) does not fit its frames, or where the rate varies and no summary stands.
[[nodiscard]] std::optional<TrackFacts> trackFacts(const ByteSource& source);

} // namespace orvantine
