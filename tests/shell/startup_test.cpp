#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "platform/Instance.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "settings/clsINI_Services.h"
#include "shell/hkeyMain.h"
#include "support/OneBox.h"
#include "support/RunMain.h"
#include "support/StoreDb.h"
#include <QDialog>
#include <QDir>
#include <QLockFile>
#include <QTest>

using namespace platform;
using testing_support::oneBox;
using testing_support::StoreDbTest;

namespace {

class StartupTest : public StoreDbTest {
protected:
    void seed() override
    {
        testing_support::newInstanceKey();
        gIni = clsINI_Services();
        giInventorySearch = giNameSearch = 0;
    }
};

} // namespace

TEST_F(StartupTest, SecondInstanceGetsTheBoxAndChangesNothing)
{
    QLockFile first(Instance::lockPath());
    ASSERT_TRUE(first.tryLock(0));
    const auto before = testing_support::filesUnder(temp.path());
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_TRUE(oneBox(boxes(),
                       "ZEL Hot Keysis already running.\rThis Program Can Only Be Runing Once On "
                       "This Machine",
                       16));
    EXPECT_EQ(testing_support::filesUnder(temp.path()), before) << "settings and data alike";
    EXPECT_FALSE(QFile::exists(appFolder() + "/52.txt")) << "no database connection was made";
}

TEST_F(StartupTest, AStartWithoutAStoreEndsAndOneWithAStoreReadsTheSearchSettings)
{
    SaveSetting("ZEL Settings", "DATABASE", "DATAPATH", dataPath());
    writeDataFile("ZEL.INI", "");
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_TRUE(modal.shown.isEmpty()) << "no set list without a store";
    EXPECT_TRUE(boxes().isEmpty());
    EXPECT_TRUE(gfbDBSM_TableExists("COMMON")) << "an empty database gets its tables";
    EXPECT_FALSE(gfbDBSM_TableExists("invt0"));

    seedCommon(3, "N");
    gpDBSM_Disconnect();
    writeDataFile("ZEL.INI", "[Primary Search Fields]\r\nSearch for Inventory by:=Stock Locater\r\n"
                             "Search for Name by:=ARCode\r\n");
    writeDataFile("HKSET01.SDF", "[SET]First\r\n");
    bool shown = false;
    modal.drive("frmMain", [&](QDialog &form) {
        shown = true;
        QTest::keyClick(&form, Qt::Key_Escape); // closing the main screen ends the program
    });
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_TRUE(shown);
    EXPECT_TRUE(QDir(dataPath() + "/pictures/HotKeys").exists());
    EXPECT_EQ(gsHotKeyPicturePath, dataPath() + "/pictures/HotKeys/");
    EXPECT_EQ(giInventorySearch, 2);
    EXPECT_EQ(giNameSearch, 2);
    EXPECT_EQ(gsStoreNumber, "3");
    EXPECT_FALSE(gbMultiStore);
    EXPECT_TRUE(gfbDBSM_TableExists("invt3"));
    EXPECT_TRUE(gfbDBSM_TableExists("UPC3"));
}

TEST_F(StartupTest, SearchSettingsMapExactlyAndAMissingKeyOrIniIsSaid)
{
    gDataPath.setDataPath(dataPath());
    const struct {
        const char *ini; // nullptr: no ZEL.INI
        int inventory, name;
    } cases[] = {
        {"Search for Inventory by:=Description\r\nSearch for Name by:=Business", 0, 3},
        {"Search for Inventory by:=description\r\nSearch for Name by:=business", 3, 0},
        {"Search for Inventory by:=Vendor ID", 3, 0},
        {"", 3, 0},
        {nullptr, 0, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.ini ? c.ini : "no ZEL.INI");
        QFile::remove(dataPath() + "/ZEL.INI");
        if (c.ini)
            writeDataFile("ZEL.INI", QByteArray("[Primary Search Fields]\r\n") + c.ini);
        giInventorySearch = giNameSearch = 0;
        EXPECT_EQ(gfbSearchFields_read(), c.ini != nullptr);
        EXPECT_EQ(giInventorySearch, c.inventory);
        EXPECT_EQ(giNameSearch, c.name);
    }
    EXPECT_TRUE(
        oneBox(boxes(), "Unable to open ZEL Configuration Settings File, ZEL.INI.", 0, "Error"));
    EXPECT_FALSE(QFile::exists(dataPath() + "/ZEL.INI")) << "nothing is written";
}
