#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Migrates data from the program's folder to the user's, once.
void CopyToAppDataDir(Root& root);

/// A file of the program's folder.
[[nodiscard]] QString programFile(const Root& root, const QString& name);

/// Application-data folder + "\Orvanten Manager".
[[nodiscard]] QString userFolder(const Root& root);

} // namespace orvantine
