#include "common/zelFormats.h"
#include "database/DbEngine.h"
#include "database/TableNames.h"
#include "database/UpcRows.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/model/InventoryLookup.h"
#include "support/ItemTables.h"
#include <QSqlError>
#include <QSqlQuery>

using testing_support::addUpc;
using testing_support::ItemTablesTest;

namespace {

// The lookup without a screen, on each engine of the run: items "ITEM 01" to
// "ITEM nn", S/L 10000001 on, pages of five rows.
class LookupModelTest : public ItemTablesTest, public testing_support::OnEachEngine {
protected:
    void SetUp() override
    {
        ItemTablesTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return; // no cluster to run on
        openStore();
        giInventorySearch = colDescription;
        lookup.giGridRows = 6;
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
        lookup.setup();
        lookup.prepare();
        page = lookup.load();
        ASSERT_TRUE(page.ok);
    }
    // The descriptions of the page's rows, as the grid shows them.
    QStringList shown() const
    {
        QStringList rows;
        for (int r = 1; r < page.rows.size() - 2; ++r) rows << page.rows[r][colDescription];
        return rows;
    }
    QStringList told() const
    {
        QStringList t;
        for (const LookupMessage &m : page.messages) t << m.title + ": " + m.text;
        return t;
    }
    // One user action and what the list shows after it.
    struct Step {
        int direction;
        QStringList rows;
        int cursor;
        QStringList told;
    };
    void walk(std::initializer_list<Step> steps)
    {
        int i = 0;
        for (const Step &s : steps) {
            page = lookup.move(s.direction);
            SCOPED_TRACE(i++);
            EXPECT_EQ(shown(), s.rows);
            EXPECT_EQ(page.cursor, s.cursor);
            EXPECT_EQ(told(), s.told);
        }
    }
    InventoryLookup lookup;
    LookupPage page;
};

QStringList names(int from, int to, int blanks = 0)
{
    QStringList out;
    for (int i = from; i <= to; ++i) out << QString("ITEM %1").arg(i, 2, 10, QChar('0'));
    for (int i = 0; i < blanks; ++i) out << "";
    return out;
}

} // namespace

TEST_P(LookupModelTest, TheFirstPageShowsEveryFormatInKeyOrderAndBarCodeOrderSkipsLinks)
{
    items(12);
    glDBSM_Execute("UPDATE invt1 SET QtyOnHand = 2.5, SubDescription = 'BOX' WHERE RecordNum = 1");
    ASSERT_TRUE(addUpc("10000001", "012345678905", 1));
    ASSERT_TRUE(addUpc("10000002", "D0001", 2));
    ASSERT_TRUE(addUpc("10000003", "0100", 3));
    open();
    EXPECT_EQ(shown(), names(1, 5));
    const QStringList &first = page.rows[1];
    EXPECT_EQ(QStringList({first[colSL], first[colPrice], first[colQuantity], first[colSubDesc],
                           first[colUPC]}),
              QStringList({"1000000.1", "1.25", "2.5", "BOX", "012345678905"}));
    EXPECT_EQ(page.rows[2][colUPC], "") << "a department link does not show";
    lookup.sortBy(colUPC);
    page = lookup.clear(true);
    // In bar code order a department link gives an empty row.
    EXPECT_EQ(shown(), QStringList({"ITEM 03", "ITEM 01", "", "", ""}));
}

TEST_P(LookupModelTest, PagesAndLinesMoveAsTheListDoesAndTheHighlightStopsAtItsEnd)
{
    items(12);
    open();
    walk({
        {dirPageDown, names(5, 9), 1, {}}, // from Bottom the old last row comes first
        {dirPageUp, names(1, 5), 1, {}},
        {dirPageUp, names(1, 5), 1, {": Top of List"}},
        {dirPageDown, names(6, 10), 1, {}}, // from Top the pages do not overlap
        {dirPageDown, names(10, 12, 2), 1, {}},
        {dirPageDown, names(10, 12, 2), 1, {}}, // nothing at the end
        {dirLineDown, names(10, 12, 2), 2, {}},
        {dirLineDown, names(10, 12, 2), 3, {}},
        {dirLineDown, names(10, 12, 2), 3, {"Look Up: End of the List"}},
        {dirPageUp, names(6, 10), 3, {}},
        {dirLineUp, names(6, 10), 2, {}},
        {dirLineUp, names(6, 10), 1, {}},
        {dirLineUp, names(5, 9), 1, {}},
    });
    EXPECT_EQ(lookup.gsCursorEnd, "Top");
}

TEST_P(LookupModelTest, ASearchMovesTheHighlightOnThePageOrReadsByTheKey)
{
    items(20);
    // Stored as another program may store it, quote and all.
    glDBSM_Execute("INSERT INTO invt1 (SL, ItemID, Description, Status, RecordNum) VALUES "
                   "('20000000', 'A0', 'O''NEIL TEA', ' ', 100)");
    addItem("20000001", "A1", "ONION"); // where a search that lost the quote lands
    open();
    const struct {
        int column;
        QString typed;
        QStringList rows;
        int cursor;
    } cases[] = {
        {colDescription, "ITEM 04", names(1, 5), 4},
        {colDescription, "o'neil", {"O'NEIL TEA", "ONION", "", "", ""}, 1},
        // Beyond the last key: the nearest below.
        {colDescription, "ZZZ", {"ONION", "", "", "", ""}, 1},
        {colSL, "1000001.2", names(12, 16), 1},
        {colItemID, "ID7", names(7, 9, 2), 1},
    };
    for (const auto &c : cases) {
        page = lookup.sortBy(c.column);
        page = lookup.type(c.typed);
        EXPECT_EQ(shown(), c.rows) << c.typed.toStdString();
        EXPECT_EQ(page.cursor, c.cursor) << c.typed.toStdString();
    }
}

