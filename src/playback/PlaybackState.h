#pragma once

#include "playback/Sequence.h"

namespace orvantine {

struct Root;

[[nodiscard]] PlaybackStatus playbackStatus(const Root& root);

/// Puts into Root what the player does, and the mark of the title that plays into its row.
void showPlayback(Root& root);

/// 1 playlist, 2 track, 3 none; 0 where no mode is checked.
[[nodiscard]] int repeatOf(const Root& root);

/// Row of the playlist that plays or played last, wherever it has moved to; 0 where it is gone.
[[nodiscard]] int playingRow(const Root& root);
/// The playlist of this row plays from now on.
void notePlaying(Root& root, int row);

} // namespace orvantine
