#include "database/zelDBSM_InventoryBulk.h"
#include "common/Conversions.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include <QSet>
#include <algorithm>

namespace {

// Small enough for every engine's limit of parameters; each batch has the same
// count, so one prepared statement serves them all.
constexpr qsizetype kBatch = 500;

// Runs `select` + " IN (...)" + `tail` over `values` in batches and hands each row
// found to `take`. The values are bound: a code is only ever a value.
template <class F>
bool readInBatches(DbTable table, const QString &select, const QStringList &values,
                   const QString &tail, F take)
{
    QStringList distinct;
    QSet<QString> seen;
    for (const QString &v : values) {
        if (!conv::Trim(v).isEmpty() && !seen.contains(gfsInventory_BulkKey(v))) {
            seen.insert(gfsInventory_BulkKey(v));
            distinct << v;
        }
    }
    for (qsizetype first = 0; first < distinct.size(); first += kBatch) {
        QStringList batch;
        for (qsizetype i = first; i < first + kBatch; ++i)
            batch << distinct[std::min(i, distinct.size() - 1)];
        const SqlRead sql = select + " IN (" + sqlValueList(batch, ", ") + ")" + tail;
        if (!gfbDBSM_Select(sql, table, false)) {
            if (gfbDBSM_ActionFailed())
                return false;
            continue;
        }
        Recordset &rs = gRecordsets[table];
        for (rs.MoveFirst(); !rs.atEOF(); rs.MoveNext()) take(rs);
    }
    return true;
}

QString text(const Recordset &rs, const char *column)
{
    return conv::Trim(rs.value(rs.fieldIndex(column)).toString());
}

} // namespace

QString gfsInventory_BulkKey(const QString &code)
{
    return conv::Trim(code).toUpper();
}

bool gfbInventory_ReadMany(const QStringList &codes, bool bById,
                           QHash<QString, InventoryBulkItem> &found)
{
    // ltrim(ItemID), as the reads by Item ID compare it.
    const QString select = "SELECT SL, ItemID, Description FROM " +
                           gTables[tblInventory].sTableName + " WHERE " +
                           (bById ? "ltrim(ItemID)" : "SL");
    QStringList values = codes;
    if (bById) // blanks around an Item ID count for nothing, as in the keyed reads
        std::transform(values.begin(), values.end(), values.begin(), conv::Trim);
    return readInBatches(tblInventory, select, values, QString(), [&](const Recordset &rs) {
        const InventoryBulkItem item{rs.value(rs.fieldIndex("SL")).toString(), text(rs, "ItemID"),
                                     text(rs, "Description")};
        found.insert(gfsInventory_BulkKey(bById ? item.itemId : item.sl), item);
    });
}

bool gfbUpc_CodesOfItems(const QStringList &sls, QHash<QString, QStringList> &codes)
{
    const QString select = "SELECT SL, UPC FROM " + gTables[tblUpc].sTableName + " WHERE SL";
    return readInBatches(tblUpc, select, sls, " ORDER BY SL, UPC", [&](const Recordset &rs) {
        codes[gfsInventory_BulkKey(text(rs, "SL"))] << text(rs, "UPC");
    });
}

bool gfbUpc_ItemsOfCodes(const QStringList &codes, QHash<QString, QString> &sls)
{
    const QString select = "SELECT SL, UPC FROM " + gTables[tblUpc].sTableName + " WHERE UPC";
    return readInBatches(tblUpc, select, codes, QString(), [&](const Recordset &rs) {
        const QString code = gfsInventory_BulkKey(text(rs, "UPC"));
        if (!sls.contains(code)) // as a keyed read, the first item of a code shared by two
            sls.insert(code, rs.value(rs.fieldIndex("SL")).toString());
    });
}
