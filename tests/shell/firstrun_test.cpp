#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "platform/AppInfo.h"
#include "platform/SettingsStore.h"
#include "settings/clsINI_Services.h"
#include "shell/frmFirstRun.h"
#include "shell/hkeyDBSM_Setup.h"
#include "shell/hkeyMain.h"
#include "support/CommonRows.h"
#include "support/HkTest.h"
#include "support/OneBox.h"
#include "support/RunMain.h"
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTest>

using namespace platform;
using testing_support::HkTest;

namespace {

// A workstation on which only the data folder is known.
class FirstRunTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        QDir(temp.path()).mkpath("app");
        setApplicationFolder(temp.filePath("app"));
        testing_support::newInstanceKey();
        SaveSetting("ZEL Settings", "DATABASE", "DATAPATH", dataPath());
        writeDataFile("ZEL.INI", "[Primary Search Fields]\r\n");
        gIni = clsINI_Services();
        gsStoreNumber.clear();
    }
    void TearDown() override
    {
        gpDBSM_Disconnect();
        setApplicationFolder(QString());
        HkTest::TearDown();
    }
    // The database's settings as the next start reads them, from their file; "-": none.
    QString stored() const
    {
        QSettings file(temp.filePath("settings/ZEL Settings.conf"), QSettings::IniFormat);
        QStringList values;
        for (const char *key : {"Engine", "DBName", "Server", "UserName", "Password"})
            values << file.value(QString("DATABASE/") + key, "-").toString();
        return values.join('|');
    }
    // Types a store into the form and accepts it with F10.
    static void typeStore(frmFirstRun &form, const QString &number, const QString &name)
    {
        QTest::keyClicks(form.txtStoreNumber, number);
        QTest::keyClicks(form.txtStoreName, name);
        QTest::keyClick(form.txtStoreName, Qt::Key_F10);
    }
    void closeMainScreen()
    {
        modal.drive("frmMain", [](QDialog &form) { QTest::keyClick(&form, Qt::Key_Escape); });
    }
    testing::AssertionResult said(int style, const QString &text)
    {
        return testing_support::oneBox(boxes(), text, style, "Set Up the Database");
    }
    QString databaseFile() const { return QDir::toNativeSeparators(dataPath() + "/ZELDATA.db"); }
};

} // namespace

TEST_F(FirstRunTest, TheKeyboardReachesEveryChoiceAndCancelEndsSilentlyLeavingNothingBehind)
{
    modal.on<frmFirstRun>([&](frmFirstRun &form) {
        QApplication::setActiveWindow(&form);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        EXPECT_TRUE(form.txtStoreNumber->hasFocus()) << "the first field is ready for typing";
        QTest::keyClicks(form.txtStoreNumber, "3");
        QTest::keyClick(&form, Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return form.optServer->isChecked(); }));
        EXPECT_TRUE(form.fraServer->isEnabled());
        QTest::keyClick(&form, Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(form.txtServer->hasFocus());
        QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return form.optOwn->isChecked(); }));
        QTest::keyClick(&form, Qt::Key_A, Qt::AltModifier);
        EXPECT_EQ(form.focusWidget(), form.txtStoreName);
        QTest::keyClick(form.txtStoreName, Qt::Key_Escape);
    });
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_EQ(modal.shown, QStringList({"frmFirstRun"}));
    EXPECT_TRUE(boxes().isEmpty());
    EXPECT_EQ(stored(), "-|-|-|-|-");
    EXPECT_FALSE(QFile::exists(dataPath() + "/ZELDATA.db"));
}

TEST_F(FirstRunTest, TheSuitesSettingsDecideWhetherTheStartAsks)
{
    // An engine without a server ends at once, as a workstation without a server always has.
    SaveSetting("ZEL Settings", "DATABASE", "Engine", "SQLite");
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_TRUE(modal.shown.isEmpty() && boxes().isEmpty());

    // Server settings are the suite's keys; SQL Server, the suite's engine, has no key of ours.
    DeleteSetting("ZEL Settings", "DATABASE", "Engine");
    gpDBSM_SaveSettings({"", "STOREDATA", "STOREPC\\ZEL", "clerk", "p=w;d"});
    EXPECT_EQ(stored(), "-|STOREDATA|STOREPC\\ZEL|clerk|p=w;d");
    EXPECT_FALSE(gfbDBSM_Unconfigured());
    SaveSetting("ZEL Settings", "DATABASE", "Server", "  ");
    EXPECT_TRUE(gfbDBSM_Unconfigured()) << "a blank server names nothing";
}

