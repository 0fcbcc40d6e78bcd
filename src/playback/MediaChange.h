#pragma once

namespace orvantine {

struct Root;

/// The player has chosen another item, or knows more of it. Comes twice a track.
void MediaChange(Root& root);

} // namespace orvantine
