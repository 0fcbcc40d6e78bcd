#pragma once

namespace orvantine {

struct Root;

/// Looks for a new version, as often as the options say.
void UpdateCheck(Root& root);

} // namespace orvantine
