#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/frm_Lookup.h"
#include "lookup/sm_DataGrid.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Twips.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/posButtons.h"
#include "shell/hkeyDBSM_Interface.h"
#include "support/LookupRows.h"
#include "support/StoreDb.h"
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using testing_support::kBusyBox;
using testing_support::kDamagedBox;
using testing_support::StoreDbTest;

namespace {

using testing_support::firstRow;

class LookupScreenTest : public StoreDbTest {
protected:
    void SetUp() override
    {
        StoreDbTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return; // no cluster to run on
        openStore();
        addSampleItems();
        giInventorySearch = 0;
        gLookup = InventoryLookup(); // each test opens the lookup as a new start does
        giLinkOption = 0;
        gsHotKeyPicturePath = dataPath() + "/pictures/HotKeys/";
    }
    void onLookup(std::function<void(frm_Lookup &)> act)
    {
        modal.drive("frm_Lookup", [act](QDialog &d) {
            QCoreApplication::processEvents(); // the form settles as a shown window does
            act(static_cast<frm_Lookup &>(d));
        });
    }
    // Thirty more items, "ITEM 01" to "ITEM 30": the list is longer than a page.
    void moreItems()
    {
        for (int i = 1; i <= 30; ++i)
            addItem(QString::number(40000000 + i), QString("IT-%1").arg(i),
                    QString("ITEM %1").arg(i, 2, 10, QChar('0')));
    }
};

} // namespace

TEST_F(LookupScreenTest, EnterInAnUntouchedBoxAcceptsRowOne)
{
    onLookup([](frm_Lookup &f) {
        EXPECT_EQ(f.windowTitle(), "Find Inventory Item");
        EXPECT_EQ(f.lblPad->text(), "--Description");
        EXPECT_EQ(f.cmdAction[0]->text(), "F10 Accept");
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colDescription), "APPLES GALA");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return);
    });
    EXPECT_EQ(gfsInventory_find(""), "00030000");
    onLookup([](frm_Lookup &f) { QTest::keyClick(f.txtEditValue, Qt::Key_Escape); });
    EXPECT_EQ(gfsInventory_find(""), "");
}

TEST_F(LookupScreenTest, TypedLettersAppearInCapitalsAndTheListFollows)
{
    onLookup([](frm_Lookup &f) {
        QTest::keyClicks(f.txtEditValue, "cof");
        EXPECT_EQ(f.txtEditValue->text(), "COF");
        EXPECT_EQ(f.fgrdItems->TextMatrix(f.fgrdItems->Row(), colDescription), "COFFEE LARGE");
        QTest::keyClick(f.txtEditValue, Qt::Key_Down);
        QTest::keyClick(f.txtEditValue, Qt::Key_F10);
    });
    EXPECT_EQ(gfsInventory_find(""), "00012345");
}

TEST_F(LookupScreenTest, F9ShowsItsBoxAndTwoLookupsKeepTheSort)
{
    onLookup([this](frm_Lookup &f) {
        QTest::keyClick(f.txtEditValue, Qt::Key_F9);
        const auto shown = boxes();
        ASSERT_EQ(shown.size(), 1);
        EXPECT_EQ(shown[0].title, "Department Name");
        EXPECT_EQ(shown[0].text, "Display Only - No Sorting Available");
        EXPECT_FALSE(f.cmdSearch->isHidden());
        EXPECT_FALSE(f.cmdStop->isHidden());
        QTest::keyClick(f.txtEditValue, Qt::Key_F7);
        EXPECT_EQ(f.lblPad->text(), "--Item ID");
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
    onLookup([](frm_Lookup &f) {
        EXPECT_EQ(f.lblPad->text(), "--Item ID") << "the sort of the last lookup";
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colItemID), "APL-1");
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
}

TEST_F(LookupScreenTest, WhileStopShowsF10OnlyStops)
{
    onLookup([](frm_Lookup &f) {
        QTest::keyClick(f.txtEditValue, Qt::Key_F3);
        EXPECT_TRUE(f.ckWildcard->isChecked());
        EXPECT_FALSE(f.cmdStop->isHidden());
        QTest::keyClicks(f.txtEditValue, "cake");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return); // runs the search
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colDescription), "CHOCOLATE CAKE");
        QTest::keyClick(f.txtEditValue, Qt::Key_F10);
        EXPECT_TRUE(gLookup.gbStopSearch);
        EXPECT_FALSE(f.isHidden()) << "F10 only stopped the search";
        QTest::keyClick(f.txtEditValue, Qt::Key_F2);
    });
    EXPECT_EQ(gfsInventory_find(""), "00020010");
    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0].text, "End of List");
}

