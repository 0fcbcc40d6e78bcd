#pragma once

#include <QString>

class QWidget;

namespace orvantine {

/// Shows name, folder, kind, size, times and rights of a file, where the desktop has no property sheet of its own.
void showPropertiesDialog(const QString& path, QWidget* parent);

} // namespace orvantine
