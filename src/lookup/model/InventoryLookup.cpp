#include "lookup/model/InventoryLookup.h"
#include "common/zelFormats.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/model/LookupInternal.h"

InventoryLookup gLookup;

int gfiInventoryField(const char *name)
{
    return gInventoryRecord.indexOf(name);
}

LookupPage InventoryLookup::setup()
{
    giSelectColumn = 0;
    giVendorScope = 1;
    gsSearchValue.clear();
    const int sl = gfiInventoryField("SL"), itemId = gfiInventoryField("ItemID");
    const LookupColumn hidden{"", sl, 0, 0, 0};
    gLookupColumns = {
        {"Description", gfiInventoryField("Description"), 0, 2400, 1},
        {"SubDesc.", gfiInventoryField("SubDescription"), 0, 1500, 1},
        {" S/L", sl, 4, 800, 1},
        {"Item ID", itemId, 0, 1500, 1},
        {"UPC Code", itemId, 6, 1200, 1},
        {"Dept Code", gfiInventoryField("DeptCode"), 0, 1000, 1},
        gbShowDeptName ? LookupColumn{"Dept Name", itemId, 12, 1300, 1} : hidden,
        {"F9 Vendor", gfiInventoryField("VendorCode"), 0, 1000, 1},
        {"Quantity", gfiInventoryField("QtyOnHand"), 1, 700, 4},
        {"Price", gfiInventoryField(gbPricesTaxIncluded ? "PriceIncTax" : "Price"), 7, 700, 7},
        gbShowUID ? LookupColumn{"UID", gfiInventoryField("RecordNum"), 1, 500, 4} : hidden,
    };
    giGridCols = 11;
    gbItemIdLeft = true;
    giLookupKind = 1;
    giSortField = gLookupColumns[colDescription].iField;
    return sortBy(giInventorySearch + giSelectColumn);
}

LookupPage InventoryLookup::sortBy(int iColumn)
{
    giScanField = -1;
    gbUpcSort = false;
    giInventorySearch = static_cast<qint16>(iColumn - giSelectColumn);
    const LookupColumn column = gLookupColumns.value(iColumn);
    giSortField = column.iField;
    QString caption;
    auto sort = [&](qint16 key, const QString &pad, const QString &name) {
        giSortKey = key;
        caption = pad;
        gsSortFieldName = name;
    };
    switch (iColumn - giSelectColumn) {
    case colDescription:
        sort(invKeyDescription, "--Description", "Description");
        break;
    case colSubDesc:
        sort(invKeySubDescription, "--SubDescription", "SubDescription");
        break;
    case colSL:
        sort(invKeySL, "--SL", "SL");
        break;
    case colItemID:
        sort(invKeyItemID, "--Item ID", "ItemID");
        break;
    case colUPC:
        sort(invKeyItemID, "--UPC", "UPC");
        gbUpcSort = true;
        break;
    case colDept:
        sort(invKeyDeptItemID, "--Dept Code", "DeptCode");
        break;
    case colDeptName:
        giSortKey = invKeyRecordNum;
        giScanField = column.iField;
        say("Display Only - No Sorting Available", "Department Name");
        break;
    case colVendor:
        sort(invKeyVendorSL, "---Vendor", "VendorCode");
        break;
    case colQuantity:
        // By number the quantity column; its caption and name are the price's.
        sort(invKeyDescription, "--Price", gbPricesTaxIncluded ? "PriceIncTax" : "Price");
        giSortField = gLookupColumns[giSelectColumn].iField;
        giScanField = column.iField;
        break;
    default:
        giSortKey = invKeyDescription;
        giSortField = gLookupColumns[giSelectColumn].iField;
        giScanField = column.iField;
        break;
    }
    LookupPage p = page();
    p.sortCaption = caption;
    return p;
}

LookupPage InventoryLookup::prepare()
{
    gInventoryMatches.clear();
    miFirstMatch = 0;
    if (giGridCols == 0)
        setup();
    giPageRows = giGridRows;
    gsPageCells = QVector<QStringList>(giPageRows + 2, QStringList(giGridCols + 1));
    miRow = 1;
    return page();
}

void InventoryLookup::pick(int row)
{
    giSavedRow = static_cast<qint16>(row);
    miRow = row;
}

LookupPage InventoryLookup::highlight(int row)
{
    setCursor(row);
    return page();
}

QString InventoryLookup::accept(int row)
{
    if (giSelectColumn != 1)
        gsLookupCode = gfsSL_toStored(gsPageCells.value(row).value(colSL + giSelectColumn));
    return gsLookupCode;
}

int InventoryLookup::sortColumn() const
{
    int column = colDescription;
    switch (giSortKey) {
    case invKeyRecordNum:
        column = colUID;
        break;
    case invKeySL:
        column = colSL;
        break;
    case invKeyItemID:
        column = gbUpcSort ? colUPC : colItemID;
        break;
    case invKeyDescription:
        column = gbUpcSort ? colUPC : colDescription;
        break;
    case invKeySubDescription:
        column = colSubDesc;
        break;
    case invKeyVendorSL:
    case invKeyVendorItemID:
        column = colVendor;
        break;
    case invKeyDeptItemID:
        column = colDept;
        break;
    default:
        break;
    }
    return column + giSelectColumn;
}

LookupPage InventoryLookup::page()
{
    readBarCodes();
    LookupPage p;
    p.rows = gsPageCells;
    p.cursor = miRow;
    p.messages.swap(mMessages);
    return p;
}

// After a fault of the database a read that found nothing says nothing about the list.
void InventoryLookup::say(const QString &text, const QString &title)
{
    if (!gfbDBSM_ActionFailed())
        mMessages.append({text, title});
}

InventoryLookup::ListGuard::ListGuard(InventoryLookup &lookup)
    : m_lookup(lookup), m_cells(lookup.gsPageCells), m_atTop(lookup.gbAtTop),
      m_atEnd(lookup.gbAtEnd), m_cursorEnd(lookup.gsCursorEnd), m_savedRow(lookup.giSavedRow),
      m_matchIndex(lookup.giMatchIndex), m_row(lookup.miRow), m_firstMatch(lookup.miFirstMatch),
      m_matches(lookup.gInventoryMatches), m_inventory(gInventoryRecord), m_upc(gUpcRecord)
{
}

InventoryLookup::ListGuard::~ListGuard()
{
    m_lookup.readBarCodes();
    if (!gfbDBSM_ActionFailed())
        return;
    InventoryLookup &l = m_lookup;
    l.gsPageCells = m_cells;
    l.gbAtTop = m_atTop;
    l.gbAtEnd = m_atEnd;
    l.gsCursorEnd = m_cursorEnd;
    l.giSavedRow = m_savedRow;
    l.giMatchIndex = m_matchIndex;
    l.miRow = m_row;
    l.miFirstMatch = m_firstMatch;
    l.gInventoryMatches = m_matches;
    gInventoryRecord = m_inventory;
    gUpcRecord = m_upc;
}
