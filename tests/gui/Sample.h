#pragma once

namespace orvantine {

struct Root;

}

namespace orvantine::fake {

/// Gives the window something to show: a catalogue with a favourite, a playing and a missing list, tracks of which
/// one is missing, a description and track data. Touches no file.
void showSample(Root& root);

} // namespace orvantine::fake
