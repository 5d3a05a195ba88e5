#pragma once
#include "database/TableRecord.h"
#include <QString>
#include <QStringList>
#include <QVector>

// One column of the lookup grid.
struct LookupColumn {
    QString sCaption;
    int iField = 0;        // field of the inventory row
    qint16 iFormat = 0;    // format code of the list engine
    qint32 lWidth = 0;     // twips; 0 hides the column
    qint16 iAlignment = 1; // 1 left, 4 centre, 7 right
    qint32 lBackColor = 0xffffff;
};

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

// Directions of a move.
enum GridDirection { dirLineUp = 0, dirPageUp = 1, dirPageDown = 2, dirLineDown = 3 };

// A box the screen shows after an operation; an empty title is the program's.
struct LookupMessage {
    QString text;
    QString title;
    bool operator==(const LookupMessage &) const = default;
};

// What the screen paints after an operation of the lookup.
struct LookupPage {
    QVector<QStringList> rows; // grid rows 0 to giPageRows + 1, by column
    int cursor = 1;            // the highlighted row
    QVector<LookupMessage> messages;
    QString sortCaption;      // set when the sort names its key
    bool ok = true;           // false: there is no list to show
    bool askWildcard = false; // the sort can only be searched with the wildcard
};

// The lookup's process state and its operations. The state outlives the screen,
// so the next opening finds it as the last one left it.
class InventoryLookup {
public:
    // Lays out the inventory columns and takes the sort the settings name.
    LookupPage setup();
    // The sort of a grid column; a column without a key is searched by scanning.
    LookupPage sortBy(int column);
    // An empty page of giGridRows rows, the columns laid out when they are not yet.
    LookupPage prepare();
    // The first page, unless the page holds rows already and no read failed.
    LookupPage load();
    // load() from the first record whatever the page holds.
    LookupPage reload();
    LookupPage move(int direction);
    // The user put the highlight on `row` with the mouse or a key.
    void pick(int row);
    // The highlight goes to `row`; the list stays.
    LookupPage highlight(int row);
    // The search box now reads `text`: the list follows unless a wildcard search
    // waits for its button.
    LookupPage type(const QString &text);
    // Searches for `typed` as it is: the wildcard search when it is on.
    LookupPage search(const QString &typed);
    LookupPage wildcard(const QString &typed);
    // Clear: the list from its first record again; `hadValue`: the box or the value held text.
    LookupPage clear(bool hadValue);
    // The stock locater of the item on `row`, in stored form; it becomes gsLookupCode.
    QString accept(int row);
    int sortColumn() const;
    int cursor() const { return miRow; }

    // Names the screens and the settings know.
    bool gbLookupFind = false;
    QString gsLookupCode;
    qint16 giLookupKind = 1;   // 1 inventory, 99 name
    qint16 giSelectColumn = 0; // 0 here: no Qty or Select column in front
    QString gsVendorFilter;
    qint16 giVendorScope = 1;
    bool gbWildcard = false;
    bool gbStopSearch = false;
    bool gbTableBusy = false;
    bool gbKeyEdit = false;
    bool gbLookupClosing = false;
    bool gbLoadAbort = false;
    qint16 giGridRows = 14;
    QVector<qint32> gColumnEdges;

    // The columns and the sort.
    QVector<LookupColumn> gLookupColumns;
    qint16 giGridCols = 0;
    qint16 giSortKey = 3;
    int giSortField = 2;
    int giScanField = -1;
    QString gsSortFieldName;
    bool gbUpcSort = false;
    bool gbItemIdLeft = false;
    bool gbShowUID = false;
    bool gbShowDeptName = false;
    bool gbPricesTaxIncluded = false;

    // The page and where the record buffer stands against it.
    // Rows 0 to giPageRows + 1; the column past the last holds, while an operation
    // fills the page, the S/L of a row that waits for its bar code.
    QVector<QStringList> gsPageCells;
    qint16 giPageRows = 0;
    QString gsCursorEnd; // "Top", "Bottom" or empty
    bool gbAtTop = false;
    bool gbAtEnd = false;
    qint16 giLastDirection = -1;
    qint16 giSavedRow = 0;
    qint16 giEmptyRows = 0;
    QString gsSearchValue;
    bool gbItemIdSearch = false;
    QVector<TableRecord> gInventoryMatches; // from 1
    qint16 giMatchIndex = 0;

private:
    class ListGuard;
    LookupPage page();
    void say(const QString &text, const QString &title = QString());
    void setCursor(int row) { miRow = std::max(row, 1); }

    // Reads (paging)
    bool readSort(qint16 op);
    bool isDeleted() const;
    bool skipDeleted(qint16 op);
    bool loadList();
    void fetch(int direction);
    bool position(int row, int direction, int count);
    void fillOn(int from);
    void lineUp();
    void lineDown();
    void pageDown();
    void pageUp();

    // Cells
    QString cellText(int row, int column, QString &sl);
    // The bar codes of the rows that wait for theirs, in one read.
    void readBarCodes();
    QString upcCell(const QString &sl) const;
    QVariant fieldValue(int field) const;
    void fillRow(int row);
    void clearRow(int row);
    void shiftUp();
    void shiftDown();

    // Search by key and by bar code
    bool runSearch();
    int findOnPage(const QString &value) const;
    void fillSearchKey(const QString &value);
    bool upcSearch();

    // Wildcard
    void runWildcard();
    bool matchesOn() const { return gbWildcard && gInventoryMatches.size() > 1; }
    int matchCount() const { return static_cast<int>(gInventoryMatches.size()) - 1; }
    bool fieldMatches() const;
    void fillFromMatch(int row, int match);
    void showMatches(int first);
    void wildcardLineDown();
    void wildcardLineUp();
    void wildcardPageDown();
    void wildcardPageUp();

    int miRow = 1;        // the grid's highlighted row
    int miFirstMatch = 0; // the match in row 1 while wildcard matches are paged
    // When set, rows are filled from this record instead of the table's current row.
    const TableRecord *mSource = nullptr;
    // The last load met a fault of the database: the next move loads again.
    bool mbLoadFailed = false;
    QVector<LookupMessage> mMessages;
};

// The lookup of this process.
extern InventoryLookup gLookup;

// Field ids of the inventory row, by the record's column names.
int gfiInventoryField(const char *name);
