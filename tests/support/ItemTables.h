#pragma once
#include "support/DbTest.h"

namespace testing_support {

// The application's tables on a fresh database, made through the database's own
// modules: the COMMON row of store 1, the store's inventory and bar code tables.
class ItemTablesTest : public DbTest {
protected:
    // Store 1, its inventory and bar code tables open.
    virtual void openStore();
    // Writes the one COMMON row; COMMON is open.
    void insertCommon(int store, const QString &multiStore);
    // Inserts an inventory item through the table module; returns its record number.
    int addItem(const QString &sl, const QString &itemId, const QString &description,
                double price = 1.0, const QString &vendor = "ACME");
    // Four items of a corner store: two coffees, a cake and apples.
    void addSampleItems();
    int m_nextRecord = 1;
};

} // namespace testing_support
