#pragma once
#include "support/ItemTables.h"

namespace testing_support {

// An embedded database as the start-up meets it, with the application's tables.
class StoreDbTest : public ItemTablesTest {
protected:
    // Runs the table set-up of the start; true when the application may go on.
    bool setup();
    // Writes the one COMMON row.
    void seedCommon(int store, const QString &multiStore = "N");
    // Store 1 set up as at start, its inventory and bar code tables open.
    void openStore() override;
};

} // namespace testing_support
