#include "common/Conversions.h"
#include "database/TableNames.h"
#include "lookup/model/LookupInternal.h"

using lookup_detail::read;

bool InventoryLookup::readSort(qint16 op)
{
    return read(tblInventory, op, giSortKey);
}

bool InventoryLookup::isDeleted() const
{
    static const int status = gfiInventoryField("Status");
    return gfvDBSM_Field(tblInventory, status).toString().trimmed() == "D";
}

// Reads on past deleted records; false when the table ends.
bool InventoryLookup::skipDeleted(qint16 op)
{
    while (isDeleted()) {
        if (!readSort(op))
            return false;
    }
    return true;
}

// Fills rows `from` to the last row of the page, reading on with Get Next.
void InventoryLookup::fillOn(int from)
{
    for (int row = from; row < giPageRows; ++row) {
        if (gbLoadAbort)
            return;
        if (!readSort(opNext) || !skipDeleted(opNext)) {
            clearRow(row);
            gbAtEnd = true;
            continue;
        }
        fillRow(row);
    }
}

LookupPage InventoryLookup::load()
{
    const DbAction action;
    if (!loadList()) {
        LookupPage p = page();
        p.ok = false;
        return p;
    }
    return page();
}

LookupPage InventoryLookup::reload()
{
    LookupPage p = load();
    giSavedRow = 0;
    return p;
}

bool InventoryLookup::loadList()
{
    gbStopSearch = false;
    giPageRows = giGridRows;
    if (!mbLoadFailed && gsPageCells.size() == giPageRows + 2) {
        for (int c = giSelectColumn; c < giGridCols; ++c) {
            if (!conv::Trim(gsPageCells[1].value(c)).isEmpty())
                return true;
        }
    }
    gbUpcSort = false;
    giLastDirection = -1;
    gbAtEnd = false;
    gInventoryMatches.clear();
    gsPageCells = QVector<QStringList>(giPageRows + 2, QStringList(giGridCols + 1));
    gbAtTop = true;
    if (readSort(opFirst) && skipDeleted(opNext)) {
        if (!skipDeleted(opNext)) {
            say("No matching data found");
            return false;
        }
        fillRow(1);
        setCursor(1);
        fillOn(2);
        if (gbLoadAbort)
            return true;
    } else {
        gbAtEnd = true;
    }
    mbLoadFailed = gfbDBSM_ActionFailed();
    if (mbLoadFailed)
        gbAtEnd = false; // nothing is known of the end
    setCursor(1);
    gsCursorEnd = "Bottom";
    return true;
}

LookupPage InventoryLookup::move(int iDirection)
{
    if (mbLoadFailed && !matchesOn()) {
        const DbAction action;
        loadList();
        return page();
    }
    {
        const ListGuard guard(*this);
        if (!gbWildcard && giSavedRow >= 1)
            miRow = giSavedRow;
        const int row = miRow;
        if (iDirection == dirLineUp) {
            if (row > 1)
                setCursor(row - 1);
            else
                fetch(iDirection);
        } else if (iDirection == dirLineDown) {
            const int L = gbWildcard ? giPageRows - 2 : giPageRows - 1;
            if (row >= L) {
                fetch(iDirection);
            } else {
                bool filled = false;
                for (const QString &cell : gsPageCells[row + 1])
                    filled = filled || conv::AboveBlank(cell);
                if (!filled) {
                    say("End of the List", "Look Up");
                    gbAtEnd = true;
                    setCursor(row);
                } else {
                    setCursor(row + 1);
                    gbAtEnd = false;
                }
            }
        } else {
            fetch(iDirection);
        }
        if (!gbWildcard)
            giSavedRow = static_cast<qint16>(miRow);
    }
    return page();
}

void InventoryLookup::fetch(int iDirection)
{
    switch (iDirection) {
    case dirLineUp:
        if (gbAtTop) {
            say("Top of List");
            setCursor(1);
            gbAtEnd = false;
        } else {
            lineUp();
        }
        break;
    case dirPageUp:
        if (gbAtTop) {
            say("Top of List");
            setCursor(1);
        } else {
            pageUp();
            gbAtEnd = false;
        }
        break;
    case dirPageDown:
        pageDown();
        gbAtTop = false;
        break;
    default:
        lineDown();
        gbAtTop = false;
        break;
    }
    giLastDirection = static_cast<qint16>(iDirection);
}

