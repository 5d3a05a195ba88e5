#include "lookup/sm_DataGrid.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/LookupState.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/MSFlexGrid.h"
#include "platform/Twips.h"
#include <QCoreApplication>
#include <QHeaderView>

QVector<QStringList> gsPageCells;
qint16 giPageRows = 0;
QString gsCursorEnd;
bool gbAtTop = false;
bool gbAtEnd = false;
qint16 giLastDirection = -1;
qint16 giSavedRow = 0;
qint16 giEmptyRows = 0;
QString gsSearchValue;
bool gbItemIdSearch = false;
QVector<TableRecord> gInventoryMatches;
qint16 giMatchIndex = 0;

namespace {

constexpr qint16 kInventory = 1, kUpc = 2;
// More wildcard matches than this are not kept: a page list that long helps
// nobody, and each match holds a whole record in memory.
constexpr int kMaxMatches = 10000;

// The match shown in grid row 1 while wildcard matches are paged.
int mFirstMatch = 0;
// When set, rows are filled from this record instead of the table's current row.
const TableRecord *mSource = nullptr;
// The last load met a fault of the database: the next move loads again.
bool mLoadFailed = false;

bool read(qint16 file, qint16 op, qint16 key)
{
    QString sql;
    return gfbDBSM_Record(file, op, key, false, false, sql);
}

bool readSort(qint16 op)
{
    return read(kInventory, op, giSortKey);
}

bool isDeleted()
{
    return gfvDBSM_Field(kInventory, 34).toString().trimmed() == "D";
}

// Reads on past deleted records; false when the table ends.
bool skipDeleted(qint16 op)
{
    while (isDeleted()) {
        if (!readSort(op))
            return false;
    }
    return true;
}

// After a fault of the database a read that found nothing says nothing about the list.
void say(const QString &text, const QString &title = QString())
{
    if (!gfbDBSM_ActionFailed())
        platform::MsgBox(text, platform::vbOKOnly, title);
}

int lastColumn()
{
    return giGridCols - 1;
}

bool matchesOn()
{
    return gbWildcard && gInventoryMatches.size() > 1;
}

int matchCount()
{
    return static_cast<int>(gInventoryMatches.size()) - 1;
}

QVariant fieldValue(int field)
{
    return mSource ? mSource->value(field) : gfvDBSM_Field(kInventory, field);
}

QString upcCell(const QString &sl)
{
    if (gbUpcSort && gUpcRecord.text("SL") == sl)
        return conv::Trim(gUpcRecord.text("UPC"));
    gUpcRecord.setText("SL", sl);
    bool found = read(kUpc, opEqual, 0);
    // Values that begin with "D" or "I" link departments or items and do not show.
    while (found && QString("DI").contains(gUpcRecord.text("UPC").left(1))) {
        found = read(kUpc, opNext, 0) && gUpcRecord.text("SL") == sl;
    }
    return found ? conv::Trim(gUpcRecord.text("UPC")) : QString();
}

QString money(const QString &text)
{
    QString s = conv::Trim(text);
    if (s.contains('$'))
        s = s.mid(s.indexOf('$') + 1);
    double v = conv::Val(s);
    if (s.endsWith(')'))
        v = -v;
    return conv::Format(v, "##.00");
}

QString cellText(int column, QString &sl)
{
    const LookupColumn &c = gLookupColumns[column];
    const QString text = fieldValue(c.iField).toString();
    switch (c.iFormat) {
    case 2:
    case 7:
        return money(text);
    case 3:
        return text; // dates: no column of the inventory layout has one
    case 4:
        sl = text.leftJustified(8, ' ', true);
        return gfsSL_toDisplay(sl);
    case 6:
        return upcCell(sl.isEmpty() ? fieldValue(0).toString() : sl);
    case 12:
        return " ";
    default: {
        bool number = false;
        const double v = text.trimmed().toDouble(&number);
        if (column != colItemID + giSelectColumn && number && text.contains('.'))
            return QString::number(gfdNumber_round(v, 4));
        return conv::Trim(text);
    }
    }
}

void redraw(platform::MSFlexGrid *grid)
{
    for (int r = 1; r < giPageRows; ++r)
        for (int c = giSelectColumn; c < giGridCols; ++c)
            grid->setTextMatrix(r, c, gsPageCells[r].value(c));
}

// A move or a search that the database fails is undone: the list stays as it was,
// never at a false end, and the next move reads again.
class ListGuard {
public:
    explicit ListGuard(platform::MSFlexGrid *grid) : m_grid(grid), m_row(grid->Row()) {}
    ListGuard(const ListGuard &) = delete;
    ListGuard &operator=(const ListGuard &) = delete;
    ~ListGuard()
    {
        if (!gfbDBSM_ActionFailed())
            return;
        gsPageCells = m_cells;
        gbAtTop = m_atTop;
        gbAtEnd = m_atEnd;
        gsCursorEnd = m_cursorEnd;
        giSavedRow = m_savedRow;
        giMatchIndex = m_matchIndex;
        mFirstMatch = m_firstMatch;
        gInventoryMatches = m_matches;
        gInventoryRecord = m_inventory;
        gUpcRecord = m_upc;
        redraw(m_grid);
        gpGrid_setCursor(m_row, m_grid);
    }

private:
    DbAction m_action; // its box comes after the list is back
    platform::MSFlexGrid *m_grid;
    int m_row;
    QVector<QStringList> m_cells = gsPageCells;
    bool m_atTop = gbAtTop, m_atEnd = gbAtEnd;
    QString m_cursorEnd = gsCursorEnd;
    qint16 m_savedRow = giSavedRow, m_matchIndex = giMatchIndex;
    int m_firstMatch = mFirstMatch;
    QVector<TableRecord> m_matches = gInventoryMatches;
    TableRecord m_inventory = gInventoryRecord, m_upc = gUpcRecord;
};

void shiftUp()
{
    for (int r = 1; r < giPageRows - 1; ++r) gsPageCells[r] = gsPageCells[r + 1];
    gsPageCells[giPageRows - 1] = QStringList(giGridCols + 1);
}

void shiftDown()
{
    for (int r = giPageRows - 1; r > 1; --r) gsPageCells[r] = gsPageCells[r - 1];
    gsPageCells[1] = QStringList(giGridCols + 1);
}

void fillFromMatch(int row, int match, platform::MSFlexGrid *grid)
{
    gInventoryRecord = gInventoryMatches[match];
    mSource = &gInventoryMatches[match];
    gpGrid_fillRow(row, grid);
    mSource = nullptr;
}

// Fills rows `from` to the last row of the page, reading on with Get Next.
void fillOn(int from, platform::MSFlexGrid *grid)
{
    for (int row = from; row < giPageRows; ++row) {
        if (gbLoadAbort)
            return;
        if (!readSort(opNext) || !gfbRecord_accept(opNext)) {
            gpGrid_clearRow(row, grid);
            gbAtEnd = true;
            continue;
        }
        gpGrid_fillRow(row, grid);
    }
}

// A page of matches from `first` on; rows past the last match are cleared.
void showMatches(int first, platform::MSFlexGrid *grid)
{
    mFirstMatch = first;
    for (int row = 1; row < giPageRows; ++row) {
        const int match = first + row - 1;
        if (match <= matchCount()) {
            fillFromMatch(row, match, grid);
            giMatchIndex = static_cast<qint16>(match);
        } else {
            gpGrid_clearRow(row, grid);
        }
    }
}

void wildcardLineDown(platform::MSFlexGrid *grid)
{
    if (giMatchIndex < matchCount()) {
        shiftUp();
        redraw(grid);
        ++giMatchIndex;
        ++mFirstMatch;
        fillFromMatch(giPageRows - 1, giMatchIndex, grid);
    } else {
        gsCursorEnd = "Bottom";
        shiftUp();
        redraw(grid);
        say("End Of List", "Look Up");
    }
    gsCursorEnd.clear();
}

void wildcardLineUp(platform::MSFlexGrid *grid)
{
    if (mFirstMatch <= 1) {
        say("Top Of List", "Look Up");
        gsCursorEnd = "Top";
        return;
    }
    shiftDown();
    redraw(grid);
    --mFirstMatch;
    fillFromMatch(1, mFirstMatch, grid);
    giMatchIndex = static_cast<qint16>(std::min(mFirstMatch + giPageRows - 2, matchCount()));
    gsCursorEnd.clear();
}

void wildcardPageDown(platform::MSFlexGrid *grid)
{
    if (matchCount() < giPageRows) {
        gpGrid_setCursor(matchCount(), grid);
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
    showMatches(first, grid);
    giSavedRow = giMatchIndex;
    if (first + giPageRows - 2 >= matchCount()) {
        gbAtEnd = true;
        say("End of List");
    }
}

void wildcardPageUp(platform::MSFlexGrid *grid)
{
    if (matchCount() < giPageRows) {
        gpGrid_setCursor(1, grid);
        say("Top of List");
        gbAtTop = true;
        return;
    }
    const int first = std::max(1, mFirstMatch - (giPageRows - 1));
    showMatches(first, grid);
    giSavedRow = giMatchIndex;
    if (first == 1)
        gsCursorEnd = "Top";
}

void lineUp(platform::MSFlexGrid *grid)
{
    if (matchesOn())
        return wildcardLineUp(grid);
    const int row = grid->Row();
    if (!gfbGrid_position(row, dirLineUp, grid->Rows() - 2)) {
        gbAtTop = true;
        say("Top Of the List");
        gsCursorEnd = "Top";
    } else {
        gsCursorEnd = "Top";
        bool found = true;
        if (giScanField >= 0)
            while (!gfbField_matches() && (found = readSort(opPrevious))) {
            }
        if (found && gfbRecord_accept(opPrevious)) {
            shiftDown();
            gpGrid_fillRow(1, grid);
            gsCursorEnd = "Top";
            redraw(grid);
        }
    }
    gpGrid_setCursor(row, grid);
}

void lineDown(platform::MSFlexGrid *grid)
{
    if (matchesOn())
        return wildcardLineDown(grid);
    const int row = grid->Row();
    if (!gfbGrid_position(giPageRows - 1, dirLineDown, grid->Rows() - 2)) {
        shiftUp();
        redraw(grid);
        say("End Of List", "Look Up");
    } else {
        gsCursorEnd = "Bottom";
        bool found = true;
        if (giScanField >= 0)
            while (!gfbField_matches() && (found = readSort(opNext))) {
            }
        if (found && gfbRecord_accept(opNext)) {
            shiftUp();
            redraw(grid);
            gpGrid_fillRow(giPageRows - 1, grid);
            gsCursorEnd = "Bottom";
        }
    }
    gpGrid_setCursor(row, grid);
}

void pageDown(platform::MSFlexGrid *grid, LookupForm *form)
{
    if (matchesOn())
        return wildcardPageDown(grid);
    if (gbAtEnd)
        return;
    const int row = grid->Row();
    if (!gfbGrid_position(giPageRows - 1, dirPageDown, grid->Rows() - 2)) {
        say("End of List");
        return;
    }
    gsCursorEnd = "Bottom";
    if (gbWildcard || giScanField >= 0)
        return gpGrid_wildcard(grid, form);
    if (gfbRecord_accept(opNext))
        gpGrid_fillRow(1, grid);
    fillOn(2, grid);
    gsCursorEnd = "Bottom";
    gpGrid_setCursor(row, grid);
}

void pageUp(platform::MSFlexGrid *grid)
{
    if (matchesOn())
        return wildcardPageUp(grid);
    if (!gfbGrid_position(1, dirPageUp, grid->Rows() - 2)) {
        say("Top of List");
        gbAtTop = true;
        return;
    }
    gsCursorEnd = "Top";
    if (gfbRecord_accept(opPrevious))
        gpGrid_fillRow(giPageRows - 1, grid);
    for (int row = giPageRows - 2; row >= 1; --row) {
        if (!readSort(opPrevious) || !gfbRecord_accept(opPrevious)) {
            // The list began before the page was full: it starts in row 1 after all.
            gbAtTop = true;
            readSort(opFirst);
            if (gfbRecord_accept(opNext))
                gpGrid_fillRow(1, grid);
            fillOn(2, grid);
            gsCursorEnd = "Bottom";
            gpGrid_setCursor(1, grid);
            return;
        }
        gpGrid_fillRow(row, grid);
    }
}

bool pageMatches(int row, const QString &value)
{
    const QString cell = conv::LTrim(gsPageCells[row].value(gfiSortColumn())).toUpper();
    return !cell.isEmpty() && cell.startsWith(conv::Trim(value).toUpper());
}

int findOnPage(const QString &value)
{
    for (int row = 1; row < giPageRows; ++row) {
        if (pageMatches(row, value))
            return row;
    }
    return 0;
}

// Puts the search value into the key fields, and into the current row for the
// reads by column that follow when the key finds nothing.
void fillSearchKey(const QString &value)
{
    TableRecord &r = gInventoryRecord;
    const QString upper = value.toUpper();
    auto rowFields = [&upper] {
        gpDBSM_SetField(kInventory, giSortField, upper);
        gpDBSM_SetField(kInventory, 0, "      0 ");
        gpDBSM_SetField(kInventory, 1, QString(20, ' '));
    };
    auto textKey = [&](const char *field) {
        r.clear();
        r.setText("SL", "      0 ");
        r.setText(field, upper);
        rowFields();
    };
    switch (giSortKey) {
    case 1: {
        QString sl = value;
        if (sl.indexOf('.') >= 1)
            sl = sl.remove('.').rightJustified(8, ' ');
        r.setText("SL", sl);
        gpDBSM_SetField(kInventory, 0, sl);
        break;
    }
    case 2:
        r.setText("ItemID", value);
        gpDBSM_SetField(kInventory, 1, value);
        break;
    case 3:
        textKey("Description");
        break;
    case 4:
        textKey("SubDescription");
        break;
    case 6:
        textKey("VendorCode");
        break;
    case 8:
        textKey("DeptCode");
        r.setText("ItemID", "  ");
        break;
    default:
        break;
    }
}

bool readByColumn(qint16 op)
{
    QString sql;
    if (!gfbDBSM_Record(kInventory, op, giSortField, true, false, sql))
        return false;
    gpInventory_RowToRecord(kInventory);
    return true;
}

QChar firstChar(const QString &s)
{
    const QString t = conv::Trim(s).toUpper();
    return t.isEmpty() ? QChar(' ') : t[0];
}

bool upcSearch(platform::MSFlexGrid *grid)
{
    const QString table = gTables[kUpc].sTableName;
    if (!gfbDBSM_HasRows(kUpc)) { // the count's only question: is it 0
        say("No UPC Codes in UPC File");
        return false;
    }
    const QString value = conv::Trim(gsSearchValue).toUpper();
    QString sql;
    if (value.isEmpty()) {
        gbAtTop = true;
        sql = "SELECT TOP 1 * FROM " + table + " WHERE ltrim(upc) > ' ' order by UPC";
    } else {
        gUpcRecord.setText("UPC", value);
        sql = "SELECT TOP 1 * FROM " + table + " WHERE LEFT(upc," + QString::number(value.size()) +
              ")='" + gfsDBSM_SqlText(value, true) + "' order by UPC";
    }
    if (gfbDBSM_Select(sql, kUpc, false)) {
        gpUpc_RowToRecord(kUpc);
    } else {
        gUpcRecord.setText("UPC", value);
        if (!read(kUpc, opLessEqual, 2))
            read(kUpc, opFirst, 2);
    }
    for (int row = 1; row < giPageRows; ++row) {
        if (row > 1) {
            sql = "SELECT TOP 1 * FROM " + table + " WHERE upc > '" +
                  gfsDBSM_SqlText(gUpcRecord.text("UPC"), true) + "' order by UPC";
            if (!gfbDBSM_Select(sql, kUpc, false)) {
                for (; row < giPageRows; ++row) gpGrid_clearRow(row, grid);
                gbAtEnd = true;
                break;
            }
            gpUpc_RowToRecord(kUpc);
        }
        const QString upc = gUpcRecord.text("UPC");
        if (upc.startsWith('D') || upc.startsWith('I')) {
            gpGrid_clearRow(row, grid);
            continue;
        }
        gInventoryRecord.setNumber("RecordNum", gUpcRecord.number("InvUID"));
        if (!read(kInventory, opEqual, 0) || isDeleted()) {
            gpGrid_clearRow(row, grid);
            continue;
        }
        gpGrid_fillRow(row, grid);
    }
    gpGrid_setCursor(1, grid);
    gsCursorEnd = "Bottom";
    return true;
}

} // namespace

void gpGrid_setup(platform::MSFlexGrid *grid)
{
    gInventoryMatches.clear();
    mFirstMatch = 0;
    if (giGridCols == 0)
        gfbInventoryLookup_setup();
    giPageRows = giGridRows;
    gsPageCells = QVector<QStringList>(giPageRows + 2, QStringList(giGridCols + 1));
    grid->Clear();
    grid->setFixedRows(1);
    grid->setCols(giGridCols);
    grid->setRows(giPageRows + 1);
    grid->setWordWrap(true);
    grid->horizontalHeader()->setFixedHeight(platform::twipsToPixels(700));
    for (int c = 0; c < giGridCols; ++c) {
        const LookupColumn &col = gLookupColumns[c];
        grid->setColWidth(c, col.lWidth);
        grid->setColAlignment(c, col.iAlignment == 7   ? Qt::AlignRight
                                 : col.iAlignment == 4 ? Qt::AlignHCenter
                                                       : Qt::AlignLeft);
        grid->setTextMatrix(0, c, col.sCaption);
        if (QTableWidgetItem *h = grid->horizontalHeaderItem(c))
            h->setTextAlignment(Qt::AlignCenter);
    }
    grid->setRow(1);
    grid->setCol(0);
}

bool gfbGrid_load(platform::MSFlexGrid *grid)
{
    const DbAction action;
    gbStopSearch = false;
    giPageRows = giGridRows;
    if (!mLoadFailed && gsPageCells.size() == giPageRows + 2 && grid->Rows() == giPageRows + 1) {
        for (int c = giSelectColumn; c < giGridCols; ++c) {
            if (!conv::Trim(grid->TextMatrix(1, c)).isEmpty())
                return true;
        }
    }
    gbUpcSort = false;
    giLastDirection = -1;
    gbAtEnd = false;
    gInventoryMatches.clear();
    gsPageCells = QVector<QStringList>(giPageRows + 2, QStringList(giGridCols + 1));
    grid->setRows(giPageRows + 1);
    for (int r = 1; r <= giPageRows; ++r) gpGrid_clearRow(r, grid);
    gbAtTop = true;
    if (readSort(opFirst) && skipDeleted(opNext)) {
        if (!gfbRecord_accept(opNext)) {
            say("No matching data found");
            return false;
        }
        gpGrid_fillRow(1, grid);
        gpGrid_setCursor(1, grid);
        fillOn(2, grid);
        if (gbLoadAbort)
            return true;
    } else {
        gbAtEnd = true;
    }
    mLoadFailed = gfbDBSM_ActionFailed();
    if (mLoadFailed)
        gbAtEnd = false; // nothing is known of the end
    gpGrid_setCursor(1, grid);
    gsCursorEnd = "Bottom";
    return true;
}

bool gfbGrid_reload(platform::MSFlexGrid *grid, LookupForm *)
{
    const bool loaded = gfbGrid_load(grid);
    giSavedRow = 0;
    return loaded;
}

void gpGrid_scroll(platform::MSFlexGrid *grid, int iDirection, LookupForm *form)
{
    if (mLoadFailed && !matchesOn()) {
        gfbGrid_load(grid);
        return;
    }
    const ListGuard guard(grid);
    if (!gbWildcard && giSavedRow >= 1)
        grid->setRow(giSavedRow);
    const int row = grid->Row();
    if (iDirection == dirLineUp) {
        if (row > 1)
            gpGrid_setCursor(row - 1, grid);
        else
            gpGrid_fetch(iDirection, grid, form);
    } else if (iDirection == dirLineDown) {
        const int L = gbWildcard ? giPageRows - 2 : giPageRows - 1;
        if (row >= L) {
            gpGrid_fetch(iDirection, grid, form);
        } else {
            bool filled = false;
            for (const QString &cell : gsPageCells[row + 1])
                filled = filled || conv::AboveBlank(cell);
            if (!filled) {
                say("End of the List", "Look Up");
                gbAtEnd = true;
                gpGrid_setCursor(row, grid);
            } else {
                gpGrid_setCursor(row + 1, grid);
                gbAtEnd = false;
            }
        }
    } else {
        gpGrid_fetch(iDirection, grid, form);
    }
    if (!gbWildcard)
        giSavedRow = static_cast<qint16>(grid->Row());
    if (form)
        form->focusSearchBox();
}

void gpGrid_fetch(int iDirection, platform::MSFlexGrid *grid, LookupForm *form)
{
    switch (iDirection) {
    case dirLineUp:
        if (gbAtTop) {
            say("Top of List");
            gpGrid_setCursor(1, grid);
            gbAtEnd = false;
        } else {
            lineUp(grid);
        }
        break;
    case dirPageUp:
        if (gbAtTop) {
            say("Top of List");
            gpGrid_setCursor(1, grid);
        } else {
            pageUp(grid);
            gbAtEnd = false;
        }
        break;
    case dirPageDown:
        pageDown(grid, form);
        gbAtTop = false;
        break;
    default:
        lineDown(grid);
        gbAtTop = false;
        break;
    }
    giLastDirection = static_cast<qint16>(iDirection);
}

bool gfbGrid_position(int iRow, int iDirection, int iCount)
{
    const qint16 table = gbUpcSort ? kUpc : kInventory;
    const qint16 key = gbUpcSort ? 2 : giSortKey;
    auto step = [table, key](qint16 op) { return read(table, op, key); };
    auto stepOver = [&](qint16 op) {
        if (!step(op))
            return false;
        return table == kUpc || skipDeleted(op);
    };
    giEmptyRows = 0;
    for (int r = 1; r < giPageRows; ++r)
        if (gsPageCells[r].value(gfiSortColumn()).isEmpty())
            ++giEmptyRows;
    const bool down = iDirection == dirPageDown || iDirection == dirLineDown;
    if (gsCursorEnd == "Bottom") {
        if (table == kInventory) {
            // Find the row again by its Item ID, whatever other stations did meanwhile.
            gInventoryRecord.setText("ItemID", gsPageCells[down ? iRow : 1].value(colItemID));
            if (read(kInventory, opEqual, 2))
                read(kInventory, opEqual, giSortKey);
        }
        if (iDirection == dirPageUp)
            return true;
        if (iDirection == dirLineUp) {
            if (table == kInventory)
                return step(opPrevious);
            for (int i = 0; i < iCount - giEmptyRows; ++i)
                if (!step(opPrevious))
                    return false;
            return true;
        }
        if (iDirection == dirLineDown && !step(opNext))
            return false;
        if (table == kInventory && !skipDeleted(opNext)) {
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

bool gfbGrid_search(platform::MSFlexGrid *grid, LookupForm *form)
{
    const ListGuard guard(grid);
    if (!conv::Trim(gsSearchValue).isEmpty() && !gbWildcard) {
        if (const int row = findOnPage(gsSearchValue)) {
            gpGrid_setCursor(row, grid);
            return true;
        }
    }
    gbAtTop = false;
    gInventoryRecord.clear();
    gUpcRecord.clear();
    if (gbWildcard || giScanField >= 0) {
        gpGrid_wildcard(grid, form);
        return true;
    }
    if (gbTableBusy)
        QCoreApplication::processEvents();
    gbTableBusy = true;
    gbAtEnd = false;
    gInventoryMatches.clear();
    if (gbUpcSort) {
        const bool found = upcSearch(grid);
        gbTableBusy = false;
        return found;
    }
    if (!gfbDBSM_HasRows(kInventory)) { // the count's only question: is it 0
        for (int r = 1; r < giPageRows; ++r) gpGrid_clearRow(r, grid);
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
            gpDBSM_SetField(kInventory, giSortField, gsSearchValue.toUpper());
            if (!readByColumn(opLessEqual)) {
                gpDBSM_SetField(kInventory, giSortField,
                                gbItemIdSearch ? gsSearchValue : gsSearchValue.toUpper());
                if (!readByColumn(opGreaterEqual) && !readSort(opFirst)) {
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
    if (gfbRecord_accept(opNext))
        gpGrid_fillRow(1, grid);
    else
        gpGrid_clearRow(1, grid);
    fillOn(2, grid);
    const int row = findOnPage(gsSearchValue);
    gpGrid_setCursor(row > 0 && !conv::Trim(gsSearchValue).isEmpty() ? row : 1, grid);
    gsCursorEnd = "Bottom";
    mLoadFailed = mLoadFailed && gfbDBSM_ActionFailed();
    QCoreApplication::processEvents();
    if (form)
        form->focusList();
    gbTableBusy = false;
    return true;
}

void gpGrid_wildcard(platform::MSFlexGrid *grid, LookupForm *)
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
    QString sql = "SELECT * FROM " + gTables[kInventory].sTableName + " WHERE " +
                  gfsDBSM_LikeContains(gsSortFieldName, gsSearchValue) + " And status <> 'D' " +
                  order;
    if (!gfbDBSM_Select(sql, kInventory, false, kMaxMatches)) {
        say("No matches found");
        return;
    }
    int n = gRecordsets[kInventory].RecordCount();
    if (n > kMaxMatches) {
        n = kMaxMatches;
        say(QString("More than %1 items match. The first %1 are listed; type more of the "
                    "value to find fewer.")
                .arg(kMaxMatches));
    }
    gInventoryMatches = QVector<TableRecord>(n + 1, gInventoryRecord);
    for (int r = 1; r < giPageRows; ++r) gpGrid_clearRow(r, grid);
    mFirstMatch = 1;
    for (int i = 1; i <= n; ++i) {
        if (i > 1)
            gRecordsets[kInventory].MoveNext();
        if (i % 500 == 0) {
            QCoreApplication::processEvents(); // lets Stop Search come in
            if (gbStopSearch) {
                gInventoryMatches.remove(i, gInventoryMatches.size() - i);
                break;
            }
        }
        gpInventory_RowToRecord(kInventory);
        if (i <= giPageRows - 1) {
            gpGrid_fillRow(i, grid);
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
    gpGrid_setCursor(1, grid);
}

void gpGrid_setCursor(int iRow, platform::MSFlexGrid *grid)
{
    grid->setRow(std::max(iRow, 1));
    grid->setCol(giSelectColumn);
    grid->setColSel(lastColumn());
}

void gpGrid_fillRow(int iRow, platform::MSFlexGrid *grid)
{
    if (gbStopSearch || iRow < 1 || iRow >= gsPageCells.size())
        return;
    QString sl;
    for (int c = giSelectColumn; c < giGridCols; ++c) {
        if (gLookupColumns[c].iField == 99)
            continue;
        const QString text = cellText(c, sl);
        gsPageCells[iRow][c] = text;
        grid->setTextMatrix(iRow, c, text);
    }
}

void gpGrid_clearRow(int iRow, platform::MSFlexGrid *grid)
{
    if (iRow < 1 || iRow >= gsPageCells.size())
        return;
    for (int c = 0; c < giGridCols; ++c) {
        gsPageCells[iRow][c].clear();
        grid->setTextMatrix(iRow, c, QString());
    }
}

int gfiSortColumn()
{
    int column = colDescription;
    switch (giSortKey) {
    case 0:
        column = colUID;
        break;
    case 1:
        column = colSL;
        break;
    case 2:
        column = gbUpcSort ? colUPC : colItemID;
        break;
    case 3:
        column = gbUpcSort ? colUPC : colDescription;
        break;
    case 4:
        column = colSubDesc;
        break;
    case 6:
    case 7:
        column = colVendor;
        break;
    case 8:
        column = colDept;
        break;
    default:
        break;
    }
    return column + giSelectColumn;
}

bool gfbField_matches()
{
    if (gbStopSearch || isDeleted())
        return false;
    const int field = gbWildcard && giScanField == -1 ? giSortField : giScanField;
    const QString value = gfvDBSM_Field(kInventory, field).toString().toUpper();
    if (gbWildcard)
        return value.contains(gsSearchValue.toUpper());
    return value.startsWith(conv::Trim(gsSearchValue).toUpper());
}
