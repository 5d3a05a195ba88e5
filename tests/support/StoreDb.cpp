#include "support/StoreDb.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"

namespace testing_support {

bool StoreDbTest::setup()
{
    gpDBSM_Disconnect();
    return gfbDBSM_Setup();
}

void StoreDbTest::seedCommon(int store, const QString &multiStore)
{
    setup(); // makes COMMON, which has no row yet
    gCommonRecord.clear();
    gCommonRecord.setText("Cname", "Corner Grocery");
    gCommonRecord.setText("DupID", "1");
    gCommonRecord.setNumber("StoreNumber", store);
    gCommonRecord.setText("MultiStore", multiStore);
    QString sql;
    ASSERT_TRUE(gfbDBSM_Record(0, opInsert, 0, false, false, sql)) << gsInsertError.toStdString();
}

void StoreDbTest::openStore()
{
    seedCommon(1);
    ASSERT_TRUE(setup());
    ASSERT_TRUE(gfbDBSM_Open());
}

int StoreDbTest::addItem(const QString &sl, const QString &itemId, const QString &description,
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
    EXPECT_TRUE(gfbDBSM_Record(1, opInsert, 0, false, false, sql)) << gsInsertError.toStdString();
    return m_nextRecord++;
}

void StoreDbTest::addSampleItems()
{
    addItem("00012345", "COF-1", "COFFEE SMALL CUP TO GO");
    addItem("00012346", "COF-2", "COFFEE LARGE");
    addItem("00020010", "CAKE-1", "CHOCOLATE CAKE");
    addItem("00030000", "APL-1", "APPLES GALA");
}

} // namespace testing_support
