#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/frm_Lookup.h"
#include "lookup/sm_DataGrid.h"
#include "platform/MSFlexGrid.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/posButtons.h"
#include "shell/hkeyDBSM_Interface.h"
#include "support/StoreDb.h"
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using testing_support::StoreDbTest;

namespace {

class LookupScreenTest : public StoreDbTest {
protected:
    void SetUp() override
    {
        StoreDbTest::SetUp();
        openStore();
        addItem("00012345", "COF-1", "COFFEE SMALL CUP TO GO");
        addItem("00012346", "COF-2", "COFFEE LARGE");
        addItem("00020010", "CAKE-1", "CHOCOLATE CAKE");
        addItem("00030000", "APL-1", "APPLES GALA");
        giInventorySearch = 0;
        gbWildcard = false;
        giLinkOption = 0;
        gsHotKeyPicturePath = dataPath() + "/pictures/HotKeys/";
    }
    void onLookup(std::function<void(frm_Lookup &)> act)
    {
        modal.drive("frm_Lookup", [act](QDialog &d) { act(static_cast<frm_Lookup &>(d)); });
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
        EXPECT_TRUE(gbStopSearch);
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
