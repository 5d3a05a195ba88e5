#include "database/zelDBSM_Upc.h"
#include "database/ZelDBSM_MSDE.h"

TableRecord gUpcRecord({
    {"SL", "CHAR (8) NOT NULL", FieldKind::Text, 8},
    {"UPC", "CHAR (15) NOT NULL", FieldKind::Text, 15},
    {"LABEL", "CHAR (30)", FieldKind::Text, 30},
    {"POLL", "CHAR (1)", FieldKind::Text, 1},
    {"InvUID", "INTEGER", FieldKind::Int32, 0},
});

void gpUpc_Register(qint16 iFile, const QString &, const QVariant &vStore, const QString &sName)
{
    TableDescriptor &t = gTables[iFile];
    t.sID = sName.isEmpty() ? QString("UPC") : sName;
    t.sTableName = "UPC" + vStore.toString();
    t.sTitle = "UPC Lookup";
    t.sFileName.clear();
    t.bOpen = false;
    t.iReserved1 = 0;
    if (gfbDBSM_TableExists(t.sTableName))
        return;
    gpUpc_Create(iFile);
    gfbDBSM_CreateTable(iFile);
}

void gpUpc_Create(qint16 iFile)
{
    TableDescriptor &t = gTables[iFile];
    const QString T = t.sTableName;
    t.sCreateSQL = "Create Table " + T + " (SL CHAR (8) NOT NULL, UPC CHAR (15) NOT NULL, " +
                   "LABEL CHAR (30), POLL CHAR (1),InvUID INTEGER);";
    t.sIndexSQL = "Create Index idx_0 On " + T + " (SL);" +
                  "Create UNIQUE  CLUSTERED Index idx_1 On " + T + " (UPC, SL);" +
                  "Create UNIQUE Index idx_2 On " + T + " (UPC);" + "Create Index idx_3 On " + T +
                  " (Poll);" + "Create Index idx_4 On " + T + " (InvUID);";
}

void gpUpc_RowToRecord(qint16 iFile)
{
    gUpcRecord.fromRow(iFile);
}

void gpUpc_RecordToRow(qint16 iFile)
{
    gUpcRecord.toRow(iFile);
}

void gpUpc_KeyValues(qint16 iFile, qint16 iKey)
{
    const TableRecord &r = gUpcRecord;
    switch (iKey) {
    case 0:
        gpDBSM_SetKey(iFile, 1, {{0, r.text("SL")}});
        break;
    case 1:
        gpDBSM_SetKey(iFile, 2, {{0, r.text("SL")}, {1, r.text("UPC")}});
        break;
    case 2:
        gpDBSM_SetKey(iFile, 1, {{1, r.text("UPC")}});
        break;
    case 3:
        gpDBSM_SetKey(iFile, 1, {{3, r.text("POLL")}});
        break;
    case 4:
        gpDBSM_SetKey(iFile, 1, {{4, static_cast<qint32>(r.number("InvUID"))}});
        break;
    default:
        break;
    }
}

QString gfsUpc_InsertValues()
{
    return gUpcRecord.insertValues();
}
