#pragma once

namespace orvantine {

struct Root;

/// The window is asked to close. A window in the tray is brought back first, so that its options are saved.
void Form_QueryUnload(Root& root);

/// Ends the program.
void mnuBeenden_Click(Root& root);

} // namespace orvantine
