#pragma once
#include <QRgb>
#include <QtGlobal>

// Colours cross the control's interface as platform values: red in the low
// byte, and 0x800000nn for the system colour nn. This is the one place where
// they meet Qt's colours.
namespace candy {

// The colour a platform value stands for, system colours resolved.
QRgb translateColor(quint32 color);
// The platform value of a plain colour.
constexpr quint32 colorValue(int r, int g, int b)
{
    return quint32(r & 0xFF) | quint32(g & 0xFF) << 8 | quint32(b & 0xFF) << 16;
}
inline quint32 colorValue(QRgb rgb)
{
    return colorValue(qRed(rgb), qGreen(rgb), qBlue(rgb));
}

} // namespace candy
