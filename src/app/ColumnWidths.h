#pragma once

#include "app/Columns.h"

namespace orvantine {

class ListView;
struct Root;

/// A column that is only storage, or that the view commands keep out of sight. Its width is neither stored nor applied.
[[nodiscard]] bool isHidden(const Root& root, const ListView& list, int column);

/// Creates the columns of the catalogue, each as wide as its rule says.
void createCatalogueColumns(ListView& list);
/// Gives the columns the widths of their creation; a hidden one gets 0.
void resetCatalogueColumnWidths(Root& root);
/// Gives them the stored widths. A column that is hidden, or that none is stored for, stays as it is.
void applyStoredCatalogueWidths(Root& root);

/// Creates the columns of the track list with its stored widths.
void createTrackColumns(Root& root);
/// As resetCatalogueColumnWidths.
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
