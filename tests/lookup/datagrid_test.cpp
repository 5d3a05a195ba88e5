#include "common/zelFormats.h"
#include "database/DbEngine.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/LookupState.h"
#include "lookup/sm_DataGrid.h"
#include "platform/MSFlexGrid.h"
#include "shell/hkeyDBSM_Interface.h"
#include "support/StoreDb.h"
#include <QSqlDatabase>
#include <QSqlQuery>

using testing_support::StoreDbTest;

namespace {

struct FakeForm : LookupForm {
    void setFormCaption(const QString &c) override { caption = c; }
    void setSortCaption(const QString &c) override { pad = c; }
    void setExitCaption(const QString &c) override { exit = c; }
    void hideAction(int i) override { hidden << i; }
    void focusSearchBox() override {}
    void focusList() override {}
    void closeLookup() override { closed = true; }
    QString caption, pad, exit;
    QList<int> hidden;
    bool closed = false;
};

// Items "ITEM 01" to "ITEM nn", S/L 10000001 on, every fourth one deleted when asked.
class GridTest : public StoreDbTest {
protected:
    void SetUp() override
    {
        StoreDbTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return; // no cluster to run on
        openStore();
        giInventorySearch = 0;
        gbWildcard = false;
        gsSearchValue.clear();
        giGridRows = 6; // a page of five records
        giSavedRow = 0;
    }
    void items(int count, bool deleteSome = false)
    {
        for (int i = 1; i <= count; ++i)
            addItem(QString::number(10000000 + i), QString("ID%1").arg(i),
                    QString("ITEM %1").arg(i, 2, 10, QChar('0')), i * 1.25);
        if (deleteSome)
            glDBSM_Execute("UPDATE invt1 SET Status = 'D' WHERE RecordNum % 4 = 0");
    }
    void open()
    {
        gfbInventoryLookup_setup(&form);
        gpGrid_setup(&grid);
        ASSERT_TRUE(gfbGrid_load(&grid));
    }
    QStringList page() const
    {
        QStringList rows;
        for (int r = 1; r < giPageRows; ++r) rows << gsPageCells[r][colDescription];
        return rows;
    }
    void move(int direction) { gpGrid_scroll(&grid, direction, &form); }
    QStringList texts()
    {
        QStringList t;
        for (const auto &b : boxes()) t << b.title + ": " + b.text;
        return t;
    }
    platform::MSFlexGrid grid;
    FakeForm form;
};

QStringList names(int from, int to)
{
    QStringList out;
    for (int i = from; i <= to; ++i) out << (i ? QString("ITEM %1").arg(i, 2, 10, QChar('0')) : "");
    return out;
}

} // namespace

TEST_F(GridTest, LoadShowsTheFirstPageInKeyOrderWithEveryFormat)
{
    items(12);
    glDBSM_Execute("UPDATE invt1 SET QtyOnHand = 2.5, SubDescription = 'BOX' WHERE RecordNum = 1");
    gUpcRecord.clear();
    gUpcRecord.setText("SL", "10000001");
    gUpcRecord.setText("UPC", "012345678905");
    QString sql;
    ASSERT_TRUE(gfbDBSM_Record(2, opInsert, 0, false, false, sql));
    gUpcRecord.setText("SL", "10000002");
    gUpcRecord.setText("UPC", "D0001");
    sql.clear();
    ASSERT_TRUE(gfbDBSM_Record(2, opInsert, 0, false, false, sql));
    open();
    EXPECT_EQ(form.caption, "Find Inventory Item");
    EXPECT_EQ(form.pad, "--Description");
    EXPECT_EQ(form.exit, "Esc Cancel");
    EXPECT_EQ(grid.TextMatrix(0, colSL), " S/L");
    EXPECT_EQ(page(), names(1, 5));
    EXPECT_EQ(gsCursorEnd, "Bottom");
    EXPECT_TRUE(gbAtTop);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.TextMatrix(1, colSL), "1000000.1");
    EXPECT_EQ(grid.TextMatrix(1, colPrice), "1.25");
    EXPECT_EQ(grid.TextMatrix(1, colQuantity), "2.5");
    EXPECT_EQ(grid.TextMatrix(1, colSubDesc), "BOX");
    EXPECT_EQ(grid.TextMatrix(1, colUPC), "012345678905");
    EXPECT_EQ(grid.TextMatrix(2, colUPC), "") << "a department link does not show";
    EXPECT_EQ(grid.TextMatrix(6, colDescription), "") << "the last grid row stays empty";
}

