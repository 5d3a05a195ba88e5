#include "platform/Shell.h"
#include <QHostInfo>
#include <cstdio>
#include <cstdlib>

namespace platform {

bool ProcessShell::openUrl(const QString &)
{
    return false;
}

QStringList ProcessShell::printerNames()
{
    return {};
}

QString ProcessShell::defaultPrinterName()
{
    return {};
}

// No help viewer process runs on this platform: nothing to wait for.
QList<ProcessEntry> ProcessShell::processes()
{
    return {};
}

QList<WindowEntry> ProcessShell::windows()
{
    return {};
}

bool ProcessShell::pingWindow(quintptr, int)
{
    return false;
}

void ProcessShell::setTopMost(QWidget *, bool) {}

QString ProcessShell::computerName()
{
    return QHostInfo::localHostName();
}

void ProcessShell::exitProcess(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

} // namespace platform
