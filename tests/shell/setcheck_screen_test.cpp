#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/model/InventoryLookup.h"
#include "platform/ui/MSFlexGrid.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "screens/frmHotKeys.h"
#include "screens/frmSetCheck.h"
#include "shell/frmMain.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include "support/DemoStoreTest.h"
#include "support/PrintSupport.h"
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using testing_support::DemoStoreTest;

namespace {

// The demo store with three faults planted by hand: set 12 removed, the BLT
// deleted from the inventory, the bread picture gone.
class SetCheckScreenTest : public DemoStoreTest {
protected:
    void plantFaults()
    {
        ASSERT_TRUE(QFile::remove(dataPath() + "/HKSET12.SDF"));
        ASSERT_TRUE(QFile::remove(gsHotKeyPicturePath + "bread.jpg"));
        ASSERT_EQ(glDBSM_Execute("UPDATE invt1 SET Status = 'D' WHERE SL = '00030020'"), 1);
    }
    static QStringList rows(const frmSetCheck &list)
    {
        QStringList out;
        for (int r = 1; r < list.fgrdItems->Rows(); ++r) {
            QStringList cells;
            for (int c = 0; c < 5; ++c) cells << list.fgrdItems->TextMatrix(r, c);
            out << cells.join(" | ");
        }
        return out;
    }
    void load()
    {
        form = std::make_unique<frmMain>();
        form->Form_Load();
        form->show();
    }
    std::unique_ptr<frmMain> form;
};

const QString kNoBread = "shows the picture \"bread.jpg\", which is not in the pictures folder";
const QString kLink = "01 | Main Menu | 4 | 4 | opens set 12, which is no longer in the data "
                      "folder: the key leads nowhere";
const QString kDeleted =
    "04 | Sandwiches | 1 | 2 | sells S/L 0003002.0, which is marked deleted in the inventory";

} // namespace

// The list prints through the preview; Cancel stops the check and says so; a double
// click edits the set and the list is read again when the editor closes.
TEST_F(SetCheckScreenTest, CheckSetsFindsThePlantedFaultsPrintsCancelsAndEditsOnADoubleClick)
{
    load();
    modal.on<frmSetCheck>([](frmSetCheck &list) { EXPECT_EQ(rows(list), QStringList()); });
    form->cmdCheck->click(); // the demo as it is seeded has nothing wrong

    plantFaults();
    QStringList printed;
    modal.on<frmSetCheck>([](frmSetCheck &list) { QTest::keyClick(list.fgrdItems, Qt::Key_F9); });
    modal.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &preview) {
        EXPECT_EQ(preview.vsvPrinter->PageCount(), 1);
        printed = testing_support::pageTexts(*preview.vsvPrinter, 1);
    });
    form->cmdCheck->click();
    EXPECT_TRUE(printed.contains("Check Sets")) << printed.join(" / ").toStdString();
    EXPECT_TRUE(printed.contains("Sandwiches"));
    EXPECT_TRUE(printed.contains("sells S/L 0003002.0, which is marked deleted in the inventory"));

    modal.on<frmSetCheck>([](frmSetCheck &list) {
        QTimer::singleShot(0, &list, [&list] { list.Progress->cancel(); });
        EXPECT_FALSE(list.mpList_fill());
        EXPECT_TRUE(list.lblStatus->text().startsWith("Canceled after "))
            << list.lblStatus->text().toStdString();
        EXPECT_LT(list.fgrdItems->Rows() - 1, 4);
    });
    form->cmdCheck->click();

    QStringList before, after;
    modal.on<frmSetCheck>([&](frmSetCheck &list) {
        before = rows(list);
        EXPECT_EQ(list.lblStatus->text(),
                  "4 faults found in 3 of 11 sets. Double click a line to open its set.");
        list.fgrdItems->setRow(3);
        emit list.fgrdItems->cellDoubleClicked(2, 0);
        after = rows(list);
    });
    modal.on<frmHotKeys>([](frmHotKeys &editor) {
        EXPECT_EQ(editor.HotKeySet, "04");
        // Mended while the editor is open: the list shows it when the editor closes.
        EXPECT_TRUE(
            QFile::copy(gsHotKeyPicturePath + "coffee.jpg", gsHotKeyPicturePath + "bread.jpg"));
    });
    QTest::keyClick(form->fgrdItems, Qt::Key_F7);
    EXPECT_EQ(before, QStringList({"01 | Main Menu | 2 | 3 | " + kNoBread, kLink, kDeleted,
                                   "06 | Bakery | 1 | 1 | " + kNoBread}));
    EXPECT_EQ(after, QStringList({kLink, kDeleted}));
    EXPECT_EQ(modal.shown.mid(4), QStringList({"frmSetCheck", "frmHotKeys"}));
}

