#pragma once

namespace orvantine {

struct Root;

/// Writes window geometry, fonts, column widths and the marks of the menus to the settings key. Stops the player and
/// takes the tray icon away on the way.
void SaveOptions(Root& root);

/// `LV_1`, `LV_2` from columns 2 and 4 of the catalogue, `LV_4` to `LV_7` from columns 2 to 5 of the tracks.
void saveColumnWidths(Root& root);

} // namespace orvantine