TEST_F(FirstRunTest, StoreNumberNameAndFileAreCheckedAndNothingTypedIsLost)
{
    frmFirstRun form;
    form.Form_Load();
    form.show();
    for (const char *bad : {"", "0", "-3", "40000", "12a", "1.5"}) {
        form.txtStoreNumber->setText(bad);
        form.txtStoreName->setText("Harbour Store");
        QTest::mouseClick(form.cmdOkCancel[0], Qt::LeftButton);
        EXPECT_TRUE(said(48, "The store number must be a whole number from 1 to 32767.")) << bad;
        EXPECT_EQ(form.txtStoreNumber->text() + form.txtStoreName->text(),
                  bad + QString("Harbour Store"));
        EXPECT_EQ(form.focusWidget(), form.txtStoreNumber);
    }
    form.txtStoreNumber->setText(" 7 ");
    form.txtStoreName->setText("   ");
    QTest::keyClick(form.txtStoreNumber, Qt::Key_F10);
    EXPECT_TRUE(said(48, "Type the store's name."));
    EXPECT_EQ(form.focusWidget(), form.txtStoreName);

    QDir(dataPath()).mkpath("ZELDATA.db"); // a folder where the file would go
    QTest::keyClicks(form.txtStoreName, "Dockside");
    QTest::keyClick(form.txtStoreName, Qt::Key_F10);
    const QString shown = boxTexts().join('\n');
    EXPECT_TRUE(shown.startsWith("The database file " + databaseFile() + " could not be made: ") &&
                shown.endsWith("Check that the data folder can be written, or choose the "
                               "store's database server."))
        << shown.toStdString();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.txtStoreNumber->text() + form.txtStoreName->text(), " 7 Dockside");
    EXPECT_EQ(stored(), "-|-|-|-|-");
    EXPECT_TRUE(QFileInfo(dataPath() + "/ZELDATA.db").isDir())
        << "nothing of the user's is removed";
}

// Another station's database in the data folder: while its store cannot be used
// nothing is saved; once it can, it is used as it is.
TEST_F(FirstRunTest, ADatabaseAnotherStationMadeIsKeptAsItIsAndUsedOnceItsStoreIsValid)
{
    QString message;
    ASSERT_EQ(gfDBSM_CreateOwn(4, "North Store", message), OwnDatabase::Created);
    ASSERT_TRUE(gfbDBSM_Setup());
    ASSERT_EQ(glDBSM_Execute("UPDATE COMMON SET StoreNumber = -1"), 1);
    gpDBSM_Disconnect();
    DeleteSetting("ZEL Settings", "DATABASE", "Engine");
    SaveSetting("ZEL Settings", "DATABASE", "DBName", "");
    SaveSetting("ZEL Settings", "DATABASE", "Server", "");

    frmFirstRun form;
    form.Form_Load();
    form.show();
    EXPECT_TRUE(form.lblOwnFile->text().contains("already holds the database"))
        << "the screen says so before anything is typed";
    typeStore(form, "9", "Other");
    const QStringList shown = boxTexts();
    EXPECT_TRUE(shown.value(0).startsWith("The store number in the COMMON table is -1."));
    EXPECT_EQ(shown.value(1), "The database " + databaseFile() +
                                  " holds a store that cannot be used.\rNothing has been changed "
                                  "on this workstation.");
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(stored(), "-|||qx|");
    EXPECT_TRUE(gfbDBSM_Unconfigured()) << "the next start asks again";
    EXPECT_EQ(testing_support::commonRowsOf(databaseFile()), QStringList({"-1|North Store|N"}))
        << "another station's database is never removed or changed";
    form.hide();

    gpDBSM_Disconnect();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "fix");
        db.setDatabaseName(databaseFile());
        ASSERT_TRUE(db.open());
        db.exec("UPDATE COMMON SET StoreNumber = 4");
    }
    QSqlDatabase::removeDatabase("fix");
    modal.on<frmFirstRun>([&](frmFirstRun &f) {
        typeStore(f, "9", "Other");
        EXPECT_TRUE(
            said(64, "The data folder already holds a database, " + databaseFile() +
                         ", for store 4 (North Store).\rThis workstation uses it as it is; the "
                         "store number and name typed here are not stored."));
    });
    closeMainScreen();
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_EQ(modal.shown, QStringList({"frmFirstRun", "frmMain"}));
    EXPECT_EQ(gsStoreNumber, "4");
    EXPECT_EQ(testing_support::commonRowsOf(databaseFile()), QStringList({"4|North Store|N"}));
}

