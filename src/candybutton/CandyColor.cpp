#include "candybutton/CandyColor.h"
#include <QGuiApplication>
#include <QPalette>

namespace candy {

namespace {

struct SystemColor {
    int index;
    QPalette::ColorGroup group;
    QPalette::ColorRole role;
};

// The system colours a control is likely to be given, on the palette's nearest roles.
constexpr SystemColor systemColors[] = {
    {1, QPalette::Active, QPalette::Window},
    {4, QPalette::Active, QPalette::Window},
    {5, QPalette::Active, QPalette::Base},
    {6, QPalette::Active, QPalette::Shadow},
    {7, QPalette::Active, QPalette::WindowText},
    {8, QPalette::Active, QPalette::Text},
    {13, QPalette::Active, QPalette::Highlight},
    {14, QPalette::Active, QPalette::HighlightedText},
    {15, QPalette::Active, QPalette::Button},
    {16, QPalette::Active, QPalette::Dark},
    {17, QPalette::Disabled, QPalette::Text},
    {18, QPalette::Active, QPalette::ButtonText},
    {20, QPalette::Active, QPalette::Light},
    {21, QPalette::Active, QPalette::Shadow},
    {22, QPalette::Active, QPalette::Midlight},
    {23, QPalette::Active, QPalette::ToolTipText},
    {24, QPalette::Active, QPalette::ToolTipBase},
};

} // namespace

QRgb translateColor(quint32 color)
{
    if ((color & 0xFF000000u) == 0x80000000u) {
        const int index = int(color & 0xFFFF);
        for (const SystemColor &s : systemColors) {
            if (s.index == index)
                return QGuiApplication::palette().color(s.group, s.role).rgb();
        }
        return qRgb(0, 0, 0);
    }
    return qRgb(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

} // namespace candy
