#pragma once

namespace orvantine {

struct Root;

/// Exports the selected playlist as it stands on disk under a new name; an NML list takes the rows.
void mnuSpeichernUnter_Click(Root& root);

} // namespace orvantine
