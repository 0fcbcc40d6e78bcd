#pragma once

namespace orvantine {

struct Root;

/// Makes the forms, lays the window out as it is designed and ties each control to its handler. Once, before anything
/// runs.
void assemble(Root& root);

} // namespace orvantine
