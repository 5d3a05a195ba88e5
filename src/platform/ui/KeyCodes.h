#pragma once
#include <Qt>

class QKeyEvent;

namespace platform {

// The legacy key codes and shift flags that forms receive.
enum KeyCode {
    vbKeyBack = 8,
    vbKeyTab = 9,
    vbKeyReturn = 13,
    vbKeyShift = 16,
    vbKeyControl = 17,
    vbKeyMenu = 18,
    vbKeyEscape = 27,
    vbKeySpace = 32,
    vbKeyPageUp = 33,
    vbKeyPageDown = 34,
    vbKeyEnd = 35,
    vbKeyHome = 36,
    vbKeyLeft = 37,
    vbKeyUp = 38,
    vbKeyRight = 39,
    vbKeyDown = 40,
    vbKeyInsert = 45,
    vbKeyDelete = 46,
    vbKey0 = 48,
    vbKeyA = 65,
    vbKeyNumpad0 = 96,
    vbKeyF1 = 112,
    vbKeyF2,
    vbKeyF3,
    vbKeyF4,
    vbKeyF5,
    vbKeyF6,
    vbKeyF7,
    vbKeyF8,
    vbKeyF9,
    vbKeyF10,
    vbKeyF11,
    vbKeyF12,
};
enum ShiftFlag { vbShiftMask = 1, vbCtrlMask = 2, vbAltMask = 4 };

// 0 for a key that has no legacy code.
int legacyKeyCode(const QKeyEvent &event);
int legacyShift(Qt::KeyboardModifiers modifiers);
// The character code of a key press, 0 when the key types no character.
int legacyKeyAscii(const QKeyEvent &event);

} // namespace platform
