#pragma once

#include <QList>
#include <QStringList>
#include <QStringView>

namespace orvantine {

struct Root;

/// Adds the files that the clipboard names, 20 at the most, to the open list.
void mnuEditPaste_Click(Root& root);

/// The quoted paths at the head of a text, 20 at the most. Behind each, three characters are skipped: the closing
/// quote and a separator of two characters, or a blank and the next opening quote.
[[nodiscard]] QList<QStringView> quotedPaths(QStringView text);

/// Paths in quotes, a blank between two. One that holds a quote cannot be told and is left out.
[[nodiscard]] QString quotedForm(const QStringList& paths);

} // namespace orvantine
