#pragma once
#include "database/TableRecord.h"

// The UPC table: bar codes of the inventory items, "UPC" and the store number.
extern TableRecord gUpcRecord;

void gpUpc_Register(qint16 iFile, const QString &sDataPath, const QVariant &vStore,
                    const QString &sName);
void gpUpc_Create(qint16 iFile);
void gpUpc_RowToRecord(qint16 iFile);
void gpUpc_RecordToRow(qint16 iFile);
void gpUpc_KeyValues(qint16 iFile, qint16 iKey);
QString gfsUpc_InsertValues();
