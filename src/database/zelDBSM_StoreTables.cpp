#include "database/zelDBSM_StoreTables.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"

void gpDBSM_RowToRecord(qint16 iFile)
{
    switch (iFile) {
    case tblCommon:
        gpCommon_RowToRecord(iFile);
        break;
    case tblInventory:
        gpInventory_RowToRecord(iFile);
        break;
    case tblUpc:
        gpUpc_RowToRecord(iFile);
        break;
    default:
        break;
    }
}

void gpDBSM_RecordToRow(qint16 iFile)
{
    switch (iFile) {
    case tblCommon:
        gpCommon_RecordToRow(iFile);
        break;
    case tblInventory:
        gpInventory_RecordToRow(iFile);
        break;
    case tblUpc:
        gpUpc_RecordToRow(iFile);
        break;
    default:
        break;
    }
}

QString gfsDBSM_InsertValues(qint16 iFile)
{
    switch (iFile) {
    case tblCommon:
        return gfsCommon_InsertValues();
    case tblInventory:
        return gfsInventory_InsertValues();
    case tblUpc:
        return gfsUpc_InsertValues();
    default:
        return QString();
    }
}

void gpDBSM_KeyValues(qint16 iFile, qint16 iKey)
{
    if (iFile == tblInventory)
        gpInventory_KeyValues(iFile, iKey);
    else if (iFile == tblUpc)
        gpUpc_KeyValues(iFile, iKey);
}

bool gfbDBSM_Open()
{
    return gfbDBSM_OpenTable(tblInventory, false) && gfbDBSM_OpenTable(tblUpc, false);
}

void gpDBSM_Close() {}

void gpDBSM_RegisterStoreTables()
{
    gpDBSM_RegisterDispatch(
        {gpDBSM_KeyValues, gpDBSM_RowToRecord, gpDBSM_RecordToRow, gfsDBSM_InsertValues});
}
