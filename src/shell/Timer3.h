#pragma once

namespace orvantine {

struct Root;

/// Counts to the delayed start of an update.
void Timer3_Tick(Root& root);

} // namespace orvantine
