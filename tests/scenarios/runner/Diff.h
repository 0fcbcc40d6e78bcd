#pragma once

#include <QStringList>

namespace orvantine::scenario {

/// Lines common to both with "  " in front, those only expected with "- ", those only there with "+ ".
[[nodiscard]] QStringList difference(const QStringList& expected, const QStringList& actual);

} // namespace orvantine::scenario
