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
#include <QSettings>

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
// by the data path and first-run screens (a bad store number refused first), with
// sets of its own under the same numbers, imports it.
TEST_F(PackagesOnDisplay, ADemoStorePackageImportsIntoANewStoreMadeByTheDataPathAndFirstRunScreens)
{
    const QString package = temp.filePath("demo.zip");
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdExport); });
    robot.on<frmSetExport>([&](frmSetExport &form) {
        robot.shot(&form, "export-sets");
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
        robot.shot(&f, "data-path");
        Robot::retype(f.txtEdit[1], second());
    });
    robot.until(
        "the typed data path", [&] { return path->txtEdit[1]->text() == second(); },
        [&] { Robot::click(path->cmdBrowsePath[1]); });
    robot.on<frmSMFILE_PATH>([&](frmSMFILE_PATH &browser) {
        EXPECT_EQ(browser.lblPath->text(), second());
        robot.shot(&browser, "path-browser");
        Robot::click(browser.cmdOkCancel[0]);
    });
    robot.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) { Robot::click(f.cmdOkCancel[0]); });
    QPointer<frmFirstRun> setup;
    const auto whenTyped = [&](const QString &number, std::function<void()> act) {
        robot.until(
            "the store " + number + " Second Street",
            [&setup, number] {
                return setup && setup->txtStoreNumber->text() == number &&
                       setup->txtStoreName->text() == "Second Street";
            },
            std::move(act));
    };
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        setup = &f;
        EXPECT_TRUE(f.txtStoreNumber->hasFocus()) << "the store number is ready for typing";
        robot.shot(&f, "first-run");
        expectWhollyOnScreen(&f);
        Robot::type("0");
        Robot::key("alt+a");
        Robot::type("Second Street");
    });
    whenTyped("0", [&] { Robot::click(setup->cmdOkCancel[0]); });
    robot.answer("The store number must be a whole number from 1 to 32767.", QMessageBox::Ok);
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        EXPECT_TRUE(f.txtStoreNumber->hasFocus());
        EXPECT_EQ(f.txtStoreNumber->selectedText(), "0") << "the bad number is ready to retype";
        Robot::type("2");
    });
    whenTyped("2", [] { Robot::key("F10"); });
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdImport); });
    choose(package);
    robot.on<frmSetImport>([&](frmSetImport &form) {
        robot.shot(&form, "import-preview");
        Robot::click(form.cmdOkCancel[0]);
    });
    robot.answer("12 sets were imported.", QMessageBox::Ok);
    int rows = 0;
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        Robot::click(main.cmdExit);
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 15) << "a heading, its own two sets and the twelve imported";
    EXPECT_EQ(platform::GetSetting("ZEL Settings", "DATABASE", "DATAPATH", ""), second());
    QSettings stored(temp.filePath("settings/ZEL Settings.conf"), QSettings::IniFormat);
    EXPECT_EQ(stored.value("DATABASE/Engine").toString(), "SQLite");
    EXPECT_EQ(stored.value("DATABASE/DBName").toString(), "ZELDATA");
    EXPECT_EQ(stored.value("DATABASE/Server").toString(), shell.computerName().toUpper() + "\\ZEL");
    EXPECT_EQ(testing_support::commonRowsOf(second() + "/ZELDATA.db"),
              QStringList{"2|Second Street|N"});
    const QByteArray menu = readFile(second() + "/HKSET03.SDF");
    EXPECT_TRUE(menu.startsWith("[SET]Main Menu\r\n"));
    EXPECT_TRUE(menu.contains("[CAPTION]Hot Drinks[ITEM][ICON]coffee.jpg[IDSELECT]No[LINKSET]4["));
    EXPECT_EQ(readFile(second() + "/HKSET01.SDF"), readDataFile("HKSET05.SDF"))
        << "its own sets stay";
    EXPECT_TRUE(QFile::exists(second() + "/pictures/HotKeys/coffee.jpg"));
}
