#include "ScreenForms.h"
#include "screens/frmVersionCompare.h"
#include "screens/frmVersions.h"
#include "screens/hkeyLayoutPanel.h"

namespace {

class VersionsScreenTest : public HkTest {
protected:
    void saveSet(const QString &number, const QString &title, const QString &firstKey)
    {
        gpHotKeySet_clear();
        gHotKeyGroups[2].Caption = "Column";
        gHotKeyGroups[2].Buttons[3] = {firstKey, "0001", "", "", "No", ""};
        ASSERT_TRUE(gpHotKeySet_write(number, title));
    }
};

} // namespace

TEST_F(VersionsScreenTest, TheSetListShowsASetsVersionsOrThatNoneIsKeptComparesAndRestoresThem)
{
    auto main = openSetList();
    modal.on<frmVersions>([](frmVersions &screen) {
        EXPECT_EQ(screen.lblSetTitle->text(), "No set has been changed or removed yet.");
        EXPECT_FALSE(screen.cmdRestore->isEnabled());
        QTest::mouseClick(screen.cmdClose, Qt::LeftButton);
    });
    QTest::mouseClick(main->cmdVersions, Qt::LeftButton);

    saveSet("01", "Lunch", "Soup");
    saveSet("01", "Lunch", "Salad");
    saveSet("01", "Dinner", "Steak");
    saveSet("02", "Bar", "Beer");
    ASSERT_TRUE(gpHotKeySet_remove("02").removed);
    const QByteArray salad = versions::bytesOf(versions::list("HKSET01.SDF").first());

    main->Form_Load();
    QStringList said;
    QImage differ;
    modal.on<frmVersionCompare>([&](frmVersionCompare &compare) {
        EXPECT_EQ(compare.cboRight->count(), 2);
        EXPECT_EQ(compare.cboRight->itemText(0), "The set as it is now");
        EXPECT_TRUE(compare.cboRight->itemText(1).startsWith("Before ")) << "the newer, first";
        for (int i = 0; i < compare.lstDifferences->count(); ++i)
            said << compare.lstDifferences->item(i)->text();
        differ = compare.picLeft->pixmap().toImage();
        compare.cboRight->setCurrentIndex(compare.cboRight->findText("The set as it is now"));
        said << compare.lstDifferences->item(0)->text() << compare.lblStatus->text();
        QTest::keyClick(&compare, Qt::Key_Escape);
    });
    modal.on<frmVersions>([&](frmVersions &screen) {
        EXPECT_EQ(screen.cboSet->currentText(), "01 Dinner");
        EXPECT_EQ(screen.cboSet->itemText(1), "02  (removed)");
        EXPECT_EQ(screen.lblSetTitle->text(), "Lunch");
        EXPECT_EQ(screen.cmdKey[1][2]->caption(), "Salad");
        screen.lstVersions->setCurrentRow(1);
        EXPECT_EQ(screen.cmdKey[1][2]->caption(), "Soup");
        screen.cmdCompare->click();

        screen.lstVersions->setCurrentRow(0);
        dialogs.answer(vbNo);
        QTest::mouseClick(screen.cmdRestore, Qt::LeftButton);
        EXPECT_TRUE(readDataFile("HKSET01.SDF").startsWith("[SET]Dinner"));
        dialogs.answer(vbYes);
        QTest::mouseClick(screen.cmdRestore, Qt::LeftButton);
        EXPECT_EQ(readDataFile("HKSET01.SDF"), salad);
        EXPECT_EQ(screen.lstVersions->count(), 3) << "what the restore replaced is kept";
        EXPECT_EQ(screen.cmdKey[1][2]->caption(), "Steak");
        EXPECT_TRUE(screen.lblStatus->text().startsWith("Set 01 was restored as it was before "));

        screen.cboSet->setCurrentIndex(1);
        EXPECT_EQ(screen.cmdKey[1][2]->caption(), "Beer");
        dialogs.answer(vbYes);
        QTest::mouseClick(screen.cmdRestore, Qt::LeftButton);
        EXPECT_EQ(screen.cboSet->currentText(), "02 Bar");
        QTest::keyClick(&screen, Qt::Key_Escape);
    });
    QTest::keyClick(main->fgrdItems, Qt::Key_V);
    EXPECT_EQ(modal.shown, QStringList({"frmVersions", "frmVersions", "frmVersionCompare"}));
    const QList<Box> asked = boxes();
    ASSERT_EQ(asked.size(), 3);
    EXPECT_EQ(asked[0].title, "Restore Version");
    EXPECT_EQ(asked[0].style, vbYesNo + vbQuestion);
    EXPECT_TRUE(asked[0].text.startsWith("Set 01 will be put back as it was before "));
    EXPECT_TRUE(asked[0].text.endsWith(".\r\rThe set as it is now is kept in Versions first."
                                       "\r\rRestore it?"));
    EXPECT_EQ(main->fgrdItems->Rows(), 3) << "the restored set is listed again";
    EXPECT_EQ(main->fgrdItems->TextMatrix(1, 1), "Lunch");
    EXPECT_EQ(said, QStringList({"Column 2 key 3: label Soup -> Salad", "Title: Lunch -> Dinner",
                                 "2 differences, framed in red on both panels."}));
    // The differing key is framed: red pixels that a panel without differences lacks.
    const auto reds = [](const QImage &image) {
        int n = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) n += image.pixel(x, y) == qRgb(220, 0, 0);
        return n;
    };
    EXPECT_GT(reds(differ), 100);
    HotKeySet plain;
    hotKeySetClear(plain);
    EXPECT_EQ(reds(gfLayout_panelImage(plain, {560, 380})), 0);
}

