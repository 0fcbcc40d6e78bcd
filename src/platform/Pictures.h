#pragma once

#include <QByteArray>
#include <QString>

namespace orvantine {

/// The picture of that type ("GIF", "JPG") and number among the program's resources; empty for one that there is none
/// of. The program carries none at present.
[[nodiscard]] QByteArray pictureResource(const QString& type, int number);

} // namespace orvantine
