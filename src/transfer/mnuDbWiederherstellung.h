#pragma once

namespace orvantine {

struct Root;

/// Brings a backup back over the DataFolder, the whole of it or nothing, and loads the catalogue anew.
void mnuDbWiederherstellung_Click(Root& root);

} // namespace orvantine
