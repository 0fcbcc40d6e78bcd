#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Filter of the dialogs that open and save playlists.
[[nodiscard]] QString playlistFilter();

/// The text of the hint that stands in the place of a missing description.
[[nodiscard]] QString addTracksHint();
/// True for that text, or another one of the same beginning: its first 38 characters count.
[[nodiscard]] bool isHint(const QString& text);
[[nodiscard]] bool isSameHint(const QString& text, const QString& hint);

/// Puts the hint in the place of the description.
void showHintForDescription(Root& root);

} // namespace orvantine
