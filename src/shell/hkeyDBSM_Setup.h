#pragma once
#include <QString>

// Connects, registers the three tables and reads the store from COMMON; false
// means the application must end.
bool gfbDBSM_Setup();

// The file of the database of the workstation's own, in the data folder.
QString gfsDBSM_OwnFile();
// What became of a database of the workstation's own.
enum class OwnDatabase { Created, Existing, Failed };
// Makes the embedded database in the data folder, with the application's tables
// and one COMMON row for the store, and names it in the settings store. A
// database already there is used as it is. `sMessage` says, for the user, why
// it failed or which store the database already holds; a failure leaves the
// settings as they were.
OwnDatabase gfDBSM_CreateOwn(int iStore, const QString &sName, QString &sMessage);
// After a failed set-up: the settings name the database of the first-run screen and it has no
// store yet, as when that screen's work was cut off.
bool gfbDBSM_OwnUnfinished();
