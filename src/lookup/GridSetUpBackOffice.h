#pragma once
#include <QString>
#include <QVector>

class LookupForm;
namespace platform {
class MSFlexGrid;
}

// One column of the lookup grid.
struct LookupColumn {
    QString sCaption;
    qint16 iField = 0;     // field of the table's row; 99: none
    qint16 iFormat = 0;    // format code of the list engine
    qint32 lWidth = 0;     // twips; 0 hides the column
    qint16 iAlignment = 1; // 1 left, 4 centre, 7 right
    qint32 lBackColor = 0xffffff;
};

extern QVector<LookupColumn> gLookupColumns;
extern qint16 giGridCols;
extern qint16 giSortKey;
extern qint16 giSortField;
extern qint16 giScanField;
extern QString gsSortFieldName;
extern bool gbUpcSort;
extern bool gbItemIdLeft;
extern bool gbShowUID;
extern bool gbShowDeptName;
extern bool gbPricesTaxIncluded;

// Grid columns of the inventory layout.
enum InventoryColumn {
    colDescription = 0,
    colSubDesc = 1,
    colSL = 2,
    colItemID = 3,
    colUPC = 4,
    colDept = 5,
    colDeptName = 6,
    colVendor = 7,
    colQuantity = 8,
    colPrice = 9,
    colUID = 10,
};

bool gfbInventoryLookup_setup(LookupForm *form = nullptr);
void gpInventorySort_set(qint16 iColumn, LookupForm *form = nullptr);
// The list's filter: reads on past deleted records; false when the table ends.
bool gfbRecord_accept(qint16 iOperation);
void gpInventoryAction(int iIndex, platform::MSFlexGrid *grid, LookupForm *form);
