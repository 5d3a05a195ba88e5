#include "platform/Paths.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "settings/clsINI_Services.h"
#include "settings/ui/frmSMFILE_PATH.h"
#include "settings/ui/frmSM_DATAPATH2.h"
#include "settings/ui/zelDataPath_Ops.h"
#include "support/HkTest.h"
#include "support/OneBox.h"
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace platform;
using testing_support::HkTest;
using testing_support::oneBox;

namespace {

QString stored(const char *key)
{
    return GetSetting("ZEL Settings", "DATABASE", key, "<none>");
}
void store(const char *key, const QString &v)
{
    SaveSetting("ZEL Settings", "DATABASE", key, v);
}

// Drive C of the suite's paths is a folder of the test.
class DataPathTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        QDir(temp.path()).mkpath("C");
        qputenv("HOTKEYS_DRIVE_C", temp.filePath("C").toLocal8Bit());
        gDataPath = clsDataPath();
        gIni = clsINI_Services();
    }
    void TearDown() override
    {
        qunsetenv("HOTKEYS_DRIVE_C");
        HkTest::TearDown();
    }
};

} // namespace

TEST_F(DataPathTest, FirstStartAsksDefinesCreatesSavesAndGoesOn)
{
    const QString qr = temp.filePath("C") + "/QR";
    dialogs.answer(vbYes); // define it now
    dialogs.answer(vbYes); // create the folder
    modal.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) {
        EXPECT_EQ(f.txtEdit[1]->text(), qr);
        EXPECT_EQ(f.cboEdit->currentText(), "1");
        QTest::mouseClick(f.cmdOkCancel[0], Qt::LeftButton);
    });
    EXPECT_TRUE(gfbZEL_DataPath_open(0));
    EXPECT_TRUE(QDir(qr).exists());
    EXPECT_EQ(QStringList({stored("DATAPATH"), stored("STATIONPATH"), stored("NETWORK"),
                           stored("STATION"), stored("TESTDATA")}),
              QStringList({qr, qr, "False", "1", ""}));
    EXPECT_FALSE(QFile::exists(qr + "/ZEL.INI")) << "gIni has no file during the start-up";
    EXPECT_EQ(nativePath("c:\\QR\\x"), qr + "/x"); // the drive in either case

    EXPECT_EQ(boxTexts(),
              QStringList({"A path to the ZEL Data Files has not been defined\r\rDo "
                           "you want to define it now?",
                           qr + "\rData Path Does Not Exist\rDo you want to create it?"}));

    // The second start goes straight through.
    gDataPath = clsDataPath();
    EXPECT_TRUE(gfbZEL_DataPath_open(0));
    EXPECT_EQ(gDataPath.DataPath(), qr);
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(DataPathTest, StoredValuesAreTrimmedABadNetworkFlagIsFalseAndUpperAltIsCarriedOverOnce)
{
    // upper.alt comes from the program's folder once; the store's own copy stays.
    QFile appAlt(QCoreApplication::applicationDirPath() + "/upper.alt");
    ASSERT_TRUE(appAlt.open(QIODevice::WriteOnly) && appAlt.write("from app") == 8);
    appAlt.close();
    store("DATAPATH", "  " + dataPath() + "/  ");
    store("NETWORK", "   ");
    EXPECT_TRUE(gfbZEL_DataPath_open(51));
    EXPECT_EQ(gDataPath.DataPath(), dataPath());
    EXPECT_FALSE(gDataPath.Network());
    EXPECT_EQ(readDataFile("upper.alt"), "from app");
    writeDataFile("upper.alt", "site's own");

    store("DATAPATH", dataPath() + "//");
    EXPECT_TRUE(gfbZEL_DataPath_open(50));
    appAlt.remove();
    EXPECT_EQ(gDataPath.DataPath(), dataPath() + "/");
    EXPECT_EQ(readDataFile("upper.alt"), "site's own");

    store("NETWORK", "maybe");
    EXPECT_TRUE(gfbZEL_DataPath_open(0));
    EXPECT_FALSE(gDataPath.Network());
    EXPECT_TRUE(boxTexts().value(0).contains("NETWORK is 'maybe'"));
}

TEST_F(DataPathTest, StationAboveTheMaximumBecomesOneAndEachValidationStepSaysWhatFailed)
{
    gDataPath.setMaxStations(50);
    gDataPath.setStation("51");
    gDataPath.setDataPath(dataPath());
    gDataPath.Validate(true);
    EXPECT_TRUE(gDataPath.Valid());
    EXPECT_EQ(gDataPath.Station(), "1");
    EXPECT_EQ(gDataPath.FieldKey(), "STATION");

    gDataPath.setStation("51");
    gDataPath.setDataPath(dataPath() + "/missing");
    gDataPath.Validate(false);
    EXPECT_FALSE(gDataPath.Valid());
    EXPECT_EQ(gDataPath.Station(), "51");
    EXPECT_EQ(gDataPath.FieldKey(), "DATAPATH");
    EXPECT_TRUE(oneBox(boxes(),
                       "Data Path Not Found.\r\rUse the Browse method to find a valid path.", 64,
                       "Validation"));

    gDataPath.setStation("3");
    gDataPath.setDataPath(dataPath());
    gDataPath.setStationPath(dataPath());
    gDataPath.setStationPathEnabled(true);
    gDataPath.setCheckFile("INVT.ZEL");
    gDataPath.Validate(false);
    EXPECT_EQ(gDataPath.FieldKey(), "STATIONPATH");
    writeDataFile("STA3.ZEL", "");
    gDataPath.Validate(false);
    EXPECT_EQ(gDataPath.FieldKey(), "DATAPATH");
    gDataPath.setSupressFileCheck(true);
    gDataPath.Validate(false);
    EXPECT_TRUE(gDataPath.Valid());
    EXPECT_EQ(boxTexts(), QStringList({"Station 3 not in Station Path.\r\rSelect another Station "
                                       "or change the Station Path.",
                                       "Primary Data File Not Found.\r\rThere is no 'INVT.ZEL' "
                                       "file in the specified data path."}));
}

