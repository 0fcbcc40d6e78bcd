#pragma once

namespace orvantine {

struct Root;

/// Starts the sibling that puts the program into the file managers' menus, or takes it away from there again.
void mnuSendtoInstall_Click(Root& root);

} // namespace orvantine
