#include "common/Conversions.h"
#include "database/TableNames.h"
#include "lookup/model/LookupInternal.h"
#include <QCoreApplication>

namespace {

// More wildcard matches than this are not kept: a page list that long helps
// nobody, and each match holds a whole record in memory.
constexpr int kMaxMatches = 10000;

} // namespace

LookupPage InventoryLookup::wildcard(const QString &typed)
{
    gsSearchValue = typed;
    runWildcard();
    return page();
}

void InventoryLookup::runWildcard()
{
    gInventoryMatches.clear();
    gbAtEnd = false;
    if (gsSortFieldName.isEmpty()) {
        gbWildcard = false;
        say("Wildcard Sort not available on this field");
        return;
    }
    if (gsSortFieldName == "QtyOnHand" || gsSortFieldName.startsWith("Price"))
        return;
    const QString order = gsSortFieldName == "Description" ? "Order BY Description,subdescription"
                                                           : "Order BY " + gsSortFieldName;
    // Only the two wildcards around the value are patterns; what was typed is literal.
    const SqlRead sql = "SELECT * FROM " + gTables[tblInventory].sTableName + " WHERE " +
                        gfsDBSM_LikeContains(gsSortFieldName, gsSearchValue) +
                        " And status <> 'D' " + order;
    if (!gfbDBSM_Select(sql, tblInventory, false, kMaxMatches)) {
        say("No matches found");
        return;
    }
    int n = gRecordsets[tblInventory].RecordCount();
    if (n > kMaxMatches) {
        n = kMaxMatches;
        say(QString("More than %1 items match. The first %1 are listed; type more of the "
                    "value to find fewer.")
                .arg(kMaxMatches));
    }
    gInventoryMatches = QVector<TableRecord>(n + 1, gInventoryRecord);
    for (int r = 1; r < giPageRows; ++r) clearRow(r);
    miFirstMatch = 1;
    for (int i = 1; i <= n; ++i) {
        if (i > 1)
            gRecordsets[tblInventory].MoveNext();
        if (i % 500 == 0) {
            QCoreApplication::processEvents(); // lets Stop Search come in
            if (gbStopSearch) {
                gInventoryMatches.remove(i, gInventoryMatches.size() - i);
                break;
            }
        }
        gpInventory_RowToRecord(tblInventory);
        if (i <= giPageRows - 1) {
            fillRow(i);
            giMatchIndex = static_cast<qint16>(i);
        }
        gInventoryMatches[i] = gInventoryRecord;
        if (n < giPageRows - 1 && i == n) {
            gbAtEnd = true;
            say("End of List");
        }
    }
    if (n > giPageRows - 2)
        giMatchIndex = static_cast<qint16>(giPageRows - 1);
    giSavedRow = giMatchIndex;
    setCursor(1);
}

// Whether the current record holds the value, on a sort that is scanned.
bool InventoryLookup::fieldMatches() const
{
    if (gbStopSearch || isDeleted())
        return false;
    const int field = gbWildcard && giScanField == -1 ? giSortField : giScanField;
    const QString value = gfvDBSM_Field(tblInventory, field).toString().toUpper();
    if (gbWildcard)
        return value.contains(gsSearchValue.toUpper());
    return value.startsWith(conv::Trim(gsSearchValue).toUpper());
}

void InventoryLookup::fillFromMatch(int row, int match)
{
    gInventoryRecord = gInventoryMatches[match];
    mSource = &gInventoryMatches[match];
    fillRow(row);
    mSource = nullptr;
}

// A page of matches from `first` on; rows past the last match are cleared.
void InventoryLookup::showMatches(int first)
{
    miFirstMatch = first;
    for (int row = 1; row < giPageRows; ++row) {
        const int match = first + row - 1;
        if (match <= matchCount()) {
            fillFromMatch(row, match);
            giMatchIndex = static_cast<qint16>(match);
        } else {
            clearRow(row);
        }
    }
}

void InventoryLookup::wildcardLineDown()
{
    if (giMatchIndex < matchCount()) {
        shiftUp();
        ++giMatchIndex;
        ++miFirstMatch;
        fillFromMatch(giPageRows - 1, giMatchIndex);
    } else {
        gsCursorEnd = "Bottom";
        shiftUp();
        say("End Of List", "Look Up");
    }
    gsCursorEnd.clear();
}

void InventoryLookup::wildcardLineUp()
{
    if (miFirstMatch <= 1) {
        say("Top Of List", "Look Up");
        gsCursorEnd = "Top";
        return;
    }
    shiftDown();
    --miFirstMatch;
    fillFromMatch(1, miFirstMatch);
    giMatchIndex = static_cast<qint16>(std::min(miFirstMatch + giPageRows - 2, matchCount()));
    gsCursorEnd.clear();
}

void InventoryLookup::wildcardPageDown()
{
    if (matchCount() < giPageRows) {
        setCursor(matchCount());
        say("End of List");
        gbAtEnd = true;
        return;
    }
    const int first = giMatchIndex + 1;
    if (first > matchCount()) {
        say("End of List");
        gbAtEnd = true;
        return;
    }
    showMatches(first);
    giSavedRow = giMatchIndex;
    if (first + giPageRows - 2 >= matchCount()) {
        gbAtEnd = true;
        say("End of List");
    }
}

void InventoryLookup::wildcardPageUp()
{
    if (matchCount() < giPageRows) {
        setCursor(1);
        say("Top of List");
        gbAtTop = true;
        return;
    }
    const int first = std::max(1, miFirstMatch - (giPageRows - 1));
    showMatches(first);
    giSavedRow = giMatchIndex;
    if (first == 1)
        gsCursorEnd = "Top";
}
