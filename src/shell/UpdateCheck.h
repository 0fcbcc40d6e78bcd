#pragma once

namespace orvantine {

struct Root;

/// Starts the updater at most once in 30 days.
void UpdateCheck(Root& root);

} // namespace orvantine
