#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Opens the desktop's property sheet of a file.
void ShowProperties(Root& root, const QString& path);

} // namespace orvantine
