#pragma once
#include "platform/Shell.h"

namespace platform {

// Web pages, printers and windows of a program with screens.
class NativeShell : public ProcessShell {
public:
    bool openUrl(const QString &url) override;
    QStringList printerNames() override;
    QString defaultPrinterName() override;
    void setTopMost(QWidget *window, bool onTop) override;
};

} // namespace platform