TEST_F(GridTest, PagesOverlapAfterPageDownAndPageUpNeverLeavesAShortPage)
{
    items(12);
    open();
    move(dirPageDown);
    EXPECT_EQ(page(), names(5, 9)) << "from Bottom the old last row comes first";
    move(dirPageUp);
    EXPECT_EQ(page(), names(1, 5));
    EXPECT_TRUE(texts().isEmpty()) << "no Top of List at the first attempt";
    move(dirPageUp);
    EXPECT_EQ(texts(), QStringList({"ZEL Hot Keys: Top of List"}));
    move(dirPageDown);
    EXPECT_EQ(page(), names(6, 10)) << "from Top the pages do not overlap";
    move(dirPageDown);
    EXPECT_EQ(page(), names(10, 12) << ""
                                    << "");
    EXPECT_TRUE(gbAtEnd);
    move(dirPageDown);
    EXPECT_EQ(page(), names(10, 12) << ""
                                    << "")
        << "page down does nothing at the end";

    // A page up that runs out fills from the top: never a short page.
    gsSearchValue = "ITEM 03";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    gsSearchValue = "ITEM 08";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page(), names(8, 12));
    move(dirPageUp);
    EXPECT_EQ(page(), names(4, 8));
    move(dirPageUp);
    EXPECT_EQ(page(), names(1, 5));
    EXPECT_TRUE(gbAtTop);
}

TEST_F(GridTest, LinesMoveTheHighlightInsideThePageAndTheListAtItsEdges)
{
    items(7);
    open();
    for (int i = 0; i < 4; ++i) move(dirLineDown);
    EXPECT_EQ(grid.Row(), 5);
    move(dirLineDown);
    EXPECT_EQ(page(), names(2, 6));
    move(dirLineDown);
    move(dirLineDown);
    EXPECT_EQ(page(), names(4, 7) << "");
    EXPECT_EQ(texts(), QStringList({"Look Up: End Of List"}));
    for (int i = 0; i < 4; ++i) move(dirLineUp);
    EXPECT_EQ(grid.Row(), 1);
    move(dirLineUp);
    EXPECT_EQ(page().first(), "ITEM 03");
    EXPECT_EQ(gsCursorEnd, "Top");
}

TEST_F(GridTest, AShortTableLeavesBlankRowsAndStopsTheCursor)
{
    items(3);
    open();
    EXPECT_EQ(page(), names(1, 3) << ""
                                  << "");
    EXPECT_TRUE(gbAtEnd);
    move(dirPageDown);
    EXPECT_EQ(page(), names(1, 3) << ""
                                  << "");
    move(dirLineDown);
    move(dirLineDown);
    move(dirLineDown);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(texts(), QStringList({"Look Up: End of the List"}));
}

TEST_F(GridTest, DeletedRecordsNeverShow)
{
    items(14, true);
    open();
    EXPECT_EQ(page(), QStringList({"ITEM 01", "ITEM 02", "ITEM 03", "ITEM 05", "ITEM 06"}));
    move(dirPageDown);
    EXPECT_EQ(page(), QStringList({"ITEM 06", "ITEM 07", "ITEM 09", "ITEM 10", "ITEM 11"}));
    gbWildcard = true;
    gsSearchValue = "ITEM";
    gpGrid_wildcard(&grid, &form);
    EXPECT_EQ(gInventoryMatches.size() - 1, 11);
    for (int i = 1; i < gInventoryMatches.size(); ++i)
        EXPECT_NE(gInventoryMatches[i].text("Status"), "D");
}

TEST_F(GridTest, AnotherStationsChangesAreToleratedBetweenMoves)
{
    items(10);
    open();
    SqliteEngine station(dataPath());
    DbError error;
    ASSERT_TRUE(station.open("TestDB", error));
    QSqlQuery q(station.db());
    ASSERT_TRUE(q.exec("UPDATE invt1 SET Status = 'D' WHERE Description LIKE 'ITEM 06%'"));
    ASSERT_TRUE(q.exec("INSERT INTO invt1 (SL, ItemID, Description, RecordNum) VALUES "
                       "('20000000', 'NEW', 'ITEM 05A', 99)"));
    for (int i = 0; i < 6; ++i) move(dirLineDown);
    EXPECT_EQ(page(), QStringList({"ITEM 03", "ITEM 04", "ITEM 05", "ITEM 05A", "ITEM 07"}));
}

