#include "platform/ui/NativeShell.h"
#include <QDesktopServices>
#include <QNetworkInformation>
#include <QPrinterInfo>
#include <QUrl>
#include <QWidget>
#include <QWindow>
#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace platform {

namespace {

// True only when the platform says there is no network at all; where it cannot
// tell, the browser is given its chance.
bool networkDown()
{
    static const bool known =
        QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability);
    return known && QNetworkInformation::instance() &&
           QNetworkInformation::instance()->reachability() ==
               QNetworkInformation::Reachability::Disconnected;
}

} // namespace

// A web page that cannot load is a failure too: the browser would only show an error.
bool NativeShell::openUrl(const QString &url)
{
    const QUrl address(url);
    if (address.scheme().startsWith("http") && networkDown())
        return false;
    return QDesktopServices::openUrl(address);
}

QStringList NativeShell::printerNames()
{
    return QPrinterInfo::availablePrinterNames();
}

QString NativeShell::defaultPrinterName()
{
    return QPrinterInfo::defaultPrinterName();
}

// Changing a flag of a shown QWidget re-creates its window, which hides it and
// ends the modal loop of a dialog. A shown window gets the flag on its native
// window in place instead, and the widget only records it.
void NativeShell::setTopMost(QWidget *window, bool onTop)
{
    if (!window)
        return;
    window = window->window();
    QWindow *handle = window->windowHandle();
    if (!window->isVisible() || !handle) {
        window->setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
        return;
    }
    Qt::WindowFlags flags = window->windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
#ifdef Q_OS_WIN
    window->overrideWindowFlags(flags);
    SetWindowPos(reinterpret_cast<HWND>(window->winId()), onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0,
                 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
#else
    if (flags == window->windowFlags())
        return;
    window->overrideWindowFlags(flags);
    handle->setFlags(flags);
#endif
}

} // namespace platform
