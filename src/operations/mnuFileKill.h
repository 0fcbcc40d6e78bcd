#pragma once

namespace orvantine {

struct Root;

/// Takes the selected track out of the list, if the user agrees. The audio file stays.
void mnuFileKill_Click(Root& root);

} // namespace orvantine
