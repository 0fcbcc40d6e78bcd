#pragma once

namespace orvantine {

struct Root;

/// Takes the tag as the name of every track of the open list.
void mnuSetTagName_Click(Root& root);

} // namespace orvantine
