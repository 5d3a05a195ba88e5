#pragma once
#include "database/TableRecord.h"

// The inventory table, "invt" and the store number: 57 columns, keys 0 to 12.
extern TableRecord gInventoryRecord;

// Fills the descriptor, creates a missing table and brings an old one up to date.
void gpInventory_Register(qint16 iFile, const QString &sDataPath, const QVariant &vStore,
                          const QString &sName);
void gpInventory_Create(qint16 iFile);
void gpInventory_RowToRecord(qint16 iFile);
void gpInventory_RecordToRow(qint16 iFile);
void gpInventory_KeyValues(qint16 iFile, qint16 iKey);
QString gfsInventory_InsertValues();

// Reads the row with that record number into the record; true when found.
bool gfbInventory_ByRecordNum(qint32 lRecordNum);
// The record number of the item with that stock locater (the row goes into the
// record); 0 when none, or with bSpecial 999999 unless the code is special or "0".
qint32 glInventory_BySL(const QString &sSL, bool bSpecial);
// A stock locater such as "~NONSTK" that names an item needing no inventory row.
bool gfbInventory_IsSpecialSL(const QString &sSL);
// Empties the record: blanks and zeros, QTYINPACK 1, AllowDiscounts "Y", StoreRef "0".
void gpInventory_Clear();
