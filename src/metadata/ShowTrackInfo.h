#pragma once

namespace orvantine {

struct Root;

/// The checks and the whole display refresh for the selected track. The two arguments are accepted and not used.
void ShowTrackInfo(Root& root, int index, int flag);

/// The look at the selected track would bring up a tip or a box.
[[nodiscard]] bool isAskedAbout(const Root& root);

/// The display of a track that became the selected one by the way: nothing is asked, and without a row, or without its
/// file, there is none.
void showSelectedTrack(Root& root);

/// Refreshes the labels from the selected track.
void LoadMp3Info(Root& root);

/// Reads the selected track's tag into the labels and stores it as the track's name.
void LoadMp3TagID(Root& root);

/// Measures the selected track with the hidden player. Nothing calls it.
void GetPlayTimesOLD(Root& root);

} // namespace orvantine
