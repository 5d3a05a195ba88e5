#include "support/ItemTables.h"
#include "database/TableNames.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_StoreTables.h"
#include "database/zelDBSM_Upc.h"

namespace testing_support {

void ItemTablesTest::openStore()
{
    const int store = 1;
    giFileCount = 3;
    gpDBSM_RegisterStoreTables();
    ASSERT_TRUE(gfbDBSM_Connect());
    gpCommon_Register(tblCommon, dataPath(), 0, QString());
    ASSERT_TRUE(gfbDBSM_OpenTable(tblCommon, false));
    insertCommon(store, "N");
    gpInventory_Register(tblInventory, dataPath(), store, QString());
    gpUpc_Register(tblUpc, dataPath(), store, QString());
    ASSERT_TRUE(gfbDBSM_Open());
}

void ItemTablesTest::insertCommon(int store, const QString &multiStore)
{
    gCommonRecord.clear();
    gCommonRecord.setText("Cname", "Corner Grocery");
    gCommonRecord.setText("DupID", "1");
    gCommonRecord.setNumber("StoreNumber", store);
    gCommonRecord.setText("MultiStore", multiStore);
    QString sql;
    ASSERT_TRUE(gfbDBSM_Record(tblCommon, opInsert, 0, false, false, sql))
        << gsInsertError.toStdString();
}

int ItemTablesTest::addItem(const QString &sl, const QString &itemId, const QString &description,
                            double price, const QString &vendor)
{
    gpInventory_Clear();
    gInventoryRecord.setText("SL", sl);
    gInventoryRecord.setText("ItemID", itemId);
    gInventoryRecord.setText("Description", description);
    gInventoryRecord.setText("VendorCode", vendor);
    gInventoryRecord.setNumber("Price", price);
    gInventoryRecord.setNumber("RecordNum", m_nextRecord);
    QString sql;
    EXPECT_TRUE(gfbDBSM_Record(tblInventory, opInsert, 0, false, false, sql))
        << gsInsertError.toStdString();
    return m_nextRecord++;
}

void ItemTablesTest::addSampleItems()
{
    addItem("00012345", "COF-1", "COFFEE SMALL CUP TO GO");
    addItem("00012346", "COF-2", "COFFEE LARGE");
    addItem("00020010", "CAKE-1", "CHOCOLATE CAKE");
    addItem("00030000", "APL-1", "APPLES GALA");
}

} // namespace testing_support
