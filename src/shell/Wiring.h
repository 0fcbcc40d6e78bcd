#pragma once

namespace orvantine {

struct Root;

/// Ties every control of the main window to its handler, once.
void wire(Root& root);

} // namespace orvantine
