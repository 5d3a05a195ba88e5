#pragma once
#include "database/TableNames.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_StoreTables.h"
#include "database/zelDBSM_Upc.h"
#include "support/DbTest.h"

namespace testing_support {

// The application's tables on a fresh database, made through the database's own
// modules: the COMMON row of store 1, the store's inventory and bar code tables.
class ItemTablesTest : public DbTest {
protected:
    // Store 1, its inventory and bar code tables open.
    virtual void openStore()
    {
        giFileCount = 3;
        gpDBSM_RegisterStoreTables();
        ASSERT_TRUE(gfbDBSM_Connect());
        gpCommon_Register(tblCommon, dataPath(), 0, QString());
        ASSERT_TRUE(gfbDBSM_OpenTable(tblCommon, false));
        insertCommon(1, "N");
        gpInventory_Register(tblInventory, dataPath(), 1, QString());
        gpUpc_Register(tblUpc, dataPath(), 1, QString());
        ASSERT_TRUE(gfbDBSM_Open());
    }
    // Writes the one COMMON row; COMMON is open.
    void insertCommon(int store, const QString &multiStore)
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
    // Inserts an inventory item through the table module; returns its record number.
    int addItem(const QString &sl, const QString &itemId, const QString &description,
                double price = 1.0, const QString &vendor = "ACME")
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
    // Four items of a corner store: two coffees, a cake and apples.
    void addSampleItems()
    {
        addItem("00012345", "COF-1", "COFFEE SMALL CUP TO GO");
        addItem("00012346", "COF-2", "COFFEE LARGE");
        addItem("00020010", "CAKE-1", "CHOCOLATE CAKE");
        addItem("00030000", "APL-1", "APPLES GALA");
    }
    int m_nextRecord = 1;
};

} // namespace testing_support
