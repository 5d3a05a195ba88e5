#include "common/Conversions.h"
#include "common/zelFormats.h"
#include "database/TableNames.h"
#include "lookup/model/LookupInternal.h"
#include <QCoreApplication>

namespace {

QChar firstChar(const QString &s)
{
    const QString t = conv::Trim(s).toUpper();
    return t.isEmpty() ? QChar(' ') : t[0];
}

bool readByColumn(qint16 op, int field)
{
    QString sql;
    if (!gfbDBSM_Record(tblInventory, op, static_cast<qint16>(field), true, false, sql))
        return false;
    gpInventory_RowToRecord(tblInventory);
    return true;
}

} // namespace

LookupPage InventoryLookup::type(const QString &text)
{
    gbItemIdSearch = false;
    if (text == gsSearchValue)
        return page();
    QString value = text;
    if (giSortKey == invKeySL) {
        value = gfsSL_toStored(gfsSL_normalize(text));
    } else if (giSortKey == invKeyItemID && !gbUpcSort) {
        value = gfsItemID_key(text, gbItemIdLeft);
        gbItemIdSearch = true;
    }
    if (conv::Trim(value).isEmpty())
        value.clear();
    if (!gbWildcard && giScanField < 0)
        return search(value);
    gsSearchValue = value;
    LookupPage p = page();
    p.askWildcard = gsSortFieldName == "QtyOnHand" || gsSortFieldName.startsWith("Price");
    return p;
}

LookupPage InventoryLookup::search(const QString &typed)
{
    gsSearchValue = typed;
    const bool found = runSearch();
    LookupPage p = page();
    p.ok = found;
    return p;
}

LookupPage InventoryLookup::clear(bool hadValue)
{
    reload();
    // The empty value takes the list back to its first record; the bar code
    // order reads nothing before the first character unless a value is cleared.
    gsSearchValue.clear();
    if (!gbWildcard && giScanField < 0 && (!gbUpcSort || hadValue))
        runSearch();
    return page();
}

int InventoryLookup::findOnPage(const QString &value) const
{
    const QString wanted = conv::Trim(value).toUpper();
    for (int row = 1; row < giPageRows; ++row) {
        const QString cell = conv::LTrim(gsPageCells[row].value(sortColumn())).toUpper();
        if (!cell.isEmpty() && cell.startsWith(wanted))
            return row;
    }
    return 0;
}

// Puts the search value into the key fields, and into the current row for the
// reads by column that follow when the key finds nothing.
void InventoryLookup::fillSearchKey(const QString &value)
{
    static const int slField = gfiInventoryField("SL"), idField = gfiInventoryField("ItemID");
    TableRecord &r = gInventoryRecord;
    const QString upper = value.toUpper();
    auto rowFields = [&] {
        gpDBSM_SetField(tblInventory, giSortField, upper);
        gpDBSM_SetField(tblInventory, slField, "      0 ");
        gpDBSM_SetField(tblInventory, idField, QString(20, ' '));
    };
    auto textKey = [&](const char *field) {
        r.clear();
        r.setText("SL", "      0 ");
        r.setText(field, upper);
        rowFields();
    };
    switch (giSortKey) {
    case invKeySL: {
        QString sl = value;
        if (sl.indexOf('.') >= 1)
            sl = sl.remove('.').rightJustified(8, ' ');
        r.setText("SL", sl);
        gpDBSM_SetField(tblInventory, slField, sl);
        break;
    }
    case invKeyItemID:
        r.setText("ItemID", value);
        gpDBSM_SetField(tblInventory, idField, value);
        break;
    case invKeyDescription:
        textKey("Description");
        break;
    case invKeySubDescription:
        textKey("SubDescription");
        break;
    case invKeyVendorSL:
        textKey("VendorCode");
        break;
    case invKeyDeptItemID:
        textKey("DeptCode");
        r.setText("ItemID", "  ");
        break;
    default:
        break;
    }
}

bool InventoryLookup::runSearch()
{
    const ListGuard guard(*this);
    if (!conv::Trim(gsSearchValue).isEmpty() && !gbWildcard) {
        if (const int row = findOnPage(gsSearchValue)) {
            setCursor(row);
            return true;
        }
    }
    gbAtTop = false;
    gInventoryRecord.clear();
    gUpcRecord.clear();
    if (gbWildcard || giScanField >= 0) {
        runWildcard();
        return true;
    }
    if (gbTableBusy)
        QCoreApplication::processEvents();
    gbTableBusy = true;
    gbAtEnd = false;
    gInventoryMatches.clear();
    if (gbUpcSort) {
        const bool found = upcSearch();
        gbTableBusy = false;
        return found;
    }
    if (!gfbDBSM_HasRows(tblInventory)) { // the count's only question: is it 0
        for (int r = 1; r < giPageRows; ++r) clearRow(r);
        gbAtEnd = true;
        gbTableBusy = false;
        return true;
    }
    if (gsSearchValue.isEmpty()) {
        gbAtTop = true;
        readSort(opFirst);
        skipDeleted(opNext);
    } else {
        fillSearchKey(gsSearchValue);
        if (!readSort(opGreaterEqual)) {
            gpDBSM_SetField(tblInventory, giSortField, gsSearchValue.toUpper());
            if (!readByColumn(opLessEqual, giSortField)) {
                gpDBSM_SetField(tblInventory, giSortField,
                                gbItemIdSearch ? gsSearchValue : gsSearchValue.toUpper());
                if (!readByColumn(opGreaterEqual, giSortField) && !readSort(opFirst)) {
                    say("Error No Data found in File");
                    gbTableBusy = false;
                    return false;
                }
            }
        }
        // The list starts on the record nearest below the value in its own
        // letter, or on the first of the next letter.
        const QChar V = firstChar(gsSearchValue);
        if (firstChar(gInventoryRecord.value(giSortField).toString()) < V) {
            if (!readSort(opNext))
                readSort(opEqual); // the end: back onto the record the buffer holds
            else if (firstChar(gInventoryRecord.value(giSortField).toString()) > V)
                readSort(opPrevious);
        }
        skipDeleted(opNext);
    }
    if (skipDeleted(opNext))
        fillRow(1);
    else
        clearRow(1);
    fillOn(2);
    const int row = findOnPage(gsSearchValue);
    setCursor(row > 0 && !conv::Trim(gsSearchValue).isEmpty() ? row : 1);
    gsCursorEnd = "Bottom";
    mbLoadFailed = mbLoadFailed && gfbDBSM_ActionFailed();
    QCoreApplication::processEvents();
    gbTableBusy = false;
    return true;
}
