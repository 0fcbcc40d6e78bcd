#pragma once

namespace orvantine {

struct Root;

/// Switches the main window's search display. On: the busy panel runs and the cover makes room. Off: the panel goes,
/// and the cover is back where there was one.
void Dialogsuche(Root& root, bool on);

} // namespace orvantine
