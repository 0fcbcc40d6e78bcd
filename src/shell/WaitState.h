#pragma once

namespace orvantine {

struct Root;

/// Long work on the lists begins: hourglass, both lists and the buttons off.
void enterWait(Root& root);
/// And ends: all is as it was before.
void leaveWait(Root& root);

} // namespace orvantine