TEST_F(LookupScreenTest, FindItemFillsTheKeyAndTheSetFileHoldsIt)
{
    onLookup([](frm_Lookup &f) {
        QTest::keyClicks(f.txtEditValue, "COFFEE S");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return);
    });
    modal.drive("frmHotKey_Define", [](QDialog &d) {
        auto &key = static_cast<frmHotKey_Define &>(d);
        QTest::keyClick(key.txtEdit[0], Qt::Key_F3);
        EXPECT_EQ(key.txtEdit[1]->text(), "0001234.5");
        EXPECT_EQ(key.txtEdit[0]->text(), "COFFEE SMALL CU") << "15 characters of the description";
        QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
    });
    frmHotKeys editor;
    editor.HotKeySet = "01";
    editor.Form_Load();
    editor.show();
    QTest::mouseClick(editor.cmdHkGroup[1][0], Qt::LeftButton);
    QTest::keyClick(editor.txtButtonSet, Qt::Key_F10);
    EXPECT_TRUE(readDataFile("HKSET01.SDF")
                    .contains("[BUTTON]1[CAPTION]COFFEE SMALL CU[ITEM]0001234.5[ICON][IDSELECT]No"
                              "[LINKSET][ROOT]\r\n"));

    // By Item ID, and a cancelled lookup changes nothing.
    giLinkOption = 1;
    onLookup([](frm_Lookup &f) {
        QTest::keyClicks(f.txtEditValue, "CHOC");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return);
    });
    onLookup([](frm_Lookup &f) { QTest::keyClick(f.txtEditValue, Qt::Key_Escape); });
    modal.drive("frmHotKey_Define", [](QDialog &d) {
        auto &key = static_cast<frmHotKey_Define &>(d);
        QTest::keyClick(key.txtEdit[0], Qt::Key_F3);
        EXPECT_EQ(key.txtEdit[1]->text(), "CAKE-1");
        EXPECT_EQ(key.txtEdit[0]->text(), "CHOCOLATE CAKE");
        QTest::keyClick(key.txtEdit[0], Qt::Key_F3);
        EXPECT_EQ(key.txtEdit[1]->text(), "CAKE-1");
        QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
    });
    QTest::mouseClick(editor.cmdHkGroup[1][1], Qt::LeftButton);
    EXPECT_EQ(gHotKeyGroups[1].Buttons[2].Item, "CAKE-1");
    EXPECT_EQ(gHotKeyGroups[1].Buttons[2].IdSelect, "Yes");
}

