#pragma once

#include "desktop/tags/TrackFacts.h"

namespace orvantine {

class Descriptor;

/// What TagLib tells of a track of another kind, which it knows by the bytes alone: blank and 0 where it tells nothing.
[[nodiscard]] TrackFacts otherTrackFacts(const Descriptor& file);

} // namespace orvantine
