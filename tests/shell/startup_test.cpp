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
    // Settings, data and the connection log alike.
    EXPECT_EQ(testing_support::filesUnder(temp.path()), before);
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
    // Closing the main screen ends the program.
    modal.drive("frmMain", [](QDialog &form) { QTest::keyClick(&form, Qt::Key_Escape); });
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_EQ(modal.shown, QStringList({"frmMain"}));
    EXPECT_TRUE(QDir(dataPath() + "/pictures/HotKeys").exists());
    EXPECT_EQ(QString("%1 %2").arg(giInventorySearch).arg(giNameSearch), "2 2");
    EXPECT_EQ(gsStoreNumber, "3");
    EXPECT_TRUE(gfbDBSM_TableExists("invt3"));
}

TEST_F(StartupTest, SearchSettingsMapExactlyAndAMissingKeyOrIniIsSaid)
{
    gDataPath.setDataPath(dataPath());
    // What is read, then the inventory's and the name's search; nullptr: no ZEL.INI.
    const std::pair<const char *, const char *> cases[] = {
        {"Search for Inventory by:=Description\r\nSearch for Name by:=Business", "1 0 3"},
        {"Search for Inventory by:=description\r\nSearch for Name by:=business", "1 3 0"},
        {"Search for Inventory by:=Vendor ID", "1 3 0"},
        {nullptr, "0 0 0"},
    };
    for (const auto &[ini, searches] : cases) {
        QFile::remove(dataPath() + "/ZEL.INI");
        if (ini)
            writeDataFile("ZEL.INI", QByteArray("[Primary Search Fields]\r\n") + ini);
        giInventorySearch = giNameSearch = 0;
        const bool read = gfbSearchFields_read();
        EXPECT_EQ(QString("%1 %2 %3").arg(int(read)).arg(giInventorySearch).arg(giNameSearch),
                  searches)
            << (ini ? ini : "no ZEL.INI");
    }
    EXPECT_TRUE(
        oneBox(boxes(), "Unable to open ZEL Configuration Settings File, ZEL.INI.", 0, "Error"));
    EXPECT_FALSE(QFile::exists(dataPath() + "/ZEL.INI")) << "nothing is written";
}
