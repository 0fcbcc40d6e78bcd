#pragma once

#include <QString>

namespace orvantine {

class Command;
struct Root;

/// Takes a playlist file that the user chooses into the catalogue and opens it. A list that once got another name has
/// it again.
void mnuDurchsuchen_Click(Root& root);
/// The same for a list that was chosen elsewhere, with so many seconds before and behind the new row.
void addChosenPlaylist(Root& root, Command& command, const QString& chosen, double seconds);

} // namespace orvantine
