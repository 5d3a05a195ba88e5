#include "common/sm_Shell.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "platform/AppInfo.h"
#include "platform/Instance.h"
#include "platform/Shell.h"
#include <QCoreApplication>
#include <cstring>

qint32 glHelpProcess = 0;
quintptr glHelpWindow = 0;

qint32 glProcess_id(const QString &sName)
{
    qint32 id = 0;
    for (const platform::ProcessEntry &p : platform::ShellPort::get().processes()) {
        if (p.processId != 0 && p.name.toUpper() == sName.toUpper())
            id = p.processId;
    }
    return id;
}

QString gfsAnsi_read(const char *lAddress)
{
    if (!lAddress)
        return QString();
    return textfile::fromCp1252(QByteArray(lAddress, static_cast<int>(std::strlen(lAddress))));
}

bool gfbWindow_match(quintptr hWnd, qint32 processId)
{
    if (processId != glHelpProcess)
        return true;
    glHelpWindow = hWnd;
    return false;
}

void ActivateFirstInstance()
{
    const QString sTitle = platform::appTitle();
    platform::setAppTitle("Unwanted instance");
    const int attempts = conv::Trim(sTitle) == "ZEL Purchasing" ? 20 : 40;
    for (int i = 0; i < attempts; ++i) {
        if (!platform::Instance::raise(sTitle))
            return;
        QCoreApplication::processEvents();
    }
    platform::ShellPort::get().exitProcess(0);
}
