#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Opens the properties of the selected playlist. Where the selected track's file is missing, it offers to find its
/// folder instead, for this track or for all of the list.
void mnuEigenschaften_Click(Root& root);

/// Asks for the description alone; an empty one is taken away.
void mnuBeschriftung_Click(Root& root);

/// True for the text that stands in the place of a missing description, by its first 38 characters.
[[nodiscard]] bool isHint(const QString& text);

/// Puts that text in the place of the description.
void showHintForDescription(Root& root);

} // namespace orvantine
