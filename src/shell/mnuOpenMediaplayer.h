#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Hands the selected track (1) or playlist (2) to the other player. The own one stops.
void mnuOpenMediaplayerEx_Click(Root& root, int index);
/// Starts the other player with a file.
void OpenMediaplayer(Root& root, const QString& file);

} // namespace orvantine
