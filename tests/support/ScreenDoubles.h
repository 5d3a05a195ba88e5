#pragma once
#include <QColor>

class QWidget;
class QPoint;

namespace testing_support {

// Every test of the program shows its modal forms through its own ScriptedModal.
void showModalFormsPerTest();

// A double click as the platform delivers it: a click, then the double click.
void doubleClick(QWidget *widget, const QPoint &pos);

// A colour as the files store it (0x00BBGGRR) as the screen shows it.
inline QRgb rgbOf(quint32 colour)
{
    return qRgb(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

} // namespace testing_support
