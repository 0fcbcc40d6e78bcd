#pragma once

namespace orvantine {

struct Root;

/// The housekeeping pass that keeps the window in step with the data.
void Timer2_Tick(Root& root);

} // namespace orvantine
