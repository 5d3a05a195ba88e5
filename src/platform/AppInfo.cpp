#include "platform/AppInfo.h"
#include <QCoreApplication>

namespace platform {

namespace {
QString &title()
{
    static QString t = QString::fromLatin1(kProductName);
    return t;
}
} // namespace

QString appTitle()
{
    return title();
}
void setAppTitle(const QString &t)
{
    title() = t;
}

namespace {
QString &folder()
{
    static QString f;
    return f;
}
} // namespace

QString applicationFolder()
{
    return folder().isEmpty() ? QCoreApplication::applicationDirPath() : folder();
}

void setApplicationFolder(const QString &f)
{
    folder() = f;
}

} // namespace platform
