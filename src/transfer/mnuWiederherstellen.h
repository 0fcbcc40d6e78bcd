#pragma once

namespace orvantine {

struct Root;

/// Puts the database's local copy in its place and loads the catalogue anew.
void mnuWiederherstellen_Click(Root& root);

} // namespace orvantine
