#pragma once
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include "support/DemoSeed.h"
#include "support/HkTest.h"

namespace testing_support {

// The demo store as the demo seeder makes it, its database open.
class DemoStoreTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        const QString seeded = seedDemoStore(dataPath(), temp.filePath("settings"), 0);
        ASSERT_TRUE(seeded.isEmpty()) << seeded.toStdString();
        gsHotKeyPicturePath = dataPath() + "/pictures/HotKeys/";
        ASSERT_TRUE(gfbDBSM_Setup());
        ASSERT_TRUE(gfbDBSM_Open());
    }
    void TearDown() override
    {
        gpDBSM_Disconnect();
        HkTest::TearDown();
    }
};

} // namespace testing_support
