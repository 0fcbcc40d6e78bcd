#pragma once

namespace orvantine {

struct Root;

/// Migrates data from the program's folder to the user's, once.
void CopyToAppDataDir(Root& root);

} // namespace orvantine
