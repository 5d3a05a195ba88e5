#include "database/ZelDBSM_MSDE.h"
#include "display/ProgramTest.h"
#include "platform/SettingsStore.h"
#include "platform/ui/MSFlexGrid.h"
#include "shell/frmFirstRun.h"
#include "shell/frmMain.h"
#include "support/CommonRows.h"
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>

using namespace display;

namespace {

// A new workstation: the data folder with its sets is known, no database is named
// and the data folder holds none.
class FirstRunOnDisplay : public ProgramTest {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        for (const char *key : {"Engine", "DBName", "Server", "UserName", "Password"})
            platform::DeleteSetting("ZEL Settings", "DATABASE", key);
        ASSERT_TRUE(QFile::remove(ownFile()));
        ASSERT_TRUE(gfbDBSM_Unconfigured());
    }
    QString ownFile() const { return dataPath() + "/ZELDATA.db"; }
    // The settings store as the next start reads it, from its file.
    QString stored(const QString &key) const
    {
        QSettings file(temp.filePath("settings/ZEL Settings.conf"), QSettings::IniFormat);
        return file.value("DATABASE/" + key, "<none>").toString();
    }
    // The COMMON rows as another program reads them from the file.
    QStringList commonRows() const { return testing_support::commonRowsOf(ownFile()); }
    void expectOwnDatabaseSettings()
    {
        EXPECT_EQ(stored("Engine"), "SQLite");
        EXPECT_EQ(stored("DBName"), "ZELDATA");
        EXPECT_EQ(stored("Server"), shell.computerName().toUpper() + "\\ZEL");
    }
    // Once the store's number and name show in their fields.
    void whenTyped(const QString &number, const QString &name, std::function<void()> act)
    {
        robot.until(
            "the store " + number + " " + name,
            [this, number, name] {
                return form && form->txtStoreNumber->text() == number &&
                       form->txtStoreName->text() == name;
            },
            std::move(act));
    }
    QPointer<frmFirstRun> form;
};

} // namespace

TEST_F(FirstRunOnDisplay, ABadStoreNumberIsRefusedThenAcceptMakesTheDatabaseAndTheSetsShow)
{
    int rows = 0;
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        form = &f;
        EXPECT_EQ(f.windowTitle(), "Set Up the Database");
        EXPECT_TRUE(f.optOwn->isChecked());
        EXPECT_TRUE(f.txtStoreNumber->hasFocus()) << "the store number is ready for typing";
        robot.shot(&f, "first-run");
        expectWhollyOnScreen(&f);
        Robot::type("0");
        Robot::click(f.txtStoreName);
        Robot::type("Main Street Market");
    });
    whenTyped("0", "Main Street Market", [&] { Robot::click(form->cmdOkCancel[0]); });
    robot.on<QMessageBox>([&](QMessageBox &box) {
        EXPECT_EQ(box.text(), "The store number must be a whole number from 1 to 32767.");
        EXPECT_EQ(box.windowTitle(), "Set Up the Database");
        robot.screenShot("first-run-bad-store-number");
        Robot::click(box.button(QMessageBox::Ok));
    });
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        EXPECT_TRUE(f.txtStoreNumber->hasFocus());
        EXPECT_EQ(f.txtStoreNumber->selectedText(), "0") << "the bad number is ready to retype";
        Robot::type("12");
    });
    whenTyped("12", "Main Street Market", [&] { Robot::click(form->cmdOkCancel[0]); });
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        robot.shot(&main, "set-list-after-first-run");
        Robot::click(main.cmdExit);
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 13) << "a heading and the twelve sets of the data folder";
    expectOwnDatabaseSettings();
    EXPECT_EQ(commonRows(), QStringList{"12|Main Street Market|N"});
}

// The keyboard alone: Alt+A reaches the name, F10 accepts; the next start needs no setup.
TEST_F(FirstRunOnDisplay, F10AcceptsAndTheNextStartOpensTheSetList)
{
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        form = &f;
        Robot::type("7");
        Robot::key("alt+a");
        Robot::type("Corner Shop");
    });
    whenTyped("7", "Corner Shop", [] { Robot::key("F10"); });
    robot.on<frmMain>([&](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    expectOwnDatabaseSettings();
    EXPECT_EQ(commonRows(), QStringList{"7|Corner Shop|N"});

    gpDBSM_Disconnect();
    int rows = 0;
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 13);
}

// A box after Cancel would be left open and fail the run.
TEST_F(FirstRunOnDisplay, CancelEndsTheProgramWithoutABoxAndSavesNothing)
{
    robot.on<frmFirstRun>([&](frmFirstRun &f) {
        form = &f;
        Robot::type("3");
    });
    whenTyped("3", "", [&] { Robot::click(form->cmdOkCancel[1]); });
    EXPECT_EQ(runProgram(), 0);
    for (const char *key : {"Engine", "DBName", "Server"}) EXPECT_EQ(stored(key), "<none>") << key;
    EXPECT_FALSE(QFile::exists(ownFile()));
    EXPECT_FALSE(QFile::exists(temp.filePath("app/52.txt"))) << "no connection was tried";
}
