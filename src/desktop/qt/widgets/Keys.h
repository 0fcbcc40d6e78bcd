#pragma once

class QKeyEvent;

namespace orvantine {

/// The key as the handlers know it: 13 Enter, 32 space, 33 page up, 34 page down, 35 end, 36 home, 37 to 40 left, up,
/// right and down, 81 Q, 96 numeric 0, 226 the "<" key left of the letters. 0 for a key that none of them asks for.
[[nodiscard]] int keyCodeOf(const QKeyEvent& event);

/// The character that the key types: 1 to 26 with the control key, 8 backspace, 13 Enter. 0 for a key that types none,
/// and for those that a dialog keeps to itself (Escape, Tab).
[[nodiscard]] int characterCodeOf(const QKeyEvent& event);

/// 1 shift, 2 control, 4 alt, added up.
[[nodiscard]] int shiftWordOf(const QKeyEvent& event);

} // namespace orvantine
