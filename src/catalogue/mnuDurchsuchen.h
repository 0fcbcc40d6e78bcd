#pragma once

namespace orvantine {

struct Root;

/// Takes a playlist file that the user chooses into the catalogue and opens it. A list that once got another name has
/// it again.
void mnuDurchsuchen_Click(Root& root);

} // namespace orvantine
