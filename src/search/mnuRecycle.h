#pragma once

namespace orvantine {

struct Root;

/// Deletes the copies that end in "bak" in "Playlisten". One that is a list of the catalogue stays.
void mnuRecycle_Click(Root& root);

} // namespace orvantine
