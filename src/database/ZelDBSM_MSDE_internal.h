#pragma once
#include "database/DbEngine.h"

class QSqlQuery;

// Shared by the engine's own source files only.

// Whether a statement may go to the database now: false with `error` set after
// a fault of the current action.
bool mpDBSM_MayRun(DbError &error);
// Runs one statement on the data connection (a prepared one when `sql` is null);
// false with `error` set when it fails. After a fault of the current action it
// fails at once, without asking the database.
bool mpDBSM_Run(QSqlQuery &query, const QString *sql, DbError &error);
// A failure that is no refused statement: two lines in PVSW.log, and the box that
// tells the user, once per action.
void mpDBSM_Fault(const QString &statement, const DbError &error);
// A number that stays the same while nothing may have changed the tables under
// the action under way: it changes when an action starts or ends and at every
// statement that writes. 0 outside an action.
quint64 mpDBSM_ReadSerial();
// What a statement meets when there is no open data connection.
DbError mpDBSM_NotOpen();
// The error that the last failed table creation left pending.
DbError mpDBSM_LastCreateError();