TEST_F(VersionsScreenTest, RestoringARemovedSetPutsBackTheKeysItsRemovalClearedWhereStillEmpty)
{
    saveSet("05", "Bar", "Beer");
    gpHotKeySet_clear();
    gHotKeyGroups[1].Buttons[1] = {"Bar", "", "5", "", "No", ""};
    gHotKeyGroups[3].Buttons[8] = {"Bar Too", "", "05", "", "No", ""};
    ASSERT_TRUE(gpHotKeySet_write("01", "Main"));
    gHotKeyGroups[3].Buttons[8] = HotKeyButton();
    ASSERT_TRUE(gpHotKeySet_write("02", "Drinks"));
    const QByteArray main = readDataFile("HKSET01.SDF");
    ASSERT_TRUE(gpHotKeySet_remove("05").removed);
    // Set 02 got a new key where the link was; set 01 is as the removal left it.
    gHotKeyGroups[1].Buttons[1] = {"Tea", "0002", "", "", "No", ""};
    ASSERT_TRUE(gpHotKeySet_write("02", "Drinks"));
    const QByteArray drinks = readDataFile("HKSET02.SDF");

    modal.on<frmVersions>([&](frmVersions &screen) {
        screen.cboSet->setCurrentIndex(screen.cboSet->findData("HKSET05.SDF"));
        dialogs.answer(vbYes);
        dialogs.answer(vbYes);
        QTest::mouseClick(screen.cmdRestore, Qt::LeftButton);
        EXPECT_TRUE(screen.lblStatus->text().endsWith(" 2 keys that open it were put back."));
        screen.reject();
    });
    openSetList()->cmdVersions->click();
    EXPECT_EQ(readDataFile("HKSET01.SDF"), main) << "both keys back where they were";
    EXPECT_EQ(readDataFile("HKSET02.SDF"), drinks);
    const QList<Box> asked = boxes();
    ASSERT_EQ(asked.size(), 2);
    EXPECT_EQ(asked[1].text, "Removing set 05 cleared 2 keys in 1 other set (set 01) that opened "
                             "it, and their places are still empty.\r\rPut those keys back as "
                             "they were before the removal?");
    EXPECT_EQ(asked[1].style, vbYesNo + vbQuestion);
}