TEST_F(LookupScreenTest, ClearGoesBackToTheFirstRecordWithTheWildcardOff)
{
    moreItems();
    onLookup([](frm_Lookup &f) {
        QTest::keyClicks(f.txtEditValue, "item 2");
        EXPECT_EQ(firstRow(f), "ITEM 20");
        QTest::keyClick(f.txtEditValue, Qt::Key_F12);
        EXPECT_EQ(f.txtEditValue->text(), "");
        EXPECT_EQ(firstRow(f), "APPLES GALA");
        EXPECT_EQ(f.fgrdItems->Row(), 1);

        QTest::keyClick(f.txtEditValue, Qt::Key_F3);
        QTest::keyClicks(f.txtEditValue, "cake");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return);
        EXPECT_EQ(firstRow(f), "CHOCOLATE CAKE");
        QTest::keyClicks(f.txtEditValue, "x");
        EXPECT_EQ(f.txtEditValue->text(), "CAKEX") << "the box takes keys after the search";
        QTest::mouseClick(f.cmdEdit[0], Qt::LeftButton);
        EXPECT_FALSE(f.ckWildcard->isChecked());
        EXPECT_FALSE(gLookup.gbWildcard);
        EXPECT_TRUE(f.cmdSearch->isHidden());
        EXPECT_EQ(firstRow(f), "APPLES GALA");

        QTest::keyClick(f.txtEditValue, Qt::Key_PageDown);
        EXPECT_NE(firstRow(f), "APPLES GALA");
        QTest::mouseClick(f.cmdEdit[0], Qt::LeftButton);
        EXPECT_EQ(firstRow(f), "APPLES GALA") << "also when the search box was empty";
        QTest::keyClicks(f.txtEditValue, "co");
        EXPECT_EQ(f.txtEditValue->text(), "CO") << "and after Clear";
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
    EXPECT_EQ(boxTexts(), QStringList({"End of List"}));
}

TEST_F(LookupScreenTest, AResizeThatKeepsTheRowCountSelectsTheSortColumnAgain)
{
    moreItems();
    onLookup([](frm_Lookup &f) {
        QTest::keyClick(f.txtEditValue, Qt::Key_F7);
        QTest::keyClicks(f.txtEditValue, "it-3");
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colItemID), "IT-3");
        const int rows = gLookup.giGridRows;
        f.resize(f.width() - 40, f.height());
        QCoreApplication::processEvents();
        EXPECT_EQ(gLookup.giGridRows, rows);
        EXPECT_EQ(f.txtEditValue->text(), "") << "the search under way is cleared";
        EXPECT_EQ(f.lblPad->text(), "--Item ID");
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colItemID), "APL-1") << "the first record";
        EXPECT_EQ(f.fgrdItems->Row(), 1);
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
}

// The grid follows the form's width and never holds the form to its own: a size the
// window manager passes through on the way to the maximise must not be answered by a
// resize from the program, which ends the maximise.
TEST_F(LookupScreenTest, TheGridFollowsANarrowerFormAndSetsNoMinimumOnIt)
{
    onLookup([](frm_Lookup &f) {
        const int width = f.width() - 300;
        f.resize(width, f.height());
        QCoreApplication::processEvents();
        EXPECT_EQ(f.width(), width);
        EXPECT_EQ(f.fgrdItems->maximumWidth(), width - platform::twipsToPixels(400));
        EXPECT_LT(f.minimumWidth(), f.fgrdItems->maximumWidth());
        f.resize(f.width(), 10);
        EXPECT_EQ(f.height(), platform::twipsToPixels(1000)) << "the form keeps 1000 twips";
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
}

TEST_F(LookupScreenTest, ABusyOrDamagedDatabaseIsOneBoxPerKeyAndTheListStaysUsable)
{
    moreItems();
    onLookup([this](frm_Lookup &f) {
        const QString first = firstRow(f);
        auto station = lockAsAnotherStation();
        QElapsedTimer clock;
        clock.start();
        QTest::keyClick(f.txtEditValue, Qt::Key_PageDown);
        EXPECT_LT(clock.elapsed(), 10000) << "a bounded wait";
        EXPECT_EQ(boxTexts(), QStringList({kBusyBox}));
        EXPECT_EQ(firstRow(f), first) << "the list stays as it was";

        release(*station);
        QTest::keyClick(f.txtEditValue, Qt::Key_PageDown);
        EXPECT_NE(firstRow(f), first) << "paging works again";
        EXPECT_TRUE(boxTexts().isEmpty());

        damageDatabase();
        QTest::keyClick(f.txtEditValue, Qt::Key_PageDown);
        EXPECT_EQ(boxTexts(), QStringList({kDamagedBox}));
        QTest::keyClicks(f.txtEditValue, "a"); // not on the page: the table is read
        EXPECT_EQ(boxTexts(), QStringList({kDamagedBox}));
        QTest::keyClick(f.txtEditValue, Qt::Key_F4);
        EXPECT_EQ(boxTexts(), QStringList({kDamagedBox}));
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
    const QByteArray log = readDataFile("PVSW.log");
    EXPECT_TRUE(log.contains("database is locked"));
    EXPECT_TRUE(log.contains("file is not a database"));

    EXPECT_EQ(gfsInventory_find(""), "") << "no empty list is shown on a damaged database";
    EXPECT_EQ(boxTexts(), QStringList({kDamagedBox})) << "one box for the open";
}
