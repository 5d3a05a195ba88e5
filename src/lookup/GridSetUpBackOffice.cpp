#include "lookup/GridSetUpBackOffice.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/LookupState.h"
#include "lookup/sm_DataGrid.h"
#include "platform/Dialogs.h"
#include "platform/MSFlexGrid.h"

QVector<LookupColumn> gLookupColumns;
qint16 giGridCols = 0;
qint16 giSortKey = 3;
qint16 giSortField = 2;
qint16 giScanField = -1;
QString gsSortFieldName;
bool gbUpcSort = false;
bool gbItemIdLeft = false;
bool gbShowUID = false;
bool gbShowDeptName = false;
bool gbPricesTaxIncluded = false;

bool gfbInventoryLookup_setup(LookupForm *form)
{
    giSelectColumn = 0;
    giVendorScope = 1;
    gsSearchValue.clear();
    gLookupColumns = {
        {"Description", 2, 0, 2400, 1},
        {"SubDesc.", 3, 0, 1500, 1},
        {" S/L", 0, 4, 800, 1},
        {"Item ID", 1, 0, 1500, 1},
        {"UPC Code", 1, 6, 1200, 1},
        {"Dept Code", 15, 0, 1000, 1},
        gbShowDeptName ? LookupColumn{"Dept Name", 1, 12, 1300, 1} : LookupColumn{"", 0, 0, 0, 0},
        {"F9 Vendor", 7, 0, 1000, 1},
        {"Quantity", 10, 1, 700, 4},
        {"Price", static_cast<qint16>(gbPricesTaxIncluded ? 32 : 8), 7, 700, 7},
        gbShowUID ? LookupColumn{"UID", 40, 1, 500, 4} : LookupColumn{"", 0, 0, 0, 0},
    };
    giGridCols = 11;
    gbItemIdLeft = true;
    giLookupKind = 1;
    giSortField = gLookupColumns[colDescription].iField;
    gpInventorySort_set(static_cast<qint16>(giInventorySearch + giSelectColumn), form);
    return true;
}

void gpInventorySort_set(qint16 iColumn, LookupForm *form)
{
    giScanField = -1;
    gbUpcSort = false;
    giInventorySearch = static_cast<qint16>(iColumn - giSelectColumn);
    const LookupColumn column = gLookupColumns.value(iColumn);
    giSortField = column.iField;
    auto sort = [form](qint16 key, const QString &pad, const QString &name) {
        giSortKey = key;
        if (form)
            form->setSortCaption(pad);
        gsSortFieldName = name;
    };
    switch (iColumn - giSelectColumn) {
    case colDescription:
        sort(3, "--Description", "Description");
        break;
    case colSubDesc:
        sort(4, "--SubDescription", "SubDescription");
        break;
    case colSL:
        sort(1, "--SL", "SL");
        break;
    case colItemID:
        sort(2, "--Item ID", "ItemID");
        break;
    case colUPC:
        sort(2, "--UPC", "UPC");
        gbUpcSort = true;
        break;
    case colDept:
        sort(8, "--Dept Code", "DeptCode");
        break;
    case colDeptName:
        giSortKey = 0;
        giScanField = column.iField;
        platform::MsgBox("Display Only - No Sorting Available", platform::vbOKOnly,
                         "Department Name");
        break;
    case colVendor:
        sort(6, "---Vendor", "VendorCode");
        break;
    case colQuantity:
        // By number the quantity column; its caption and name are the price's.
        sort(3, "--Price", gbPricesTaxIncluded ? "PriceIncTax" : "Price");
        giSortField = gLookupColumns[giSelectColumn].iField;
        giScanField = column.iField;
        break;
    default:
        giSortKey = 3;
        giSortField = gLookupColumns[giSelectColumn].iField;
        giScanField = column.iField;
        break;
    }
    if (form) {
        form->setFormCaption("Find Inventory Item");
        form->setExitCaption("Esc Cancel");
        form->hideAction(3);
    }
}

bool gfbRecord_accept(qint16 iOperation)
{
    QString sql;
    while (gfvDBSM_Field(1, 34).toString().trimmed() == "D") {
        sql.clear();
        if (!gfbDBSM_Record(1, iOperation, giSortKey, false, false, sql))
            return false;
    }
    return true;
}

void gpInventoryAction(int iIndex, platform::MSFlexGrid *grid, LookupForm *form)
{
    if (iIndex != 0)
        return;
    if (giSelectColumn != 1)
        gsLookupCode = gfsSL_toStored(grid->TextMatrix(grid->Row(), colSL + giSelectColumn));
    gbLookupClosing = true;
    if (form)
        form->closeLookup();
    gbLookupClosing = false;
}
