#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Full path of the file in a row of the track list, as the row tells it; "" for a row that is not there.
[[nodiscard]] QString trackPath(const Root& root, int row);

/// That of the selected row; "" where none is selected.
[[nodiscard]] QString selectedTrackPath(const Root& root);

} // namespace orvantine
