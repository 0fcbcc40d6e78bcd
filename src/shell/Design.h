#pragma once

namespace orvantine {

struct Root;

/// The window as it is designed, before anything ran.
void design(Root& root);

} // namespace orvantine
