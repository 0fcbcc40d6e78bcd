#pragma once

namespace orvantine {

struct Root;

/// Shows or hides the cover pane with the width of the description beside it.
void showCoverPane(Root& root, bool on);

/// Gives the description the width that the frame and the cover pane leave.
void fitDescription(Root& root);

/// Shows the cover of the open playlist and its pane, if it has one.
void showCover(Root& root);

/// Shows the cover of a catalogue row in its pane, or neither.
void showRowCover(Root& root, int row);

} // namespace orvantine
