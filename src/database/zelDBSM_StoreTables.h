#pragma once
#include <QString>

// The application's tables, by number (TableNames.h): 0 COMMON, 1 inventory,
// 2 UPC. The engine reaches their modules through these routines.
void gpDBSM_RowToRecord(qint16 iFile);
void gpDBSM_RecordToRow(qint16 iFile);
QString gfsDBSM_InsertValues(qint16 iFile);
void gpDBSM_KeyValues(qint16 iFile, qint16 iKey);
// Opens tables 1 and 2; false at the first that fails.
bool gfbDBSM_Open();
// A hook that has nothing to close in this application.
void gpDBSM_Close();
// Hands the routines above to the engine.
void gpDBSM_RegisterStoreTables();
