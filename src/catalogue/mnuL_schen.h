#pragma once

namespace orvantine {

struct Root;

/// Takes the selected playlist out of the catalogue, with its cover. Its file goes too, behind a copy that ends in
/// "bak", if it lies in the program's own folder and no other row uses it.
void mnuL_schen(Root& root);

/// What tells of the list that is in sight no more goes from the panels.
void clearPanels(Root& root);

} // namespace orvantine
