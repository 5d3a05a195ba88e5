#include "common/Conversions.h"
#include "database/TableNames.h"
#include "lookup/model/LookupInternal.h"

using lookup_detail::read;

// The list in bar code order: each row is the item of the next bar code.
bool InventoryLookup::upcSearch()
{
    const QString table = gTables[tblUpc].sTableName;
    if (!gfbDBSM_HasRows(tblUpc)) { // the count's only question: is it 0
        say("No UPC Codes in UPC File");
        return false;
    }
    const QString value = conv::Trim(gsSearchValue).toUpper();
    SqlRead sql;
    if (value.isEmpty()) {
        gbAtTop = true;
        sql = "SELECT TOP 1 * FROM " + table + " WHERE ltrim(upc) > ' ' order by UPC";
    } else {
        gUpcRecord.setText("UPC", value);
        sql = "SELECT TOP 1 * FROM " + table + " WHERE LEFT(upc," + QString::number(value.size()) +
              ")=" + sqlValue(value) + " order by UPC";
    }
    if (gfbDBSM_Select(sql, tblUpc, false)) {
        gpUpc_RowToRecord(tblUpc);
    } else {
        gUpcRecord.setText("UPC", value);
        if (!read(tblUpc, opLessEqual, upcKeyCode))
            read(tblUpc, opFirst, upcKeyCode);
    }
    for (int row = 1; row < giPageRows; ++row) {
        if (row > 1) {
            sql = "SELECT TOP 1 * FROM " + table + " WHERE upc > " +
                  sqlValue(gUpcRecord.text("UPC")) + " order by UPC";
            if (!gfbDBSM_Select(sql, tblUpc, false)) {
                for (; row < giPageRows; ++row) clearRow(row);
                gbAtEnd = true;
                break;
            }
            gpUpc_RowToRecord(tblUpc);
        }
        const QString upc = gUpcRecord.text("UPC");
        if (upc.startsWith('D') || upc.startsWith('I')) {
            clearRow(row);
            continue;
        }
        gInventoryRecord.setNumber("RecordNum", gUpcRecord.number("InvUID"));
        if (!read(tblInventory, opEqual, invKeyRecordNum) || isDeleted()) {
            clearRow(row);
            continue;
        }
        fillRow(row);
    }
    setCursor(1);
    gsCursorEnd = "Bottom";
    return true;
}
