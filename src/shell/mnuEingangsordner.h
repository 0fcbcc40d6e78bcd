#pragma once

namespace orvantine {

struct Root;

/// Shows the folder of the selected track in the file manager.
void mnuEingangsordner_Click(Root& root);

} // namespace orvantine
