#include "database/zelDBSM_Upc.h"
#include "common/Conversions.h"
#include "database/TableNames.h"
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
    case upcKeySL:
        gpDBSM_SetKey(iFile, 1, {{0, r.text("SL")}});
        break;
    case upcKeySLCode:
        gpDBSM_SetKey(iFile, 2, {{0, r.text("SL")}, {1, r.text("UPC")}});
        break;
    case upcKeyCode:
        gpDBSM_SetKey(iFile, 1, {{1, r.text("UPC")}});
        break;
    case upcKeyPoll:
        gpDBSM_SetKey(iFile, 1, {{3, r.text("POLL")}});
        break;
    case upcKeyInvUID:
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

namespace {

// An S/L as the text columns compare it: case and trailing blanks ignored.
QString comparedSL(const QString &sl)
{
    qsizetype n = sl.size();
    while (n > 0 && sl[n - 1] == ' ') --n;
    return sl.left(n).normalized(QString::NormalizationForm_D).toCaseFolded();
}

} // namespace

bool gfbUpc_BarCodes(const QStringList &sls, QHash<QString, QString> &barCodes)
{
    barCodes.clear();
    QStringList values;
    for (const QString &sl : sls) {
        barCodes.insert(sl, QString());
        if (!sqlBindsAsNull(sl) && !values.contains(sl))
            values << sl;
    }
    if (values.isEmpty())
        return true;
    const QString order = gfsDBSM_RowOrderColumn();
    const SqlRead sql = "SELECT SL, UPC FROM " + gTables[tblUpc].sTableName + " WHERE SL IN (" +
                        sqlValueList(values, ",") + ") ORDER BY SL" +
                        (order.isEmpty() ? QString(",UPC") : ',' + order);
    QStringList names;
    QVector<QVector<QVariant>> rows;
    if (!gfbDBSM_Rows(tblUpc, sql, names, rows))
        return false;
    QHash<QString, QString> first; // by the compared S/L
    for (const QVector<QVariant> &row : rows) {
        const QString sl = comparedSL(row.value(0).toString());
        if (first.contains(sl))
            continue;
        const QString upc = row.value(1).toString();
        // Values that begin with "D" or "I" link departments or items and do not show.
        first.insert(sl, upc.startsWith('D') || upc.startsWith('I') ? QString() : conv::Trim(upc));
    }
    for (auto i = barCodes.begin(); i != barCodes.end(); ++i)
        i.value() = first.value(comparedSL(i.key()));
    return true;
}
