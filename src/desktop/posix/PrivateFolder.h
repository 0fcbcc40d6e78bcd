#pragma once

#include <QByteArray>

namespace orvantine {

/// Makes a folder and its parents with mode 0700; true if it stands already.
bool makePrivateFolder(const QByteArray& path);

} // namespace orvantine
