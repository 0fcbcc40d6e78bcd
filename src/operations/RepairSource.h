#pragma once

namespace orvantine {

struct Root;

/// True if the file of the track is not where its row says.
[[nodiscard]] bool isTrackMissing(const Root& root, int track);

/// Offers to find the folder of a missing track, for this one or for all of the list, and saves the list.
void repairSource(Root& root, int track);

} // namespace orvantine
