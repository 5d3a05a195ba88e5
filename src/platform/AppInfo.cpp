#include "platform/AppInfo.h"

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

} // namespace platform
