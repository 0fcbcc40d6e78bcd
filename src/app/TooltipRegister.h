#pragma once

namespace orvantine {

struct Root;

/// With 1 gives the player's and the moving buttons their tips, with 0 takes them away.
void TooltipRegister(Root& root, int on);

} // namespace orvantine
