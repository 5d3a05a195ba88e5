#include "database/zelDBSM_Inventory.h"
#include "common/Conversions.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"

// The 57 columns in table order, as the CREATE TABLE statement writes them.
TableRecord gInventoryRecord({
    {"SL", "CHAR (8) NOT NULL DEFAULT  ' '", FieldKind::Text, 8},
    {"ItemID", "CHAR (25) NOT NULL DEFAULT  ' '", FieldKind::Text, 25},
    {"Description", "CHAR (30) DEFAULT  ' '", FieldKind::Text, 30},
    {"SubDescription", "CHAR (20) DEFAULT  ' '", FieldKind::Text, 20},
    {"ReorderFlag", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"Serialized", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"HasSold", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"VendorCode", "CHAR (15) DEFAULT  ' '", FieldKind::Text, 15},
    {"Price", "DECIMAL (18,4)", FieldKind::Currency, 0},
    {"Cost", "DECIMAL (18,4)", FieldKind::Currency, 0},
    {"QtyOnHand", "DECIMAL (18,4)", FieldKind::Single, 0},
    {"MinQ", "SMALLINT", FieldKind::Int16, 0},
    {"MaxQ", "INT", FieldKind::Int32, 0},
    {"QTYINPACK", "SMALLINT", FieldKind::Int16, 0},
    {"TaxCode", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"DeptCode", "CHAR (11) DEFAULT  ' '", FieldKind::Text, 11},
    {"NotUsed", "CHAR (1) DEFAULT  ' '", FieldKind::None, 0},
    {"OnOrder", "SMALLINT", FieldKind::Int16, 0},
    {"AvgCost", "DECIMAL (18,4)", FieldKind::Currency, 0},
    {"Notes", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"Kit", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"Poll", "CHAR (1) DEFAULT  ' '", FieldKind::Text, 1},
    {"Scalable", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FoodStamp", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"LinkBreakPack", "CHAR(8) DEFAULT  ' '", FieldKind::Text, 8},
    {"LinkItem", "CHAR(8) DEFAULT  ' '", FieldKind::Text, 8},
    {"LinkStock", "CHAR(8) DEFAULT  ' '", FieldKind::Text, 8},
    {"FlgMatrix", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FlgMatrixItem", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"AllowDiscounts", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FLAGS", "CHAR(20) DEFAULT  ' '", FieldKind::Text, 20},
    {"RegionID", "SMALLINT", FieldKind::Int16, 0},
    {"PriceIncTax", "DECIMAL(18,2)", FieldKind::Currency, 0},
    {"LastSold", "CHAR(8) DEFAULT  ' '", FieldKind::Text, 8},
    {"Status", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"VolumetrcUnit", "CHAR(6) DEFAULT  ' '", FieldKind::Text, 6},
    {"UOM", "CHAR(5) DEFAULT  ' '", FieldKind::Text, 5},
    {"StoreRef", "CHAR(30) DEFAULT  ' '", FieldKind::Text, 30},
    {"LocFront", "CHAR(8) DEFAULT  ' '", FieldKind::Text, 8},
    {"LocBack", "CHAR(8) DEFAULT  ' '", FieldKind::Text, 8},
    {"RecordNum", "INTEGER", FieldKind::Int32, 0},
    {"NonDecrement", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FlgPromoPrice", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FlgQtyPrice", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FlgWebEnable", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FlgPriceLevel", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"FlgBPL", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"NeverOrder", "CHAR(1) DEFAULT  ' '", FieldKind::Text, 1},
    {"SaleCommission", "CHAR(5) DEFAULT  ' '", FieldKind::Text, 5},
    {"Class", "CHAR(2) DEFAULT  ' '", FieldKind::Text, 2},
    {"PriceFactor", "CHAR(6) DEFAULT  ' '", FieldKind::Text, 6},
    {"Price2", "DECIMAL (18,4)", FieldKind::Currency, 0},
    {"UnitsPerUOM", "SMALLINT", FieldKind::Int16, 0},
    {"BPL1", "INTEGER", FieldKind::Int32, 0},
    {"BPL2", "INTEGER", FieldKind::Int32, 0},
    {"PenLiqorUnit", "SMALLINT DEFAULT 0", FieldKind::Int16, 0},
    {"BPL3", "INTEGER DEFAULT 0", FieldKind::Int32, 0},
});

namespace {

const char *const kIndexes[13][2] = {
    {"Create UNIQUE CLUSTERED Index idx_0 On ", "(RecordNum);"},
    {"Create UNIQUE  Index idx_1 On ", "(SL);"},
    {"Create UNIQUE  Index idx_2 On ", "(ItemID);"},
    {"Create UNIQUE  Index idx_3 On ", "(Description, SL);"},
    {"Create UNIQUE  Index idx_4 On ", "(SubDescription, SL);"},
    {"Create UNIQUE Index idx_5 On ", "(VendorCode, SL);"},
    {"Create UNIQUE Index idx_6 On ", "(VendorCode, ItemID);"},
    {"Create Index idx_7 On ", "(VendorCode, Description);"},
    {"Create UNIQUE Index idx_8 On ", "(DeptCode, ItemID);"},
    {"Create Index idx_9 On ", "(PriceFactor, Description);"},
    {"Create UNIQUE Index idx_10 on ", "(LocFront, RecordNum);"},
    {"Create UNIQUE Index idx_11 on ", "(LocBack, RecordNum);"},
    {"Create UNIQUE Index idx_12 on ", "(Poll, RecordNum);"},
};

// Key segments by column number.
const QVector<QVector<int>> kKeys = {
    {40},   {0},     {1},     {2, 0},   {3, 0},   {7, 2},   {7, 0},
    {7, 1}, {15, 1}, {50, 2}, {39, 40}, {38, 40}, {21, 40},
};

const QStringList kSpecialItems = {"~NONSTK", "~ROA",    "~ROAL",   "~DISCNT", "~PAYROL", "~POUT",
                                   "~VCOUPN", "~SCOUPN", "~VDSCNT", "~ROALTX", "~DPOUT"};

QString indexStatements(const QString &T)
{
    QString s;
    for (const auto &index : kIndexes) s += QString(index[0]) + T + ' ' + index[1];
    return s;
}

const QString &T()
{
    return gTables[tblInventory].sTableName;
}

} // namespace

void gpInventory_Register(qint16 iFile, const QString &sDataPath, const QVariant &vStore,
                          const QString &sName)
{
    TableDescriptor &t = gTables[iFile];
    if (sName.isEmpty()) {
        t.sID = "INVENTRY";
        t.sTableName = "invt" + vStore.toString();
        t.sTitle = "Inventory";
        t.sFileName = sDataPath + "\\" + t.sTableName + ".ZEL";
    } else {
        t.sID = t.sTableName = t.sTitle = sName;
    }
    t.bOpen = false;
    t.iReserved1 = 0;
    const DbAction action; // a locked or damaged database is told once, not per step
    const QString table = t.sTableName;
    if (!gfbDBSM_TableExists(table)) {
        gpInventory_Create(iFile);
        gfbDBSM_CreateTable(iFile);
        return;
    }
    QString counted = table;
    if (glDBSM_Count(iFile, counted) == 0)
        return;
    // Each step is harmless when done already: the statement fails and is ignored.
    glDBSM_Execute("ALTER TABLE " + table + " ALTER COLUMN QtyOnHand Decimal(18,4)");
    gfbDBSM_AddColumn(iFile, "PenLiqorUnit", "SMALLINT ");
    gfbDBSM_AddColumn(iFile, "BPL3", "INTEGER ");
    if (gfbDBSM_RenameColumn(table, "Flg2", "NeverOrder"))
        glDBSM_Execute("UPDATE " + table + " SET NeverOrder = ' '");
    if (!gfbDBSM_OpenTable(iFile, false))
        return;
    if (gfsDBSM_FieldName(iFile, 50) == "Spare1") {
        glDBSM_Execute("UPDATE " + table + " SET Spare1 = PriceFactor where PriceFactor > ' '");
        if (gfbDBSM_RenameColumn(table, "PriceFactor", "NotUsed"))
            gfbDBSM_RenameColumn(table, "Spare1", "PriceFactor");
    }
    if (gfvDBSM_Field(iFile, 1).toString().size() != 15)
        return;
    for (int i = 0; i <= 12; ++i)
        glDBSM_Execute("Drop index " + table + ".idx_" + QString::number(i));
    glDBSM_Execute("ALTER TABLE " + table + " ALTER COLUMN itemID CHAR(25)");
    t.sIndexSQL = indexStatements(table);
    for (const QString &piece : t.sIndexSQL.split(';')) {
        if (!piece.trimmed().isEmpty())
            glDBSM_Execute(piece.trimmed());
    }
    gfbDBSM_OpenTable(iFile, false);
}

void gpInventory_Create(qint16 iFile)
{
    TableDescriptor &t = gTables[iFile];
    t.sCreateSQL = gInventoryRecord.createStatement(t.sTableName);
    t.sIndexSQL = indexStatements(t.sTableName);
}

void gpInventory_RowToRecord(qint16 iFile)
{
    gInventoryRecord.fromRow(iFile);
    if (gInventoryRecord.number("QTYINPACK") == 0)
        gInventoryRecord.setNumber("QTYINPACK", 1);
}

void gpInventory_RecordToRow(qint16 iFile)
{
    gInventoryRecord.toRow(iFile);
}

void gpInventory_KeyValues(qint16 iFile, qint16 iKey)
{
    if (iKey < invKeyRecordNum || iKey > invKeyPoll)
        return;
    if (iKey == invKeyItemID || iKey == invKeyVendorItemID || iKey == invKeyDeptItemID)
        gInventoryRecord.setText("ItemID", conv::LTrim(gInventoryRecord.text("ItemID")));
    QList<std::pair<qint16, QVariant>> segments;
    for (int column : kKeys[iKey]) {
        const ColumnSpec &c = gInventoryRecord.columns()[column];
        // RecordNum goes as a number, every other segment as the field's text.
        segments << std::pair<qint16, QVariant>(
            static_cast<qint16>(column),
            c.kind == FieldKind::Text
                ? gInventoryRecord.value(column)
                : QVariant(static_cast<qint32>(gInventoryRecord.value(column).toInt())));
    }
    gpDBSM_SetKey(iFile, static_cast<qint16>(segments.size()), segments);
}

QString gfsInventory_InsertValues()
{
    return gInventoryRecord.insertValues();
}

bool gfbInventory_ByRecordNum(qint32 lRecordNum)
{
    QString sql = "SELECT * from " + T() + " WHERE recordnum = " + QString::number(lRecordNum);
    if (!gfbDBSM_Select(sql, tblInventory, false))
        return false;
    gpInventory_RowToRecord(tblInventory);
    return true;
}

qint32 glInventory_BySL(const QString &sSL, bool bSpecial)
{
    const SqlRead sql = "SELECT * from " + T() + " WHERE SL = " + sqlValue(sSL);
    if (gfbDBSM_Select(sql, tblInventory, false)) {
        gpInventory_RowToRecord(tblInventory);
        return static_cast<qint32>(gInventoryRecord.number("RecordNum"));
    }
    if (!bSpecial)
        return 0;
    return gfbInventory_IsSpecialSL(sSL) || conv::Trim(sSL) == "0" ? 0 : 999999;
}

bool gfbInventory_IsSpecialSL(const QString &sSL)
{
    return kSpecialItems.contains(conv::Trim(sSL));
}

void gpInventory_Clear()
{
    gInventoryRecord.clear();
    gInventoryRecord.setNumber("QTYINPACK", 1);
    gInventoryRecord.setText("AllowDiscounts", "Y");
    gInventoryRecord.setText("StoreRef", "0");
}
