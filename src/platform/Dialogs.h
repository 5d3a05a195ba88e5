#pragma once
#include "platform/Port.h"
#include <QString>

namespace platform {

// Box styles and answers keep the legacy numbers, so a test can assert a box exactly.
enum MsgStyle {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbAbortRetryIgnore = 2,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbRetryCancel = 5,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton2 = 256,
};
enum MsgResult {
    vbOK = 1,
    vbCancel = 2,
    vbAbort = 3,
    vbRetry = 4,
    vbIgnore = 5,
    vbYes = 6,
    vbNo = 7
};

// Every box, question and file or folder choice goes through this port.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual int msgBox(const QString &text, int style, const QString &title) = 0;
    // Empty when cancelled.
    virtual QString inputBox(const QString &prompt, const QString &title,
                             const QString &defaultText) = 0;
    // `filter` in the legacy form "Picture (*.jpg)|*.jpg"; empty when cancelled.
    virtual QString openFileName(const QString &title, const QString &folder,
                                 const QString &filter) = 0;
    // As openFileName, with filter `selectedFilter` (counted from 1) chosen at the start.
    virtual QString openFileNameFilter(const QString &title, const QString &folder,
                                       const QString &filter, int /*selectedFilter*/)
    {
        return openFileName(title, folder, filter);
    }
    virtual QString saveFileName(const QString &title, const QString &path,
                                 const QString &filter) = 0;
    virtual QString folderName(const QString &title, const QString &start) = 0;
};

// A process without screens: every box goes to the error output, and a question
// is answered No, as nobody is there to ask. The layer with screens registers its
// own at start (platform/ui/QtDialogs.h).
class ConsoleDialogs : public Dialogs {
public:
    int msgBox(const QString &text, int style, const QString &title) override;
    QString inputBox(const QString &, const QString &, const QString &) override { return {}; }
    QString openFileName(const QString &, const QString &, const QString &) override { return {}; }
    QString saveFileName(const QString &, const QString &, const QString &) override { return {}; }
    QString folderName(const QString &, const QString &) override { return {}; }
};

using DialogPort = Port<Dialogs, ConsoleDialogs>;

// A box without a title takes the application's title.
int MsgBox(const QString &text, int style = vbOKOnly, const QString &title = QString());
QString InputBox(const QString &prompt, const QString &title = QString(),
                 const QString &defaultText = QString());

} // namespace platform
