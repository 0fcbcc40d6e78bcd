#pragma once

namespace orvantine {

struct Root;

/// Plays the selected track alone; what is playing is stopped first.
void playSingleTrack(Root& root);

} // namespace orvantine
