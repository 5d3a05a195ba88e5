#include "support/StoreDb.h"
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
    insertCommon(store, multiStore);
}

void StoreDbTest::openStore()
{
    seedCommon(1);
    ASSERT_TRUE(setup());
    ASSERT_TRUE(gfbDBSM_Open());
}

} // namespace testing_support
