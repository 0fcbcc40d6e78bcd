#pragma once

namespace orvantine {

struct Root;

/// Gives the selected playlist another name, and its cover with it. The playlist file keeps its own.
void mnuUmbenennen_Click(Root& root);

} // namespace orvantine
