#pragma once

#include "platform/Twips.h"

namespace orvantine {

struct Root;

/// The least size of the main window.
inline constexpr Twips LeastWidth = 9365;
inline constexpr Twips LeastHeight = 7245;

/// A minimised window goes to the tray; any other is kept at its least size.
void Form_Resize(Root& root);

} // namespace orvantine
