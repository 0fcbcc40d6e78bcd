#pragma once

namespace orvantine {

struct Root;

/// Serves events until the seconds have gone by or the program has ended: Command::pause for one that is no command.
void Pause(Root& root, double seconds);

} // namespace orvantine
