#include "database/ZelDBSM_MSDE.h"
#include "display/ProgramTest.h"
#include "platform/SettingsStore.h"
#include "screens/frmSetExport.h"
#include "screens/frmSetImport.h"
#include "settings/ui/frmSMFILE_PATH.h"
#include "settings/ui/frmSM_DATAPATH2.h"
#include "shell/frmFirstRun.h"
#include "support/CommonRows.h"
#include <QDir>
#include <QFileDialog>

using namespace display;

namespace {

class PackagesOnDisplay : public ProgramTest {
protected:
    // Another store's data folder with sets 01 and 02 of its own and no database
    // yet, on a workstation that names neither.
    void becomeANewStore()
    {
        gpDBSM_Disconnect();
        QDir().mkpath(second() + "/pictures/HotKeys");
        QFile::copy(dataPath() + "/ZEL.INI", second() + "/ZEL.INI");
        for (const char *n : {"01", "02"})
            QFile::copy(dataPath() + "/HKSET05.SDF", second() + "/HKSET" + n + ".SDF");
        platform::SaveSetting("ZEL Settings", "DATABASE", "STATIONPATH", second());
        for (const char *key : {"DATAPATH", "Engine", "DBName", "Server", "UserName", "Password"})
            platform::DeleteSetting("ZEL Settings", "DATABASE", key);
    }
    QString second() const { return temp.filePath("second"); }
    // The file dialog takes a whole path typed into its name field.
    void choose(const QString &file)
    {
        robot.on<QFileDialog>([file](QFileDialog &) {
            Robot::key("ctrl+a");
            Robot::type(file);
            Robot::key("Return");
        });
    }
};

} // namespace

// The demo store exports its main menu with the sets it opens; a new store, set up
// by the data path and first-run screens, with sets of its own under the same
// numbers, imports it.
TEST_F(PackagesOnDisplay, ADemoStorePackageImportsIntoANewStoreMadeByTheDataPathAndFirstRunScreens)
{
    const QString package = temp.filePath("demo.zip");
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdExport); });
    robot.on<frmSetExport>([&](frmSetExport &form) {
        robot.shot("export-sets", &form);
        Robot::key("F10");
    });
    robot.answer("Keys of these sets open 11 more sets", QMessageBox::Yes);
    choose(package);
    robot.answer("The package holds 12 sets, 6 pictures and 37 keys", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdExit); });
    EXPECT_EQ(runProgram(), 0);

    becomeANewStore();
    QPointer<frmSM_DATAPATH2> path;
    robot.answer("A path to the ZEL Data Files has not been defined", QMessageBox::Yes);
    robot.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) {
        path = &f;
        robot.shot("data-path", &f);
        Robot::retype(f.txtEdit[1], second());
    });
    robot.until(
        "the typed data path", [&] { return path->txtEdit[1]->text() == second(); },
        [&] { Robot::click(path->cmdBrowsePath[1]); });
    robot.on<frmSMFILE_PATH>([&](frmSMFILE_PATH &browser) {
        EXPECT_EQ(browser.lblPath->text(), second());
        robot.shot("path-browser", &browser);
        Robot::click(browser.cmdOkCancel[0]);
    });
    robot.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) { Robot::click(f.cmdOkCancel[0]); });
    QPointer<frmFirstRun> setup;
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        setup = &f;
        EXPECT_TRUE(f.txtStoreNumber->hasFocus()) << "the store number is ready for typing";
        robot.shot("first-run", &f);
        expectWhollyOnScreen(&f);
        Robot::type("2");
        Robot::key("alt+a");
        Robot::type("Second Street");
    });
    robot.until(
        "the store 2 Second Street",
        [&] {
            return setup && setup->txtStoreNumber->text() == "2" &&
                   setup->txtStoreName->text() == "Second Street";
        },
        [] { Robot::key("F10"); });
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdImport); });
    choose(package);
    robot.on<frmSetImport>([&](frmSetImport &form) {
        robot.shot("import-preview", &form);
        Robot::click(form.cmdOkCancel[0]);
    });
    robot.answer("12 sets were imported.", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &main) {
        EXPECT_EQ(main.fgrdItems->Rows(), 15)
            << "a heading, its own two sets and the twelve imported";
        Robot::click(main.cmdExit);
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(platform::GetSetting("ZEL Settings", "DATABASE", "DATAPATH", ""), second());
    EXPECT_EQ(testing_support::commonRowsOf(second() + "/ZELDATA.db"),
              QStringList{"2|Second Street|N"});
    const QByteArray menu = readFile(second() + "/HKSET03.SDF");
    EXPECT_TRUE(menu.startsWith("[SET]Main Menu\r\n"));
    EXPECT_TRUE(menu.contains("[CAPTION]Hot Drinks[ITEM][ICON]coffee.jpg[IDSELECT]No[LINKSET]4["));
    EXPECT_EQ(readFile(second() + "/HKSET01.SDF"), readDataFile("HKSET05.SDF"))
        << "its own sets stay";
    EXPECT_TRUE(QFile::exists(second() + "/pictures/HotKeys/coffee.jpg"));
}
