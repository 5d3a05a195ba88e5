#include "platform/Dialogs.h"
#include "platform/AppInfo.h"
#include <cstdio>

namespace platform {

int ConsoleDialogs::msgBox(const QString &text, int style, const QString &title)
{
    QString shown = text;
    shown.replace("\r\n", "\n").replace('\r', '\n');
    std::fputs(((title.isEmpty() ? QString() : title + ": ") + shown + '\n').toLocal8Bit(), stderr);
    std::fflush(stderr);
    switch (style & 7) {
    case vbYesNo:
    case vbYesNoCancel:
        return vbNo;
    case vbOKCancel:
    case vbRetryCancel:
        return vbCancel;
    default:
        return vbOK;
    }
}

int MsgBox(const QString &text, int style, const QString &title)
{
    return DialogPort::get().msgBox(text, style, title.isEmpty() ? appTitle() : title);
}

QString InputBox(const QString &prompt, const QString &title, const QString &defaultText)
{
    return DialogPort::get().inputBox(prompt, title.isEmpty() ? appTitle() : title, defaultText);
}

} // namespace platform
