#include "shell/hkeyDBSM_Interface.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"

void gpDBSM_RowToRecord(qint16 iFile)
{
    switch (iFile) {
    case 0:
        gpCommon_RowToRecord(iFile);
        break;
    case 1:
        gpInventory_RowToRecord(iFile);
        break;
    case 2:
        gpUpc_RowToRecord(iFile);
        break;
    default:
        break;
    }
}

void gpDBSM_RecordToRow(qint16 iFile)
{
    switch (iFile) {
    case 0:
        gpCommon_RecordToRow(iFile);
        break;
    case 1:
        gpInventory_RecordToRow(iFile);
        break;
    case 2:
        gpUpc_RecordToRow(iFile);
        break;
    default:
        break;
    }
}

QString gfsDBSM_InsertValues(qint16 iFile)
{
    switch (iFile) {
    case 0:
        return gfsCommon_InsertValues();
    case 1:
        return gfsInventory_InsertValues();
    case 2:
        return gfsUpc_InsertValues();
    default:
        return QString();
    }
}

void gpDBSM_KeyValues(qint16 iFile, qint16 iKey)
{
    if (iFile == 1)
        gpInventory_KeyValues(iFile, iKey);
    else if (iFile == 2)
        gpUpc_KeyValues(iFile, iKey);
}

bool gfbDBSM_Open()
{
    return gfbDBSM_OpenTable(1, false) && gfbDBSM_OpenTable(2, false);
}

void gpDBSM_Close() {}

void gpDBSM_RegisterTables()
{
    gpDBSM_RegisterDispatch(
        {gpDBSM_KeyValues, gpDBSM_RowToRecord, gpDBSM_RecordToRow, gfsDBSM_InsertValues});
}
