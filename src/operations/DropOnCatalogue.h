#pragma once

#include <QStringList>

namespace orvantine {

struct Root;

/// Takes dropped playlists and folders of audio files into the catalogue.
void LListView1_OLEDragDrop(Root& root, const QStringList& paths);

} // namespace orvantine
