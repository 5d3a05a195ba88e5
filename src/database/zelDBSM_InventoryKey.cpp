#include "database/zelDBSM_InventoryKey.h"
#include "common/Conversions.h"
#include "common/zelFormats.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include <algorithm>

bool gfbInventory_ByHotKey(const QString &sItem, const QString &sIdSelect)
{
    QString sql;
    if (sIdSelect == "No") {
        gInventoryRecord.setText("SL", gfsSL_toStored(gfsSL_normalize(sItem)));
        return gfbDBSM_Record(tblInventory, opEqual, invKeySL, false, false, sql);
    }
    if (sIdSelect == "Yes") {
        gInventoryRecord.setText("ItemID", conv::RTrim(sItem));
        return gfbDBSM_Record(tblInventory, opEqual, invKeyItemID, false, false, sql);
    }
    return false;
}

bool gfbInventory_Statuses(const QStringList &values, bool bById,
                           QList<std::pair<QString, QString>> &rows)
{
    rows.clear();
    if (values.isEmpty())
        return true;
    QStringList codes = values;
    if (bById)
        std::transform(codes.begin(), codes.end(), codes.begin(), conv::Trim);
    // ltrim(ItemID), as the reads by Item ID compare it.
    const SqlRead sql = "SELECT SL, ItemID, Status FROM " + gTables[tblInventory].sTableName +
                        " WHERE " + (bById ? "ltrim(ItemID)" : "SL") + " IN (" +
                        sqlValueList(codes, ", ") + ")";
    if (!gfbDBSM_Select(sql, tblInventory, false))
        return !gfbDBSM_ActionFailed();
    Recordset &rs = gRecordsets[tblInventory];
    const int key = rs.fieldIndex(bById ? "ItemID" : "SL"), status = rs.fieldIndex("Status");
    for (rs.MoveFirst(); !rs.atEOF(); rs.MoveNext())
        rows << std::pair(rs.value(key).toString(), rs.value(status).toString());
    return true;
}
