#include "lookup/LookupScreen.h"
#include "platform/ui/Twips.h"
#include "screens/frmHotKey_Define.h"
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>

using namespace testing_support;
using LookupScreenTest = LookupScreenFixture;

TEST_F(LookupScreenTest, EnterAcceptsTheRowTypedInCapitalsAndTheNextLookupKeepsTheSort)
{
    onLookup([](frm_Lookup &f) {
        EXPECT_EQ(f.windowTitle(), "Find Inventory Item");
        EXPECT_EQ(f.lblPad->text(), "--Description");
        EXPECT_EQ(f.cmdAction[0]->text(), "F10 Accept");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return); // in an untouched box: row one
    });
    EXPECT_EQ(gfsInventory_find(""), "00030000");
    onLookup([](frm_Lookup &f) {
        QTest::keyClicks(f.txtEditValue, "cof");
        EXPECT_EQ(f.txtEditValue->text(), "COF");
        EXPECT_EQ(f.fgrdItems->TextMatrix(f.fgrdItems->Row(), colDescription), "COFFEE LARGE");
        QTest::keyClick(f.txtEditValue, Qt::Key_Down);
        QTest::keyClick(f.txtEditValue, Qt::Key_F10);
    });
    EXPECT_EQ(gfsInventory_find(""), "00012345");
    onLookup([this](frm_Lookup &f) {
        QTest::keyClick(f.txtEditValue, Qt::Key_F9);
        const auto shown = boxes();
        ASSERT_EQ(shown.size(), 1);
        EXPECT_EQ(shown[0].title, "Department Name");
        EXPECT_EQ(shown[0].text, "Display Only - No Sorting Available");
        EXPECT_FALSE(f.cmdSearch->isHidden()) << "a column without a key is searched";
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

TEST_F(LookupScreenTest, FindItemFillsTheKeyByStockNumberOrItemId)
{
    const struct {
        int linkOption;
        QString typed, item, caption;
    } finds[] = {{0, "COFFEE S", "0001234.5", "COFFEE SMALL CU"}, // 15 characters of it
                 {1, "CHOC", "CAKE-1", "CHOCOLATE CAKE"}};
    for (const auto &find : finds) {
        giLinkOption = find.linkOption;
        onLookup([&](frm_Lookup &f) {
            QTest::keyClicks(f.txtEditValue, find.typed);
            QTest::keyClick(f.txtEditValue, Qt::Key_Return);
        });
        onLookup([](frm_Lookup &f) { QTest::keyClick(f.txtEditValue, Qt::Key_Escape); });
        frmHotKey_Define key;
        key.Form_Load();
        for (int i = 0; i < 2; ++i) {
            QTest::keyClick(key.txtEdit[0], Qt::Key_F3);
            EXPECT_EQ(key.txtEdit[1]->text(), find.item) << i;
            EXPECT_EQ(key.txtEdit[0]->text(), find.caption) << i;
        }
    }
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

TEST_F(LookupScreenTest, ClearOrAResizeGoesBackToTheFirstRecordWithTheWildcardOff)
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
        QTest::keyClick(f.txtEditValue, Qt::Key_F7);
        QTest::keyClicks(f.txtEditValue, "it-3");
        EXPECT_EQ(f.txtEditValue->text(), "IT-3") << "and after Clear";
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colItemID), "IT-3");

        // A resize clears the same way but keeps the sort. The grid follows the form's
        // width and never holds the form to its own: a size the window manager passes
        // through on the way to the maximise must not be answered by a resize.
        const int width = f.width() - 300;
        f.resize(width, f.height());
        QCoreApplication::processEvents();
        EXPECT_EQ(f.txtEditValue->text(), "");
        EXPECT_EQ(f.lblPad->text(), "--Item ID");
        EXPECT_EQ(f.fgrdItems->TextMatrix(1, colItemID), "APL-1") << "the first record";
        EXPECT_EQ(f.width(), width);
        EXPECT_EQ(f.fgrdItems->maximumWidth(), width - platform::twipsToPixels(400));
        EXPECT_LT(f.minimumWidth(), f.fgrdItems->maximumWidth());
        f.resize(f.width(), 10);
        EXPECT_EQ(f.height(), platform::twipsToPixels(1000)) << "the form keeps 1000 twips";
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
    EXPECT_EQ(boxTexts(), QStringList({"End of List"}));
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
