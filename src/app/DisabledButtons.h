#pragma once

namespace orvantine {

struct Root;

/// With 1 the menus, lists and play buttons are off, with 0 they are on; both may be repeated.
void DisabledButtons(Root& root, int off);
/// Turns the present state around.
void DisabledButtons(Root& root);

} // namespace orvantine
