#pragma once

#include <QString>
#include <QStringList>

namespace orvantine {

struct Root;

/// Adds the audio files of a folder that the list does not hold yet, or one file, and saves the list.
void mnuAddSounds_Click(Root& root);

/// Those of the names that, put behind `start`, do not stand anywhere in `text`, ignoring case. It is plain text
/// search: a path that is part of a longer one counts as present. The cost does not grow with names times text.
[[nodiscard]] QStringList absentNames(const QString& text, const QString& start, const QStringList& names);

} // namespace orvantine