TEST_F(SetCheckScreenTest, WhereUsedListsTheKeysOfAnItemTypedOrPickedAndOfTheSelectedSet)
{
    plantFaults(); // a deleted item is still found where it is used
    load();
    modal.on<frmSetCheck>([](frmSetCheck &list) {
        EXPECT_EQ(list.focusWidget(), list.txtItem);
        list.txtItem->setText("3002"); // the short form of 0003002.0
        QTest::keyClick(list.txtItem, Qt::Key_Return);
        EXPECT_EQ(rows(list),
                  QStringList({"04 | Sandwiches | 1 | 2 | \"BLT\" sells S/L 0003002.0"}));
        EXPECT_EQ(list.lblStatus->text(),
                  "1 key of the 11 sets sells S/L 0003002.0 or Item ID DEMO-15 (BLT).");
        QTest::keyClick(list.txtItem, Qt::Key_F3); // the lookup picks another item
        EXPECT_EQ(rows(list), QStringList({"02 | Hot Drinks | 1 | 1 | \"Coffee Small\" sells S/L "
                                           "0001234.5"}));
        list.txtItem->setText("ESPRESSO"); // an Item ID, typed
        list.cmdSearch->click();
        EXPECT_EQ(rows(list), QStringList({"02 | Hot Drinks | 1 | 3 | \"Espresso\" sells Item ID "
                                           "ESPRESSO"}));
    });
    modal.drive("frm_Lookup", [](QDialog &) { gLookup.gsLookupCode = "00012345"; });
    form->mnuWhereUsedType[0]->trigger();

    form->fgrdItems->setRow(2); // set 02
    modal.on<frmSetCheck>([](frmSetCheck &list) {
        EXPECT_EQ(rows(list),
                  QStringList({"01 | Main Menu | 1 | 1 | \"Hot Drinks\" opens set 02",
                               "03 | Cold Drinks | 4 | 2 | \"Hot Drinks\" opens set 02"}));
    });
    form->mnuWhereUsedType[1]->trigger();
    EXPECT_EQ(modal.shown, QStringList({"frmSetCheck", "frm_Lookup", "frmSetCheck"}));
}

TEST_F(SetCheckScreenTest, LayoutPrintsEverySetAsItsPanelOnePerLandscapePage)
{
    load();
    std::vector<QImage> panels;
    QStringList headers;
    int orientation = -1;
    modal.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &preview) {
        const print::PageDocument &doc = *preview.vsvPrinter;
        orientation = doc.Orientation();
        for (int n = 1; n <= doc.PageCount(); ++n) {
            ASSERT_EQ(doc.page(n).pictures.size(), 1u);
            panels.push_back(doc.page(n).pictures[0].image);
            headers << testing_support::pageTexts(doc, n).filter("Set ").join(" ");
        }
    });
    form->mnuPrintLayout->trigger();
    ASSERT_EQ(panels.size(), 12u);
    EXPECT_EQ(orientation, print::orLandscape);
    EXPECT_EQ(headers[0], "Set 01: Main Menu");
    EXPECT_EQ(headers[11], "Set 12: Lottery");
    // Set 01's columns are DARK_BLUE, DARK_RED, MAGENTA and GREEN: an empty key of each
    // shows its column's colour.
    const QImage &panel = panels[0];
    auto colourAt = [&panel](int column) {
        return panel.pixelColor(panel.width() * (2 * column - 1) / 8, panel.height() * 15 / 16);
    };
    EXPECT_GT(colourAt(1).blue(), colourAt(1).red() + 60);
    EXPECT_GT(colourAt(2).red(), colourAt(2).blue() + 60);
    EXPECT_GT(colourAt(3).red() + colourAt(3).blue(), 2 * colourAt(3).green() + 100);
    EXPECT_GT(colourAt(4).green(), colourAt(4).red() + 60);
}