void InventoryLookup::lineUp()
{
    if (matchesOn())
        return wildcardLineUp();
    const int row = miRow;
    if (!position(row, dirLineUp, giPageRows - 1)) {
        gbAtTop = true;
        say("Top Of the List");
        gsCursorEnd = "Top";
    } else {
        gsCursorEnd = "Top";
        bool found = true;
        if (giScanField >= 0)
            while (!fieldMatches() && (found = readSort(opPrevious))) {
            }
        if (found && skipDeleted(opPrevious)) {
            shiftDown();
            fillRow(1);
            gsCursorEnd = "Top";
        }
    }
    setCursor(row);
}

void InventoryLookup::lineDown()
{
    if (matchesOn())
        return wildcardLineDown();
    const int row = miRow;
    if (!position(giPageRows - 1, dirLineDown, giPageRows - 1)) {
        shiftUp();
        say("End Of List", "Look Up");
    } else {
        gsCursorEnd = "Bottom";
        bool found = true;
        if (giScanField >= 0)
            while (!fieldMatches() && (found = readSort(opNext))) {
            }
        if (found && skipDeleted(opNext)) {
            shiftUp();
            fillRow(giPageRows - 1);
            gsCursorEnd = "Bottom";
        }
    }
    setCursor(row);
}

void InventoryLookup::pageDown()
{
    if (matchesOn())
        return wildcardPageDown();
    if (gbAtEnd)
        return;
    const int row = miRow;
    if (!position(giPageRows - 1, dirPageDown, giPageRows - 1)) {
        say("End of List");
        return;
    }
    gsCursorEnd = "Bottom";
    if (gbWildcard || giScanField >= 0)
        return runWildcard();
    if (skipDeleted(opNext))
        fillRow(1);
    fillOn(2);
    gsCursorEnd = "Bottom";
    setCursor(row);
}

void InventoryLookup::pageUp()
{
    if (matchesOn())
        return wildcardPageUp();
    if (!position(1, dirPageUp, giPageRows - 1)) {
        say("Top of List");
        gbAtTop = true;
        return;
    }
    gsCursorEnd = "Top";
    if (skipDeleted(opPrevious))
        fillRow(giPageRows - 1);
    for (int row = giPageRows - 2; row >= 1; --row) {
        if (!readSort(opPrevious) || !skipDeleted(opPrevious)) {
            // The list began before the page was full: it starts in row 1 after all.
            gbAtTop = true;
            readSort(opFirst);
            if (skipDeleted(opNext))
                fillRow(1);
            fillOn(2);
            gsCursorEnd = "Bottom";
            setCursor(1);
            return;
        }
        fillRow(row);
    }
}

// Puts the record buffer where the move goes on from.
bool InventoryLookup::position(int iRow, int iDirection, int iCount)
{
    const qint16 table = gbUpcSort ? tblUpc : tblInventory;
    const qint16 key = gbUpcSort ? qint16(upcKeyCode) : giSortKey;
    auto step = [table, key](qint16 op) { return read(table, op, key); };
    auto stepOver = [&](qint16 op) {
        if (!step(op))
            return false;
        return table == tblUpc || skipDeleted(op);
    };
    giEmptyRows = 0;
    for (int r = 1; r < giPageRows; ++r)
        if (gsPageCells[r].value(sortColumn()).isEmpty())
            ++giEmptyRows;
    const bool down = iDirection == dirPageDown || iDirection == dirLineDown;
    if (gsCursorEnd == "Bottom") {
        if (table == tblInventory) {
            // Find the row again by its Item ID, whatever other stations did meanwhile.
            gInventoryRecord.setText("ItemID", gsPageCells[down ? iRow : 1].value(colItemID));
            if (read(tblInventory, opEqual, invKeyItemID))
                read(tblInventory, opEqual, giSortKey);
        }
        if (iDirection == dirPageUp)
            return true;
        if (iDirection == dirLineUp) {
            if (table == tblInventory)
                return step(opPrevious);
            for (int i = 0; i < iCount - giEmptyRows; ++i)
                if (!step(opPrevious))
                    return false;
            return true;
        }
        if (iDirection == dirLineDown && !step(opNext))
            return false;
        if (table == tblInventory && !skipDeleted(opNext)) {
            step(opPrevious);
            return false;
        }
        return true;
    }
    if (!down)
        return stepOver(opPrevious);
    for (int i = 0; i < iCount; ++i) {
        if (!stepOver(opNext)) {
            step(opPrevious);
            return false;
        }
    }
    return true;
}
