#pragma once
#include "support/DbTest.h"

namespace testing_support {

// An embedded database as the start-up meets it, with the application's tables.
class StoreDbTest : public DbTest {
protected:
    // Runs the table set-up of the start; true when the application may go on.
    bool setup();
    // Writes the one COMMON row.
    void seedCommon(int store, const QString &multiStore = "N");
    // Store 1 set up as at start, its inventory and bar code tables open.
    void openStore();
    // Inserts an inventory item through the table module; returns its record number.
    int addItem(const QString &sl, const QString &itemId, const QString &description,
                double price = 1.0, const QString &vendor = "ACME");
    // Four items of a corner store: two coffees, a cake and apples.
    void addSampleItems();
    int m_nextRecord = 1;
};

} // namespace testing_support
