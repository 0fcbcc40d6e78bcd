#pragma once

#include <QStringList>

namespace orvantine {

struct Root;

/// False while a command or a dialog is at work, or the program starts.
[[nodiscard]] bool takesFiles(const Root& root);

/// What a file manager opens or sends: audio files go to the open list and folders to the catalogue, as if they had
/// been dropped there. A list is taken into the catalogue and opened, or only selected where it stands there.
void takeHandedFiles(Root& root, const QStringList& paths);

} // namespace orvantine
