#include "platform/ui/WindowPlacement.h"
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace platform {

void setMaximisedWithin(QWidget &window)
{
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        const QRect free = screen->availableGeometry();
        QRect normal(0, 0, free.width() * 9 / 10, free.height() * 9 / 10);
        normal.moveCenter(free.center());
        window.setGeometry(normal);
    }
    // Maximized, the window manager keeps the frame on the screen with the form's bottom row.
    window.setWindowState(Qt::WindowMaximized);
}

} // namespace platform
