#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Path of the cover of a playlist by its display name: ".jpg", ".gif", ".bmp" in "Resource", the last hit wins. ""
/// where there is none.
[[nodiscard]] QString coverFile(const Root& root, const QString& playlistName);

/// Shows or hides the cover pane with the width of the description beside it.
void showCoverPane(Root& root, bool on);

void mnuCoverShow_Click(Root& root);

/// Chooses a picture as the cover of the selected playlist.
void pCovers_Click(Root& root);

} // namespace orvantine
