#pragma once
#include <QString>

class MyButton;

// Caption, separator (carriage return, or a blank with bFlag), key name; the
// Tag takes the key code. An empty caption drops the separator too.
void SetCharKeyCaption(MyButton *oButton, const QString &sCaption, int iKeyCode, bool bFlag);
void SetFunctionKeyCaption(MyButton *oButton, const QString &sCaption, int iKeyCode, bool bFlag);