TEST_P(LookupModelTest, WildcardMatchesArePagedInMemoryWithoutDeletedItems)
{
    items(14, true);
    int sl = 20000000;
    for (const char *description : {"50% OFF MUG", "500 OFF MUG", "[A] BRACKET", "PATH\\TO"})
        addItem(QString::number(sl++), description, description);
    open();
    lookup.gbWildcard = true;
    page = lookup.search("1");
    EXPECT_EQ(shown(), QStringList({"ITEM 01", "ITEM 10", "ITEM 11", "ITEM 13", "ITEM 14"}));
    page = lookup.search("ITEM");
    // ITEM 04, 08 and 12 are deleted.
    const QStringList all = {"ITEM 01", "ITEM 02", "ITEM 03", "ITEM 05", "ITEM 06", "ITEM 07",
                             "ITEM 09", "ITEM 10", "ITEM 11", "ITEM 13", "ITEM 14"};
    EXPECT_EQ(shown(), all.mid(0, 5));
    walk({
        {dirPageDown, all.mid(5, 5), 1, {}},
        {dirPageUp, all.mid(0, 5), 1, {}},
        {dirLineUp, all.mid(0, 5), 1, {"Look Up: Top Of List"}},
        {dirPageDown, all.mid(5, 5), 1, {}},
        {dirPageDown, all.mid(10, 1) + QStringList(4, ""), 1, {": End of List"}},
    });

    // Typed pattern characters are the characters themselves.
    const struct {
        int column;
        QString typed;
        QStringList found, told;
    } words[] = {
        {colDescription, "0%", {"50% OFF MUG"}, {": End of List"}},
        {colDescription, "50_", {}, {": No matches found"}},
        {colDescription, "[A]", {"[A] BRACKET"}, {": End of List"}},
        {colDescription, "H\\T", {"PATH\\TO"}, {": End of List"}},
        {colDescription, "OFF MUG", {"50% OFF MUG", "500 OFF MUG"}, {": End of List"}},
        {colDescription, "x' OR 'a'='a", {}, {": No matches found"}},
        {colDescription, QString("ITEM") + QChar(0), {}, {": No matches found"}},
        {colQuantity, "ITEM", {}, {}}, // price: no wildcard, and no word
    };
    for (const auto &w : words) {
        lookup.sortBy(w.column);
        page = lookup.wildcard(w.typed);
        QStringList found;
        for (int i = 1; i < lookup.gInventoryMatches.size(); ++i)
            found << lookup.gInventoryMatches[i].text("Description").trimmed();
        EXPECT_EQ(found, w.found) << w.typed.toStdString();
        EXPECT_EQ(told(), w.told) << w.typed.toStdString();
    }
}

// The sort caption of each column; a column without a key of its own is scanned
// in record order and cannot be sorted.
TEST_P(LookupModelTest, EachColumnSortsByItsKeyOrIsScanned)
{
    items(2);
    open();
    const struct {
        int column;
        QString caption;
        qint16 key;
        int scan = -1;
    } sorts[] = {
        {colDescription, "--Description", invKeyDescription},
        {colSL, "--SL", invKeySL},
        {colUPC, "--UPC", invKeyItemID},
        {colVendor, "---Vendor", invKeyVendorSL},
        {colQuantity, "--Price", invKeyDescription, gfiInventoryField("QtyOnHand")},
        {colDeptName, "", invKeyRecordNum, gfiInventoryField("SL")},
    };
    for (const auto &s : sorts) {
        EXPECT_EQ(lookup.sortBy(s.column).sortCaption, s.caption);
        EXPECT_EQ(lookup.giSortKey, s.key) << s.column;
        EXPECT_EQ(lookup.giScanField, s.scan) << s.column;
    }
    EXPECT_EQ(lookup.sortColumn(), colUID);
}

TEST_P(LookupModelTest, AnotherStationsChangesAreSeenAtTheNextMove)
{
    items(10);
    open();
    auto station = anotherStation();
    QSqlQuery q(station->db());
    ASSERT_TRUE(q.exec("UPDATE invt1 SET Status = 'D' WHERE RecordNum = 6"))
        << q.lastError().text().toStdString();
    ASSERT_TRUE(q.exec("INSERT INTO invt1 (SL, ItemID, Description, Status, RecordNum) VALUES "
                       "('20000000', 'NEW', 'ITEM 05A', ' ', 99)"));
    for (int i = 0; i < 6; ++i) page = lookup.move(dirLineDown);
    EXPECT_EQ(shown(), QStringList({"ITEM 03", "ITEM 04", "ITEM 05", "ITEM 05A", "ITEM 07"}));
}

INSTANTIATE_TEST_SUITE_P(Engines, LookupModelTest, testing_support::kEachEngine,
                         testing_support::engineName);
