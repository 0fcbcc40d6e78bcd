#pragma once

namespace orvantine {

struct Root;

/// The window is asked to close. A window in the tray is brought back first, so that its options are saved.
void Form_QueryUnload(Root& root);

/// The desktop's session ends, or the process is asked to end: as if the window were closed, whatever stands open.
void endBySession(Root& root);

/// Ends the program.
void mnuBeenden_Click(Root& root);

} // namespace orvantine
