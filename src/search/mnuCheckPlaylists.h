#pragma once

namespace orvantine {

struct Root;

/// Tidies "Playlisten", brings the lists of the catalogue into it, and shows what is missing. A list that nobody names
/// stays behind as its copy that ends in "bak".
void mnuCheckPlaylists_Click(Root& root);

} // namespace orvantine
