#pragma once

namespace orvantine {

struct Root;

/// Opens the audio finder, behind an index of today.
void mnuAddFolder_Click(Root& root);

} // namespace orvantine
