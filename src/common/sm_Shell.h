#pragma once
#include <QString>

// The process the last help press looked for, and its window.
extern qint32 glHelpProcess;
extern quintptr glHelpWindow;

// The id of the last process named `sName` (case ignored), 0 when none runs.
qint32 glProcess_id(const QString &sName);
// The zero-terminated 8-bit text at an address.
QString gfsAnsi_read(const char *lAddress);
// One step of the window walk: false, and the window kept, when it belongs to the help process.
bool gfbWindow_match(quintptr hWnd, qint32 processId);
// Raises a former instance of this program and ends this one; returns when there is none.
void ActivateFirstInstance();
