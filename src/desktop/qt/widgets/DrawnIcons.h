#pragma once

#include <QPainterPath>
#include <QString>

namespace orvantine {

/// The shape that stands for an icon where no icon set is installed, on a square of 16 by 16; empty for a name that the
/// program can do without.
[[nodiscard]] QPainterPath drawnIcon(const QString& name);

} // namespace orvantine
