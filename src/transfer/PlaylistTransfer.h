#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Copies the playlist in sight into a folder on a medium, with a new list that addresses the tracks from above it.
void transferPlaylist(Root& root);

/// Of the box that tells of a medium with too little room.
[[nodiscard]] QString tooLittleRoomText();

} // namespace orvantine
