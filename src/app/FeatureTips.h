#pragma once

namespace orvantine {

struct Root;

/// The first-use tip at the head of a command. Without the tips' file none is ever shown.
void ShowFeatureTip(Root& root, int id);

} // namespace orvantine
