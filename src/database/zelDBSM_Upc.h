#pragma once
#include "database/TableRecord.h"
#include <QHash>
#include <QStringList>

// The UPC table: bar codes of the inventory items, "UPC" and the store number.
extern TableRecord gUpcRecord;

void gpUpc_Register(qint16 iFile, const QString &sDataPath, const QVariant &vStore,
                    const QString &sName);
void gpUpc_Create(qint16 iFile);
void gpUpc_RowToRecord(qint16 iFile);
void gpUpc_RecordToRow(qint16 iFile);
void gpUpc_KeyValues(qint16 iFile, qint16 iKey);
QString gfsUpc_InsertValues();

// The bar code the lookup shows for each S/L of `sls` (stored form), read in one
// statement: the trimmed UPC of the S/L's first row on key 0 (the first added),
// or "" when it has none or that row links a department or item ("D", "I"), as
// the read by "=" on key 0 gives it. Keyed by the S/Ls as given. False when the
// database could not be read, which the DbAction under way tells.
bool gfbUpc_BarCodes(const QStringList &sls, QHash<QString, QString> &barCodes);
