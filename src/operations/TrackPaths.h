#pragma once

#include <QSet>
#include <QStringList>

namespace orvantine {

class ListView;

/// The paths of the tracks in the form in which they are compared: see FileDirPath::compared.
[[nodiscard]] QSet<QString> pathsOf(const ListView& tracks);

} // namespace orvantine
