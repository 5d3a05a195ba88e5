#include "platform/Shell.h"
#include <QDesktopServices>
#include <QHostInfo>
#include <QPrinterInfo>
#include <QUrl>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

namespace platform {

bool NativeShell::openUrl(const QString &url)
{
    return QDesktopServices::openUrl(QUrl(url));
}

QStringList NativeShell::printerNames()
{
    return QPrinterInfo::availablePrinterNames();
}

QString NativeShell::defaultPrinterName()
{
    return QPrinterInfo::defaultPrinterName();
}

// No help viewer process runs on this platform: nothing to wait for.
QList<ProcessEntry> NativeShell::processes()
{
    return {};
}

QList<WindowEntry> NativeShell::windows()
{
    return {};
}

bool NativeShell::pingWindow(quintptr, int)
{
    return false;
}

void NativeShell::setTopMost(QWidget *window, bool onTop)
{
    if (!window)
        return;
    const bool visible = window->isVisible();
    window->setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (visible)
        window->show(); // changing a window flag hides the window
}

QString NativeShell::computerName()
{
    return QHostInfo::localHostName();
}

void NativeShell::exitProcess(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

} // namespace platform