TEST_F(DataPathTest, DeclinedOrFailedCreationKeepsTheDialogOpen)
{
    writeDataFile("afile", "x");
    dialogs.answer(vbYes); // define now
    modal.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) {
        f.txtEdit[1]->setText(dataPath() + "/new");
        dialogs.answer(vbNo); // do not create
        QTest::keyClick(f.txtEdit[1], Qt::Key_F10);
        EXPECT_FALSE(f.isHidden());
        f.txtEdit[1]->setText(dataPath() + "/afile");
        dialogs.answer(vbYes); // create: but it is a file
        QTest::keyClick(f.txtEdit[1], Qt::Key_F10);
        EXPECT_FALSE(f.isHidden());
        f.txtEdit[1]->setText("   ");
        EXPECT_FALSE(f.cmdOkCancel[0]->isEnabled());
        dialogs.answer(vbNo);
        QTest::keyClick(f.txtEdit[1], Qt::Key_F10); // the key still runs Accept
        QTest::keyClick(f.txtEdit[1], Qt::Key_Escape);
        EXPECT_TRUE(gDataPath.Cancelled());
    });
    EXPECT_FALSE(gfbZEL_DataPath_open(0));
    EXPECT_FALSE(QDir(dataPath() + "/new").exists());
    const QStringList texts = boxTexts();
    ASSERT_EQ(texts.size(), 8);
    EXPECT_TRUE(texts[4].startsWith("Unable To Create Path\r"));
    EXPECT_EQ(texts[6], "   \rData Path Does Not Exist\rDo you want to create it?");
    EXPECT_EQ(stored("DATAPATH"), "<none>");
}

TEST_F(DataPathTest, TrainingFlagHelpAndBrowser)
{
    gDataPath.setMaxStations(50);
    gDataPath.setStationNumberEnabled(true);
    gDataPath.setStation("7");
    gDataPath.setDataPath(dataPath());
    frmSM_DATAPATH2 f;
    f.Form_Load();
    f.show();
    f.ckTest->click();
    f.ckTest->click();
    QTest::keyClick(f.txtEdit[1], Qt::Key_F1);
    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 2) << "only checking the box warns";
    EXPECT_EQ(shown[0].title + shown[0].text,
              "CautionChecking this box does not set up a traning directory or change your data "
              "path \r\nIt is a manual switch that turns on or off the training flag on the main "
              "screen ");
    EXPECT_EQ(shown[1].title + shown[1].text.left(52),
              "Station and Data Path HelpA valid data path is necessary before an application");

    modal.drive("frmSMFILE_PATH", [](QDialog &d) { QTest::keyClick(&d, Qt::Key_Escape); });
    QTest::mouseClick(f.cmdBrowsePath[1], Qt::LeftButton);
    EXPECT_EQ(f.txtEdit[1]->text(), dataPath()) << "a cancelled browser changes nothing";

    QDir(dataPath()).mkdir("picked");
    modal.on<frmSMFILE_PATH>([this](frmSMFILE_PATH &b) {
        EXPECT_EQ(b.Path, dataPath());
        b.Path.clear();
        b.lblPath->setText(dataPath() + "/picked");
        QTest::keyClick(&b, Qt::Key_F10);
    });
    QTest::mouseClick(f.cmdBrowsePath[1], Qt::LeftButton);
    EXPECT_EQ(f.txtEdit[1]->text(), dataPath() + "/picked");
}

// A stored folder gone asks to define one, or with the marker folder asks to retry.
TEST_F(DataPathTest, AStoredFolderGoneAsksOrRetriesAndANetworkWithoutPathEnds)
{
    store("DATAPATH", dataPath() + "/share");
    dialogs.answer(vbNo);
    EXPECT_FALSE(gfbZEL_DataPath_open(0));
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_EQ(stored("DATAPATH"), dataPath() + "/share");

    QDir(temp.filePath("C")).mkdir("zelsafe");
    dialogs.answerBy([this] {
        QDir(dataPath()).mkdir("share"); // the share comes back while the box is open
        return vbYes;
    });
    EXPECT_TRUE(gfbZEL_DataPath_open(0));
    EXPECT_TRUE(oneBox(boxes(),
                       "Server not found. Check Server and Network Connections.\r\n Retry?", 36,
                       "Network Error"));

    store("DATAPATH", "");
    store("NETWORK", "True");
    gDataPath = clsDataPath();
    EXPECT_FALSE(gfbZEL_DataPath_open(0));
    EXPECT_TRUE(oneBox(boxes(),
                       "The network is currently down or is not set up properly. Please contact "
                       "your network administrator for help.",
                       0, "Network Not Found"));
}
