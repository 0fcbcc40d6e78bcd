#pragma once

namespace orvantine {

struct Root;

/// The pair of buttons for "nothing runs" or "something runs", with the caption of the menu.
void showRunning(Root& root, bool running);

/// Presses the stop button if a title runs or is paused.
void stopIfRunning(Root& root);

} // namespace orvantine
