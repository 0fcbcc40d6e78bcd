#include "desktop/qt/widgets/Keys.h"

#include <QKeyEvent>

namespace orvantine {

namespace {

/// Code that X and Wayland give the key left of the lowest row of letters: the kernel's 86 and 8.
constexpr quint32 ScanCodeLeftOfLetters = 94;
constexpr int KeyLeftOfLetters = 226;

/// That key, whatever is printed on it: "<" stands on others too, where it is typed with shift beside the letters.
bool isLeftOfLetters(const QKeyEvent& event)
{
    if (event.nativeScanCode() != 0)
        return event.nativeScanCode() == ScanCodeLeftOfLetters;
    return event.key() == Qt::Key_Less || event.key() == Qt::Key_Greater;
}

} // namespace

int keyCodeOf(const QKeyEvent& event)
{
    if (isLeftOfLetters(event))
        return KeyLeftOfLetters;
    const int key = event.key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        const int numericPad = event.modifiers().testFlag(Qt::KeypadModifier) ? 96 - Qt::Key_0 : 0;
        return key + numericPad;
    }
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return key - Qt::Key_F1 + 112;
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    default:
        return 0;
    }
}

int characterCodeOf(const QKeyEvent& event)
{
    const int key = event.key();
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete:
        return 0;
    default:
        break;
    }
    if (event.modifiers().testFlag(Qt::AltModifier))
        return 0;
    if (event.modifiers().testFlag(Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return key - Qt::Key_A + 1;
    return event.text().isEmpty() ? 0 : event.text().front().unicode();
}

int shiftWordOf(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) + (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) +
           (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

} // namespace orvantine
