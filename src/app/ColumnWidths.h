#pragma once

#include "app/Columns.h"

namespace orvantine {

class ListView;
struct Root;

/// A column that is only storage, or that the view commands keep out of sight. Its width is neither stored nor applied.
[[nodiscard]] bool isHidden(const Root& root, const ListView& list, int column);

void createCatalogueColumns(ListView& list);
/// Widths of the columns as they are created.
void resetCatalogueColumnWidths(Root& root);
void applyStoredCatalogueWidths(Root& root);

/// Creates the columns of the track list with its stored widths.
void createTrackColumns(Root& root);
void resetTrackColumnWidths(Root& root);

/// The width that a column comes into sight with: the stored one, else that of its creation.
[[nodiscard]] Twips shownWidth(const Root& root, const ListView& list, int column);

/// The user has drawn the pane of the catalogue this wide.
void noteCatalogueWidth(Root& root, Twips width);

/// Writes the widths of both lists to the settings key.
void saveColumnWidths(Root& root);
/// A column that does not exist or is hidden stores nothing.
void storeWidth(Root& root, const ListView& list, int column);

} // namespace orvantine
