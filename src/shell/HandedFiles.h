#pragma once

#include <QStringList>

namespace orvantine {

struct Root;

/// False while a command or a dialog is at work, or the program starts.
[[nodiscard]] bool takesFiles(const Root& root);

/// What a file manager sends: folders and lists go to the catalogue, audio files to the open list, as if they had been
/// dropped there.
void takeHandedFiles(Root& root, const QStringList& paths);

} // namespace orvantine
