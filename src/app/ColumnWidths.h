#pragma once

#include "app/Columns.h"

namespace orvantine {

class ListView;
struct Root;

/// A column that is only storage, or that the view commands keep out of sight. Its width is neither stored nor applied.
[[nodiscard]] bool isHidden(const Root& root, const ListView& list, int column);

void createCatalogueColumns(ListView& list);
/// Widths of the columns as they are created.
void resetCatalogueColumnWidths(ListView& list);
void applyStoredCatalogueWidths(Root& root);

/// Creates the columns of the track list with its stored widths.
void createTrackColumns(Root& root);
void resetTrackColumnWidths(Root& root);

/// Writes the widths of both lists to the settings key; a column that does not exist has none.
void saveColumnWidths(Root& root);

/// The width that is stored, or `otherwise`.
[[nodiscard]] Twips storedWidth(const Root& root, QStringView setting, Twips otherwise);
/// A column that does not exist stores nothing.
void storeWidth(Root& root, QStringView setting, const ListView& list, int column);

} // namespace orvantine
