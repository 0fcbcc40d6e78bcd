#pragma once

namespace orvantine {

struct Root;

/// The commands under "Übertragen", by the index of their item: 1 copies the playlist in sight to a medium, 4 the
/// selected track; 2 and 3 tell that they cannot be used yet; 6 chooses whether a playlist gets a folder of its own
/// there, 7 the target.
void mnuHandling(Root& root, int index);

} // namespace orvantine
