#pragma once

namespace orvantine {

struct Root;

/// Packs the playlists with a copy of the database, and the covers, into an archive that the user chooses. False if it
/// does not stand, with all of them, at the end.
[[nodiscard]] bool backUpData(Root& root);

void mnuDbSicherungen_Click(Root& root);

} // namespace orvantine
