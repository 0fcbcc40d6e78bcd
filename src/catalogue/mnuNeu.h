#pragma once

namespace orvantine {

struct Root;

/// Asks for a name and opens a new, empty playlist; the catalogue is saved at once.
void mnuNeu_Click(Root& root);

} // namespace orvantine
