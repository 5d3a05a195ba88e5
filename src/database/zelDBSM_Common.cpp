#include "database/zelDBSM_Common.h"
#include "database/ZelDBSM_MSDE.h"

// The 98 columns in table order. The text of a column in the CREATE TABLE
// statement is its name, a blank and the definition.
TableRecord gCommonRecord({
    {"ProgramVersion", "CHAR (10)", FieldKind::Text, 10},
    {"DupID", "CHAR (1)", FieldKind::Text, 1},
    {"Cname", "CHAR (40)", FieldKind::Text, 40},
    {"WebAddress", "CHAR (40)", FieldKind::Text, 40},
    {"Ccity", "CHAR (25)", FieldKind::Text, 25},
    {"Cstate", "CHAR (3)", FieldKind::Text, 3},
    {"Czip", "CHAR (10)", FieldKind::Text, 10},
    {"CPhone", "CHAR (14)", FieldKind::Text, 14},
    {"Cfax", "CHAR (14)", FieldKind::Text, 14},
    {"MandatoryName", "CHAR (1)", FieldKind::Text, 1},
    {"RequestedTicket", "INTEGER", FieldKind::Int32, 0},
    {"MaxStations", "SMALLINT", FieldKind::Int16, 0},
    {"USEurope", "CHAR (1)", FieldKind::Text, 1},
    {"Cups", "CHAR (11)", FieldKind::Text, 11},
    {"ShippingSL1", "CHAR (9)", FieldKind::Text, 8},
    {"ShippingSL2", "CHAR (9)", FieldKind::Text, 8},
    {"ShippingSL3", "CHAR (9)", FieldKind::Text, 8},
    {"ExchangeRate", "REAL", FieldKind::Single, 0},
    {"Back_Up", "CHAR (1)", FieldKind::Text, 1},
    {"PackMode", "CHAR (3)", FieldKind::Text, 3},
    {"Security", "CHAR (1)", FieldKind::Text, 1},
    {"PONumber", "INTEGER", FieldKind::Int32, 0},
    {"StoreNumber", "SMALLINT", FieldKind::Int16, 0},
    {"Accounting", "CHAR (2)", FieldKind::Text, 2},
    {"AutoPhoneFormat", "CHAR (1)", FieldKind::Text, 1},
    {"AutoProperNames", "CHAR (1)", FieldKind::Text, 1},
    {"OrderOfLookup", "CHAR (1)", FieldKind::Text, 1},
    {"DefaultARCode", "CHAR (1)", FieldKind::Text, 1},
    {"D2", "CHAR (9)", FieldKind::Text, 9},
    {"MultiStore", "CHAR (1)", FieldKind::Text, 1},
    {"D5", "CHAR (2)", FieldKind::Text, 2},
    {"TaxRate1", "REAL", FieldKind::Single, 0},
    {"TaxRate2", "REAL", FieldKind::Single, 0},
    {"TaxRate3", "REAL", FieldKind::Single, 0},
    {"TaxRate4", "REAL", FieldKind::Single, 0},
    {"TaxRate5", "REAL", FieldKind::Single, 0},
    {"BreakPoint", "DECIMAL", FieldKind::Currency, 0},
    {"TaxRateAbove", "REAL", FieldKind::Single, 0},
    {"TaxRate2nd", "REAL", FieldKind::Single, 0},
    {"TaxCity", "CHAR (1)", FieldKind::Text, 1},
    {"TaxRound", "CHAR (1)", FieldKind::Text, 1},
    {"TaxLineTot", "CHAR (1)", FieldKind::Text, 1},
    {"NoTaxOnFirst", "decimal", FieldKind::Currency, 0},
    {"TaxAdjust", "DECIMAL", FieldKind::Currency, 0},
    {"PrTagTax", "CHAR (1)", FieldKind::Text, 1},
    {"CreditService", "CHAR (1)", FieldKind::Text, 1},
    {"CreditUserID", "CHAR (20)", FieldKind::Text, 20},
    {"CreditPwd", "CHAR (20)", FieldKind::Text, 20},
    {"AccessAcount", "CHAR (1)", FieldKind::Text, 1},
    {"AccessInventory", "CHAR (1)", FieldKind::Text, 1},
    {"AccessConfig", "CHAR (1)", FieldKind::Text, 1},
    {"AccessOrder", "CHAR (1)", FieldKind::Text, 1},
    {"AccessVoid", "CHAR (1)", FieldKind::Text, 1},
    {"AccessReports", "CHAR (1)", FieldKind::Text, 1},
    {"AccessMargin", "CHAR (1)", FieldKind::Text, 1},
    {"AccessCost", "CHAR (1)", FieldKind::Text, 1},
    {"AccessQty", "CHAR (1)", FieldKind::Text, 1},
    {"CRLimmitActive", "CHAR (1)", FieldKind::Text, 1},
    {"SlipPrint", "CHAR (6)", FieldKind::Text, 6},
    {"UpperCaseItemID", "CHAR (1)", FieldKind::Text, 1},
    {"UpperCaseSL", "CHAR (1)", FieldKind::Text, 1},
    {"POExportType", "CHAR (1)", FieldKind::Text, 1},
    {"NamePreFill", "CHAR (1)", FieldKind::Text, 1},
    {"CheckStatCode", "CHAR (2)", FieldKind::Text, 2},
    {"CheckCompany", "CHAR (3)", FieldKind::Text, 3},
    {"FullBack", "CHAR (1)", FieldKind::Text, 1},
    {"StaFullBack", "SMALLINT", FieldKind::Int16, 0},
    {"FullBackTime", "SMALLINT", FieldKind::Int16, 0},
    {"TaxSearch2nd", "CHAR (1)", FieldKind::Text, 1},
    {"TaxLabel2nd", "CHAR (3)", FieldKind::Text, 3},
    {"MerchantID", "CHAR (14)", FieldKind::Text, 14},
    {"PartnerID", "CHAR (14)", FieldKind::Text, 14},
    {"ReprintMessage", "CHAR (15)", FieldKind::Text, 15},
    {"NickelAdjust", "CHAR (1)", FieldKind::Text, 1},
    {"TaxRate6", "REAL", FieldKind::Single, 0},
    {"StartupFee", "DECIMAL", FieldKind::Currency, 0},
    {"CancelFee", "DECIMAL", FieldKind::Currency, 0},
    {"MinPercent", "DECIMAL", FieldKind::Currency, 0},
    {"MinDollar", "DECIMAL", FieldKind::Currency, 0},
    {"PullLayaway", "CHAR (1)", FieldKind::Text, 1},
    {"NewQty", "CHAR (1)", FieldKind::Text, 1},
    {"TaxCodeRateAbove", "CHAR (1)", FieldKind::Text, 1},
    {"BackTime", "CHAR (1)", FieldKind::Text, 1},
    {"WeeklyNum", "SMALLINT", FieldKind::Int16, 0},
    {"DailyNum", "SMALLINT", FieldKind::Int16, 0},
    {"MinFreeSpace", "SMALLINT", FieldKind::Int16, 0},
    {"POPrintPM", "CHAR (1)", FieldKind::Text, 1},
    {"MinPriceWarn", "CHAR (1)", FieldKind::Text, 1},
    {"PriceMethod", "CHAR (1)", FieldKind::Text, 1},
    {"DMargin", "REAL", FieldKind::Single, 0},
    {"ICV", "CHAR (1)", FieldKind::Text, 1},
    {"WinPOFlag", "CHAR (1)", FieldKind::Text, 1},
    {"AllowChangeDiscount", "CHAR (1)", FieldKind::Text, 1},
    {"CCountry", "CHAR (20)", FieldKind::Text, 20},
    {"IncrementItems", " CHAR (1)", FieldKind::Text, 1},
    {"CountryID", "SMALLINT", FieldKind::Int16, 0},
    {"Email", "CHAR (35)", FieldKind::Text, 35},
    {"Spare", "CHAR (65)", FieldKind::Text, 65},
});

void gpCommon_Register(qint16 iFile, const QString &sDataPath, const QVariant &, const QString &)
{
    TableDescriptor &t = gTables[iFile];
    t.sID = "COMMON";
    t.sTableName = "COMMON";
    t.sTitle = "Common";
    t.sFileName = sDataPath + "\\COMMON.ZEL";
    t.bOpen = false;
    t.iReserved1 = 0;
    if (gfbDBSM_TableExists(t.sTableName))
        return;
    gpCommon_Create(iFile);
    gfbDBSM_CreateTable(iFile);
}

void gpCommon_Create(qint16 iFile)
{
    TableDescriptor &t = gTables[iFile];
    t.sCreateSQL = gCommonRecord.createStatement(t.sTableName);
    t.sIndexSQL = "Create UNIQUE Index idx_0 On " + t.sTableName + " (DupID);";
}

void gpCommon_RowToRecord(qint16 iFile)
{
    gCommonRecord.fromRow(iFile);
}

void gpCommon_RecordToRow(qint16 iFile)
{
    gCommonRecord.toRow(iFile);
}

QString gfsCommon_InsertValues()
{
    return gCommonRecord.insertValues();
}
