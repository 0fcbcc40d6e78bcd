#pragma once

namespace orvantine {

struct Root;

/// From the process start to a usable catalogue, in a fixed order. The window becomes visible when it has ended. A
/// second instance ends here, without a message.
void Form_Load(Root& root);

/// The desktop's tray has come or gone: a minimised window stands there or in the task bar.
void trayChanged(Root& root);

/// Brings the window back from the tray or from behind; does nothing before Form_Load has ended.
void activateWindow(Root& root);

} // namespace orvantine
