#pragma once
#include "database/DbEngine.h"

// Shared by the engine's own source files only.

// Two lines in PVSW.log and the box that points the user there.
void mpDBSM_ReportFailure(const QString &statement, const DbError &error);
// The error that the last failed table creation left pending.
DbError mpDBSM_LastCreateError();
