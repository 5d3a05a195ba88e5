#include "database/UpcRows.h"
#include "database/zelDBSM_InventoryBulk.h"
#include "support/ItemTables.h"

namespace {
class BulkReadTest : public testing_support::ItemTablesTest,
                     public testing_support::OnEachEngine {};
} // namespace

// Three batches of codes, the items among them at the first place, in the middle
// batch and at the last, which only the padded last batch holds; codes compared
// as the keyed reads compare them, and a typed quote is only ever a value.
TEST_P(BulkReadTest, BulkReadsFindEveryItemInEveryBatchAsTheKeyedReadsDo)
{
    openStore();
    addItem("00012345", "COF-1", "COFFEE");
    addItem("00020010", "CAKE-1", "CAKE");
    addItem("00030000", "TEA-1%", "TEA");
    ASSERT_TRUE(testing_support::addUpc("00020010", "0700000000017"));

    QStringList sls, ids;
    for (int i = 0; i < 1201; ++i) {
        sls << QString("9%1").arg(i, 7, 10, QChar('0'));
        ids << QString("NONE-%1'").arg(i);
    }
    sls[0] = "00012345";
    sls[700] = "00020010";
    sls[1200] = "00030000";
    ids[0] = " cof-1 ";
    ids[700] = "tea-1%";
    ids[1200] = "O'NE%";
    const DbAction action;
    QHash<QString, InventoryBulkItem> bySL, byId;
    ASSERT_TRUE(gfbInventory_ReadMany(sls, false, bySL));
    ASSERT_TRUE(gfbInventory_ReadMany(ids, true, byId));
    EXPECT_EQ(bySL.size(), 3);
    for (const char *sl : {"00012345", "00020010", "00030000"})
        EXPECT_EQ(bySL.value(gfsInventory_BulkKey(sl)).sl.trimmed(), sl);
    EXPECT_EQ(bySL.value(gfsInventory_BulkKey("00020010")).description, "CAKE");
    EXPECT_EQ(byId.size(), 2);
    EXPECT_EQ(byId.value(gfsInventory_BulkKey(ids[0])).itemId, "COF-1");
    EXPECT_EQ(byId.value(gfsInventory_BulkKey(ids[700])).description, "TEA");

    QHash<QString, QStringList> codes;
    QHash<QString, QString> items;
    ASSERT_TRUE(gfbUpc_CodesOfItems(sls, codes));
    ASSERT_TRUE(gfbUpc_ItemsOfCodes({"0700000000017", "O'NE", "0700000000024"}, items));
    EXPECT_EQ(codes.value(gfsInventory_BulkKey("00020010")), QStringList{"0700000000017"});
    EXPECT_EQ(codes.size(), 1);
    EXPECT_EQ(items.value("0700000000017").trimmed(), "00020010");
    EXPECT_EQ(items.size(), 1);
    EXPECT_FALSE(gfbDBSM_ActionFailed());
}

INSTANTIATE_TEST_SUITE_P(Engines, BulkReadTest, testing_support::kEachEngine,
                         testing_support::engineName);