TEST_F(FirstRunTest, ServerChoiceIsCheckedBeforeAnythingIsWritten)
{
    SaveSetting("ZEL Settings", "DATABASE", "DBName", "STOREDATA");
    frmFirstRun form;
    form.Form_Load();
    form.show();
    EXPECT_EQ(form.cboEngine->itemText(0), "SQL Server");
    EXPECT_EQ(form.txtDatabase->text(), "STOREDATA") << "what the suite keeps is offered";
    EXPECT_EQ(form.txtUser->text(), "qx");

    QTest::mouseClick(form.optServer, Qt::LeftButton, {}, QPoint(24, form.optServer->height() / 2));
    EXPECT_TRUE(form.fraServer->isEnabled() && !form.fraOwn->isEnabled());
    QTest::keyClick(form.txtServer, Qt::Key_F10);
    EXPECT_TRUE(said(48, "Type the name of the store's database server, as machine\\instance (for "
                         "example STOREPC\\ZEL)."));
    form.txtDatabase->clear();
    QTest::keyClicks(form.txtServer, "127.0.0.1,1");
    QTest::keyClick(form.txtServer, Qt::Key_F10);
    EXPECT_TRUE(said(48, "Type the name of the store's database on the server."));
    EXPECT_EQ(form.focusWidget(), form.txtDatabase);

    // No server answers here: the screen stays open with everything typed.
    QTest::keyClicks(form.txtDatabase, "STOREDATA");
    QTest::keyClicks(form.txtPassword, "pw");
    QTest::keyClick(form.txtPassword, Qt::Key_F10);
    EXPECT_TRUE(boxTexts().value(0).startsWith("The server 127.0.0.1,1 could not be reached:\r"));
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.txtServer->text(), "127.0.0.1,1");
    EXPECT_EQ(form.txtPassword->text(), "pw");
    EXPECT_EQ(stored(), "-|STOREDATA|-|-|-");
}

TEST_F(FirstRunTest, OwnDatabaseIsMadeWithTheTablesAndTheStoreAlsoAfterAFirstRunWasCutOff)
{
    // As left by a first run that ended between the settings and the store's row.
    gpDBSM_SaveSettings({"SQLite", "ZELDATA", "TESTPC\\ZEL", "qx", ""});
    ASSERT_TRUE(SqliteEngine::create(dataPath() + "/ZELDATA.db", nullptr));
    modal.on<frmFirstRun>([&](frmFirstRun &form) {
        EXPECT_TRUE(form.optOwn->isChecked());
        EXPECT_FALSE(form.fraServer->isEnabled());
        typeStore(form, "12", "Main Street Market");
    });
    closeMainScreen();
    EXPECT_EQ(testing_support::runMain(), 0);
    EXPECT_EQ(modal.shown, QStringList({"frmFirstRun", "frmMain"}));
    EXPECT_EQ(testing_support::commonRowsOf(dataPath() + "/ZELDATA.db"),
              QStringList({"12|Main Street Market|N"}));
    EXPECT_EQ(gsStoreNumber, "12");
    EXPECT_TRUE(gfbDBSM_TableExists("INVT12"));
}
