#pragma once
#include "platform/Port.h"
#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

namespace platform {

struct ProcessEntry {
    qint32 sessionId = 0;
    qint32 processId = 0;
    QString name;
};

struct WindowEntry {
    quintptr handle = 0;
    qint32 processId = 0;
};

// Web pages, printers, processes, windows and the end of the process.
class Shell {
public:
    virtual ~Shell() = default;
    virtual bool openUrl(const QString &url) = 0;
    virtual QStringList printerNames() = 0;
    virtual QString defaultPrinterName() = 0;
    // The process list and the top-level windows with their processes; both
    // empty where the platform has no such lists.
    virtual QList<ProcessEntry> processes() = 0;
    virtual QList<WindowEntry> windows() = 0;
    // True while the window exists and answers within the time-out.
    virtual bool pingWindow(quintptr window, int timeoutMs) = 0;
    virtual void setTopMost(QWidget *window, bool onTop) = 0;
    virtual QString computerName() = 0;
    [[noreturn]] virtual void exitProcess(int code) = 0;
};

// A process without screens: no browser, no printers, no windows to raise.
// The layer with screens registers its own at start (platform/ui/NativeShell.h).
class ProcessShell : public Shell {
public:
    bool openUrl(const QString &url) override;
    QStringList printerNames() override;
    QString defaultPrinterName() override;
    QList<ProcessEntry> processes() override;
    QList<WindowEntry> windows() override;
    bool pingWindow(quintptr window, int timeoutMs) override;
    void setTopMost(QWidget *window, bool onTop) override;
    QString computerName() override;
    [[noreturn]] void exitProcess(int code) override;
};

using ShellPort = Port<Shell, ProcessShell>;

} // namespace platform
