#pragma once

#include "platform/Twips.h"

namespace orvantine {

struct Root;

/// The least size of the main window, where the screen has room for it.
inline constexpr Twips LeastWidth = 9365;
inline constexpr Twips LeastHeight = 7245;

struct WindowSize
{
    Twips width = 0;
    Twips height = 0;
};

/// What the frame of a window takes of the room on a screen, at most. It is not known before the window is seen.
inline constexpr WindowSize FrameRoom{150, 600};

/// The least size on the screen that the window stands on.
[[nodiscard]] WindowSize leastSize(const Root& root);

/// Makes a window fit that is larger than the room on its screen, and moves one whose title is on no screen. Any other
/// stays where the user has put it, also over an edge.
void keepOnScreen(Root& root);

/// A minimised window goes to the tray, where an item stands to bring it back; any other is kept at its least size.
void Form_Resize(Root& root);

} // namespace orvantine
