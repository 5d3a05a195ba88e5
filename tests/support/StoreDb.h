#pragma once
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include "support/ItemTables.h"

namespace testing_support {

// An embedded database as the start-up meets it, with the application's tables.
class StoreDbTest : public ItemTablesTest {
protected:
    // Runs the table set-up of the start; true when the application may go on.
    bool setup()
    {
        gpDBSM_Disconnect();
        return gfbDBSM_Setup();
    }
    // Writes the one COMMON row.
    void seedCommon(int store, const QString &multiStore = "N")
    {
        setup(); // makes COMMON, which has no row yet
        insertCommon(store, multiStore);
    }
    // Store 1 set up as at start, its inventory and bar code tables open.
    void openStore() override
    {
        seedCommon(1);
        ASSERT_TRUE(setup());
        ASSERT_TRUE(gfbDBSM_Open());
    }
};

} // namespace testing_support
