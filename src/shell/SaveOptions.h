#pragma once

namespace orvantine {

struct Root;

/// Writes window geometry, fonts, column widths and the marks of the menus to the settings key. Stops the player and
/// takes the tray icon away on the way.
void SaveOptions(Root& root);

} // namespace orvantine
