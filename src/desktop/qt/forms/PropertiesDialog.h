#pragma once

#include <QByteArray>

class QDialog;
class QWidget;

namespace orvantine {

/// Shows name, folder, kind, size, times and rights of a file, where the desktop has no property sheet of its own.
/// Takes the path in the host's bytes, which need not be UTF-8. Serves no events; the dialog goes when it is closed.
QDialog* showPropertiesDialog(const QByteArray& nativePath, QWidget* parent);

} // namespace orvantine
