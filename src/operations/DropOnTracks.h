#pragma once

#include <QStringList>

namespace orvantine {

struct Root;

/// Adds dropped audio files to the list in sight.
void LListView2_OLEDragDrop(Root& root, const QStringList& paths);

} // namespace orvantine