TEST_F(GridTest, SearchJumpsOnThePageOrByKey)
{
    items(20);
    open();
    gsSearchValue = "ITEM 04";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(grid.Row(), 4) << "on the page: only the highlight moves";
    EXPECT_EQ(page(), names(1, 5));
    gsSearchValue = "ITEM 15";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page(), names(15, 19));
    gsSearchValue = "ZZZ";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page().first(), "ITEM 20") << "beyond the last key: the nearest record below";
    gsSearchValue = "";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page(), names(1, 5));
    EXPECT_TRUE(gbAtTop);

    gpInventorySort_set(colSL, &form);
    EXPECT_EQ(form.pad, "--SL");
    gsSearchValue = gfsSL_toStored(gfsSL_normalize("1000001.2"));
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(gsPageCells[1][colSL], "1000001.2");
    gpInventorySort_set(colItemID, &form);
    gsSearchValue = gfsItemID_key("ID7", true);
    gbItemIdSearch = true;
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(gsPageCells[1][colItemID], "ID7");
}

TEST_F(GridTest, WildcardMatchesArePagedInMemory)
{
    items(12);
    open();
    gbWildcard = true;
    gsSearchValue = "1";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page(), QStringList({"ITEM 01", "ITEM 10", "ITEM 11", "ITEM 12", ""}));
    EXPECT_EQ(texts(), QStringList({"ZEL Hot Keys: End of List"}));

    gsSearchValue = "ITEM";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page(), names(1, 5));
    move(dirPageDown);
    EXPECT_EQ(page(), names(6, 10));
    move(dirPageUp);
    EXPECT_EQ(page(), names(1, 5));
    move(dirPageUp);
    EXPECT_EQ(page(), names(1, 5));
    for (int i = 0; i < 3; ++i) move(dirLineDown);
    move(dirLineDown);
    EXPECT_EQ(page(), names(2, 6));
    grid.setRow(1);
    move(dirLineUp);
    EXPECT_EQ(page(), names(1, 5));
    move(dirLineUp);
    EXPECT_EQ(texts(), QStringList({"Look Up: Top Of List"}));

    gsSearchValue = "x' OR 'a'='a";
    gpGrid_wildcard(&grid, &form);
    EXPECT_EQ(texts(), QStringList({"ZEL Hot Keys: No matches found"}));
    gpInventorySort_set(colQuantity, &form);
    gsSearchValue = "ITEM";
    gpGrid_wildcard(&grid, &form);
    EXPECT_TRUE(texts().isEmpty()) << "price: no wildcard, and no word";
}

TEST_F(GridTest, SortTableAndItsBoxes)
{
    items(2);
    open();
    gpInventorySort_set(colDeptName, &form);
    EXPECT_EQ(giSortKey, 0);
    EXPECT_EQ(giScanField, 0);
    EXPECT_EQ(texts(), QStringList({"Department Name: Display Only - No Sorting Available"}));
    gpInventorySort_set(colQuantity, &form);
    EXPECT_EQ(form.pad, "--Price");
    EXPECT_EQ(gsSortFieldName, "Price");
    EXPECT_EQ(giScanField, 10);
    EXPECT_EQ(giSortField, 2);
    gpInventorySort_set(colUPC, &form);
    EXPECT_TRUE(gbUpcSort);
    EXPECT_EQ(gfiSortColumn(), colUPC);
    gpInventorySort_set(colVendor, &form);
    EXPECT_EQ(form.pad, "---Vendor");
    EXPECT_EQ(giInventorySearch, colVendor);
    EXPECT_EQ(form.hidden.last(), 3);

    gpInventorySort_set(colDescription, &form);
    grid.setRow(2);
    gpInventoryAction(0, &grid, &form);
    EXPECT_EQ(gsLookupCode, "10000002");
    EXPECT_TRUE(form.closed);
}

TEST_F(GridTest, UpcOrderSkipsLinkValues)
{
    items(3);
    const char *codes[][2] = {
        {"10000001", "0300"}, {"10000002", "0100"}, {"10000003", "D200"}, {"10000003", "0200"}};
    for (const auto &c : codes) {
        gUpcRecord.clear();
        gUpcRecord.setText("SL", c[0]);
        gUpcRecord.setText("UPC", c[1]);
        gUpcRecord.setNumber("InvUID", QString(c[0]).right(1).toInt());
        QString sql;
        ASSERT_TRUE(gfbDBSM_Record(2, opInsert, 0, false, false, sql));
    }
    open();
    gpInventorySort_set(colUPC, &form);
    gsSearchValue = "";
    ASSERT_TRUE(gfbGrid_search(&grid, &form));
    EXPECT_EQ(page(), QStringList({"ITEM 02", "ITEM 03", "ITEM 01", "", ""}))
        << "the D value gives an empty row";
    EXPECT_EQ(gsPageCells[1][colUPC], "0100");
}
