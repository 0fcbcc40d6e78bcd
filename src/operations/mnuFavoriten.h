#pragma once

namespace orvantine {

struct Root;

/// Makes the selected playlist a favourite, or an ordinary one again.
void mnuFavoriten_Click(Root& root);

/// Leaves only the favourites in the catalogue's list, or brings all playlists back. The database is not changed.
void mnuFavoritenShow_Click(Root& root);

} // namespace orvantine
