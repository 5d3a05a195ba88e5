#include "common/ui/sm_Mouse.h"
#include <QCursor>
#include <QGuiApplication>

void gpMouse_default()
{
    while (QGuiApplication::overrideCursor()) QGuiApplication::restoreOverrideCursor();
}

void gpMouse_wait()
{
    if (QGuiApplication::overrideCursor())
        QGuiApplication::changeOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

int giMouse_pointer()
{
    const QCursor *cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor ? 11 : 1;
}
