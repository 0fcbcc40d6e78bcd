#pragma once

namespace orvantine {

struct Root;

/// Empties the database and moves the local playlists to the trash: a program of its own does it, which is asked for
/// here.
void mnuDeleteDatabase_Click(Root& root);

} // namespace orvantine
