#include "lookup/LookupScreen.h"
#include "platform/ui/Twips.h"
#include "screens/frmHotKey_Define.h"
#include "support/OneBox.h"
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>

using namespace testing_support;
using LookupScreenTest = LookupScreenFixture;

TEST_F(LookupScreenTest, EnterAcceptsTheRowTypedInCapitalsF3PicksItIntoTheKeyAndTheSortIsKept)
{
    onLookup([](frm_Lookup &f) {
        EXPECT_EQ(f.lblPad->text(), "--Description");
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
    frmHotKey_Define key; // the key sells by S/L and is named by 15 characters of the item
    key.Form_Load();
    QTest::keyClick(key.txtEdit[0], Qt::Key_F3);
    EXPECT_EQ(key.txtEdit[1]->text(), "0001234.5");
    EXPECT_EQ(key.txtEdit[0]->text(), "COFFEE SMALL CU");
    onLookup([this](frm_Lookup &f) {
        QTest::keyClick(f.txtEditValue, Qt::Key_F9);
        EXPECT_TRUE(oneBox(boxes(), "Display Only - No Sorting Available", -1, "Department Name"));
        EXPECT_FALSE(f.cmdSearch->isHidden()) << "a column without a key is searched";
        QTest::keyClick(f.txtEditValue, Qt::Key_F7);
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

TEST_F(LookupScreenTest, ClearOrAResizeGoesBackToTheFirstRecordWithTheWildcardOffAndF10OnlyStops)
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
        EXPECT_TRUE(f.ckWildcard->isChecked());
        EXPECT_FALSE(f.cmdStop->isHidden());
        QTest::keyClicks(f.txtEditValue, "cake");
        QTest::keyClick(f.txtEditValue, Qt::Key_Return); // runs the search
        EXPECT_EQ(firstRow(f), "CHOCOLATE CAKE");
        QTest::keyClick(f.txtEditValue, Qt::Key_F10);
        EXPECT_TRUE(gLookup.gbStopSearch);
        EXPECT_FALSE(f.isHidden()) << "F10 only stopped the search";
        QTest::keyClicks(f.txtEditValue, "x");
        EXPECT_EQ(f.txtEditValue->text(), "CAKEX") << "the box takes keys after the search";
        QTest::mouseClick(f.cmdEdit[0], Qt::LeftButton);
        EXPECT_FALSE(f.ckWildcard->isChecked());
        EXPECT_TRUE(f.cmdSearch->isHidden());
        EXPECT_EQ(firstRow(f), "APPLES GALA");

        QTest::keyClick(f.txtEditValue, Qt::Key_F7);
        QTest::keyClicks(f.txtEditValue, "it-3");
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
        QTest::keyClick(f.txtEditValue, Qt::Key_F3); // F2 accepts with the wildcard on too
        QTest::keyClick(f.txtEditValue, Qt::Key_F2);
    });
    EXPECT_EQ(gfsInventory_find(""), "00030000");
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
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
    const QByteArray log = readDataFile("PVSW.log");
    EXPECT_TRUE(log.contains("database is locked"));
    EXPECT_TRUE(log.contains("file is not a database"));

    EXPECT_EQ(gfsInventory_find(""), "") << "no empty list is shown on a damaged database";
    EXPECT_EQ(boxTexts(), QStringList({kDamagedBox})) << "one box for the open";
}
