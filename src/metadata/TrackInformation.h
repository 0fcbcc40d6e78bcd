#pragma once

namespace orvantine {

struct Root;

/// The checks and the whole display refresh for the selected track. The two arguments are accepted and not used.
void ShowTrackInfo(Root& root, int index, int flag);

/// Refreshes the labels from the selected track.
void LoadMp3Info(Root& root);

/// The player has chosen another item, or knows more of it.
void MediaChange(Root& root);

} // namespace orvantine
