#pragma once

class QWidget;

// Presses the first enabled plain button whose caption names the function key
// ("F10 Accept" is F10); `iKeyCode` becomes 0 when a button was pressed.
void gpKey_pressButton(QWidget *oForm, int &iKeyCode, int iShift);
