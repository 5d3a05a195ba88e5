#include "platform/ui/Twips.h"
#include <QGuiApplication>
#include <QScreen>
#include <cmath>

namespace platform {

namespace {
double scale()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchX() / 96.0 : 1.0;
}
} // namespace

int twipsToPixels(int twips)
{
    return static_cast<int>(std::lround(twips / 15.0 * scale()));
}
int pixelsToTwips(int pixels)
{
    return static_cast<int>(std::lround(pixels * 15.0 / scale()));
}

} // namespace platform
