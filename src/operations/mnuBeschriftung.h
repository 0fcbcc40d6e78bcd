#pragma once

namespace orvantine {

struct Root;

/// Asks for the description alone; an empty one is taken away.
void mnuBeschriftung_Click(Root& root);

} // namespace orvantine
