#include "platform/ui/KeyCodes.h"
#include <QKeyEvent>

namespace platform {

namespace {

int punctuationCode(int key)
{
    switch (key) {
    case Qt::Key_Semicolon:
    case Qt::Key_Colon:
        return 186;
    case Qt::Key_Equal:
    case Qt::Key_Plus:
        return 187;
    case Qt::Key_Comma:
    case Qt::Key_Less:
        return 188;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
        return 189;
    case Qt::Key_Period:
    case Qt::Key_Greater:
        return 190;
    case Qt::Key_Slash:
    case Qt::Key_Question:
        return 191;
    case Qt::Key_QuoteLeft:
    case Qt::Key_AsciiTilde:
        return 192;
    case Qt::Key_BracketLeft:
    case Qt::Key_BraceLeft:
        return 219;
    case Qt::Key_Backslash:
    case Qt::Key_Bar:
        return 220;
    case Qt::Key_BracketRight:
    case Qt::Key_BraceRight:
        return 221;
    case Qt::Key_Apostrophe:
    case Qt::Key_QuoteDbl:
        return 222;
    default:
        return 0;
    }
}

int keypadCode(int key)
{
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return vbKeyNumpad0 + (key - Qt::Key_0);
    switch (key) {
    case Qt::Key_Asterisk:
        return 106;
    case Qt::Key_Plus:
        return 107;
    case Qt::Key_Minus:
        return 109;
    case Qt::Key_Period:
        return 110;
    case Qt::Key_Slash:
        return 111;
    case Qt::Key_Enter:
        return vbKeyReturn;
    default:
        return 0;
    }
}

int navigationCode(int key)
{
    switch (key) {
    case Qt::Key_Backspace:
        return vbKeyBack;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return vbKeyTab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return vbKeyReturn;
    case Qt::Key_Shift:
        return vbKeyShift;
    case Qt::Key_Control:
        return vbKeyControl;
    case Qt::Key_Alt:
        return vbKeyMenu;
    case Qt::Key_Escape:
        return vbKeyEscape;
    case Qt::Key_Space:
        return vbKeySpace;
    case Qt::Key_PageUp:
        return vbKeyPageUp;
    case Qt::Key_PageDown:
        return vbKeyPageDown;
    case Qt::Key_End:
        return vbKeyEnd;
    case Qt::Key_Home:
        return vbKeyHome;
    case Qt::Key_Left:
        return vbKeyLeft;
    case Qt::Key_Up:
        return vbKeyUp;
    case Qt::Key_Right:
        return vbKeyRight;
    case Qt::Key_Down:
        return vbKeyDown;
    case Qt::Key_Insert:
        return vbKeyInsert;
    case Qt::Key_Delete:
        return vbKeyDelete;
    default:
        return 0;
    }
}

} // namespace

int legacyKeyCode(const QKeyEvent &event)
{
    const int key = event.key();
    if (event.modifiers() & Qt::KeypadModifier) {
        if (int code = keypadCode(key))
            return code;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return vbKeyF1 + (key - Qt::Key_F1);
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return vbKey0 + (key - Qt::Key_0);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return vbKeyA + (key - Qt::Key_A);
    if (int code = navigationCode(key))
        return code;
    return punctuationCode(key);
}

int legacyShift(Qt::KeyboardModifiers modifiers)
{
    int shift = 0;
    if (modifiers & Qt::ShiftModifier)
        shift |= vbShiftMask;
    if (modifiers & Qt::ControlModifier)
        shift |= vbCtrlMask;
    if (modifiers & Qt::AltModifier)
        shift |= vbAltMask;
    return shift;
}

int legacyKeyAscii(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
        return 9;
    default:
        break;
    }
    const QString text = event.text();
    if (text.size() != 1)
        return 0;
    const char16_t c = text.at(0).unicode();
    return (c >= 32 && c < 256 && c != 127) ? c : 0;
}

} // namespace platform
