#pragma once

#include <QStringList>

namespace orvantine {

class Command;
struct Root;

/// Takes dropped playlists and folders of audio files into the catalogue.
void LListView1_OLEDragDrop(Root& root, const QStringList& paths);

/// Makes a playlist of that name of the audio files that lie in a folder, with the folder's first picture as its cover.
/// False where none was added; nobody is told of it.
[[nodiscard]] bool addFolderPlaylist(Root& root, Command& command, const QString& folder, const QString& name);

} // namespace orvantine
