#include "ScreenForms.h"
#include "screens/frmButtonSet_Find.h"
#include "support/ScreenDoubles.h"
#include <QRadioButton>

namespace {

class EditorTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        usePictures(dataPath());
        giLinkOption = 0;
    }
    void writeSet(const QString &number, const QString &title)
    {
        writeDataFile("HKSET" + number + ".SDF", ("[SET]" + title + "\r\n").toLatin1());
    }
};

} // namespace

TEST_F(EditorTest, ASetIsBuiltThroughTheScreensAndWrittenAsTheFileFormatSays)
{
    savePicture("coffee.jpg");
    auto main = openSetList();
    modal.on<frmHotKeys>([&](frmHotKeys &editor) {
        EXPECT_EQ(editor.txtButtonSet->text(), "New Set 01");
        EXPECT_TRUE(editor.cmdOkCancel[0]->isHidden());
        QTest::mouseClick(editor.cmdEdit_Group[1], Qt::LeftButton);
        editor.txtEdit->setText("Drinks");
        QTest::mouseClick(editor.cmdGroup_OkCancel[0], Qt::LeftButton);

        modal.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
            EXPECT_EQ(key.windowTitle(), "Drinks Button #1");
            QTest::keyClicks(key.txtEdit[0], "Coffee");
            QTest::keyClicks(key.txtEdit[1], "0001234.5");
            dialogs.answerText(dataPath() + "/pictures/HotKeys/coffee.jpg");
            QTest::mouseClick(key.cmdBrowsePath, Qt::LeftButton);
            EXPECT_EQ(key.txtEdit[3]->text(), "coffee.jpg");
            QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
        });
        QTest::mouseClick(editor.cmdHkGroup[1][0], Qt::LeftButton);

        modal.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
            QTest::mouseClick(key.Option1[1], Qt::LeftButton);
            QTest::keyClicks(key.txtEdit[0], "Cake");
            QTest::keyClicks(key.txtEdit[1], "CAKE-1");
            QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
        });
        QTest::mouseClick(editor.cmdHkGroup[2][0], Qt::LeftButton);
        QTest::mouseClick(editor.cmdEdit_Group[2], Qt::LeftButton);
        QTest::keyClicks(editor.txtEdit, "Sweets");
        QTest::mouseClick(editor.cmdGroup_OkCancel[0], Qt::LeftButton);

        editor.txtButtonSet->clear();
        QTest::keyClicks(editor.txtButtonSet, "Lunch Menu");
        QTest::mouseClick(editor.cmdOkCancel[0], Qt::LeftButton);
    });
    const QRect cell = main->fgrdItems->visualRect(main->fgrdItems->model()->index(0, 1));
    doubleClick(main->fgrdItems->viewport(), cell.center()); // on the empty list: a new set

    EXPECT_EQ(
        readDataFile("HKSET01.SDF"),
        "[SET]Lunch Menu\r\n[GROUP]1[CAPTION]Drinks[COLOR]\r\n"
        "[BUTTON]1[CAPTION]Coffee[ITEM]0001234.5[ICON]coffee.jpg[IDSELECT]No[LINKSET][ROOT]\r\n" +
            blankKeys(2) + "[GROUP]2[CAPTION]Sweets[COLOR]\r\n" +
            "[BUTTON]1[CAPTION]Cake[ITEM]CAKE-1[ICON][IDSELECT]Yes[LINKSET][ROOT]\r\n" +
            blankKeys(2) + "[GROUP]3[CAPTION][COLOR]*Default\r\n" + blankKeys(1) +
            "[GROUP]4[CAPTION][COLOR]*Default\r\n" + blankKeys(1));
    EXPECT_EQ(main->fgrdItems->TextMatrix(1, 1), "Lunch Menu") << "the list refreshed";
    EXPECT_EQ(giLinkOption, 1) << "the last option chosen is remembered";
    const auto shown = boxes();
    EXPECT_TRUE(
        oneBox(shown, dataPath() + "/pictures/HotKeys|Picture (*.jpg)|*.jpg", -1, "Set Picture"));
    EXPECT_EQ(shown.value(0).kind, "open");
}

TEST_F(EditorTest, KeyDialogValidatesRemembersTheOptionAndClears)
{
    savePicture("pic.jpg");
    frmHotKey_Define key;
    key.Group = "Drinks";
    key.ButtonNumber = "3";
    key.ButtonLink = "9"; // a set whose file has gone
    key.ItemIDLink = "No";
    key.Form_Load();
    key.show();
    EXPECT_EQ(key.txtEdit[2]->text(), "09 (missing)");
    EXPECT_TRUE(key.cmdOkCancel[0]->isHidden());

    key.txtEdit[2]->clear();
    key.txtEdit2_Tag.clear();
    QTest::keyClicks(key.txtEdit[0], "A label that is far too long");
    EXPECT_EQ(key.txtEdit[0]->text().size(), 15);
    QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
    key.txtEdit[0]->clear();
    key.txtEdit[1]->setText("123");
    QTest::keyClick(key.txtEdit[1], Qt::Key_F10);
    key.txtEdit[3]->setText("pic.jpg");
    dialogs.answer(vbNo);
    QTest::keyClick(key.txtEdit[1], Qt::Key_F10);
    EXPECT_TRUE(key.Canceled) << "No keeps the dialog open for a label";
    dialogs.answer(vbYes);
    QTest::keyClick(key.txtEdit[1], Qt::Key_F10);
    EXPECT_FALSE(key.Canceled);
    EXPECT_EQ(key.ButtonLabel, "");
    EXPECT_EQ(key.ButtomItem, "123");

    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 4);
    EXPECT_EQ(shown[0].text, "Button needs an Item or a Link");
    EXPECT_EQ(shown[0].style, 64);
    EXPECT_EQ(shown[1].text, "Button needs a Label or Icon");
    EXPECT_EQ(shown[2].text, "Create Key with no Caption");
    EXPECT_EQ(shown[2].style, 36);

    // The Item ID option is remembered from key to key; Clear empties the key.
    auto open = [](const QString &idSelect) {
        auto key = std::make_unique<frmHotKey_Define>();
        key->ButtonLabel = "Tea";
        key->ButtomItem = "TEA-1";
        key->ItemIDLink = idSelect;
        key->Form_Load();
        return key;
    };
    auto yes = open("Yes");
    EXPECT_TRUE(yes->Option1[1]->isChecked());
    EXPECT_EQ(yes->lblEdit[1]->text(), "Item ID");
    EXPECT_EQ(giLinkOption, 1);
    QTest::keyClick(yes->txtEdit[0], Qt::Key_Escape);
    EXPECT_TRUE(yes->Canceled);
    auto no = open("No");
    EXPECT_TRUE(no->Option1[1]->isChecked()) << "the remembered choice wins over the key's";
    QTest::mouseClick(no->Option1[0], Qt::LeftButton);
    QTest::mouseClick(no->cmdOkCancel[0], Qt::LeftButton);
    EXPECT_EQ(no->ItemIDLink, "No");

    auto cleared = open("Yes");
    QTest::mouseClick(cleared->cmdClear, Qt::LeftButton);
    EXPECT_FALSE(cleared->Canceled);
    EXPECT_EQ(cleared->ButtonLabel, "");
    EXPECT_EQ(cleared->ButtomItem, "");
    EXPECT_EQ(cleared->ItemIDLink, "Yes");
}

TEST_F(EditorTest, FinderLeavesOutTheSetBeingEditedByNumber)
{
    writeSet("07", "Seven");
    writeSet("12", "Twelve");
    const auto open = [](const QString &current) {
        auto finder = std::make_unique<frmButtonSet_Find>();
        finder->ButtonSet_Current = current;
        finder->Form_Load();
        finder->show();
        return finder;
    };
    auto finder = open("7");
    ASSERT_EQ(finder->lstItems->count(), 1);
    EXPECT_EQ(finder->lstItems->item(0)->text(), "12 Twelve");

    finder = open("12");
    const QListWidget *list = finder->lstItems;
    doubleClick(list->viewport(), list->visualItemRect(list->item(0)).center());
    EXPECT_FALSE(finder->Canceled);
    EXPECT_EQ(finder->ButtonSet, "7");
    EXPECT_EQ(finder->ButtonSetLabel, "07 Seven");

    QFile::remove(dataPath() + "/HKSET12.SDF");
    finder = open("07");
    EXPECT_FALSE(finder->cmdOkCancel[0]->isEnabled());
    QTest::keyClick(finder->lstItems, Qt::Key_F10);
    EXPECT_TRUE(finder->Canceled);
    EXPECT_FALSE(finder->isHidden()) << "F10 does nothing without a set to choose";
    QTest::keyClick(finder->lstItems, Qt::Key_Escape);
    EXPECT_TRUE(finder->isHidden());
}

TEST_F(EditorTest, ColumnTitlePanelStoresIntoTheColumnItWasOpenedForAndRedrawsKeepPictures)
{
    savePicture("p.jpg");
    writeDataFile("HKSET05.SDF",
                  "[SET]Five\r\n[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n"
                  "[BUTTON]1[CAPTION][ITEM]1[ICON]p.jpg[IDSELECT]No[LINKSET][ROOT]\r\n"
                  "[GROUP]3[CAPTION]Snacks[COLOR]RED\r\n");
    auto form = openEditor("05");
    frmHotKeys &editor = *form;
    QTest::mouseClick(editor.cmdEdit_Group[1], Qt::LeftButton);
    EXPECT_EQ(editor.lblButtonEdit->text(), "Column 1 Title") << "the panel says what it edits";
    editor.txtEdit->setText("Hot Drinks");

    // A key of another column, pressed and defined while the panel is open.
    modal.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        QTest::keyClicks(key.txtEdit[0], "Chips");
        QTest::keyClicks(key.txtEdit[1], "0008001.0");
        QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
    });
    QTest::mouseClick(editor.cmdHkGroup[3][0], Qt::LeftButton);
    QTest::keyClick(editor.txtEdit, Qt::Key_F10);

    // Opening the panel for another column moves it there, and says so.
    QTest::mouseClick(editor.cmdEdit_Group[3], Qt::LeftButton);
    EXPECT_EQ(editor.lblButtonEdit->text(), "Column 3 Title");
    EXPECT_EQ(editor.txtEdit->text(), "Snacks");
    editor.txtEdit->setText("Chips & Nuts");
    QTest::mouseClick(editor.cmdGroup_OkCancel[0], Qt::LeftButton);
    QTest::keyClick(editor.txtButtonSet, Qt::Key_F10); // the panel's Accept again, not the set's
    EXPECT_TRUE(readDataFile("HKSET05.SDF").startsWith("[SET]Five\r\n[GROUP]1[CAPTION]Drinks"))
        << "nothing is written before the set is accepted";
    QTest::mouseClick(editor.cmdGroup_OkCancel[1], Qt::LeftButton);
    gHotKeyGroups[1].Buttons[1] = HotKeyButton();
    editor.gpHotKeys_populate("");
    EXPECT_FALSE(editor.cmdHkGroup[1][0]->picture().isNull()) << "a redraw never removes a picture";
    QTest::mouseClick(editor.cmdOkCancel[0], Qt::LeftButton);
    const QByteArray file = readDataFile("HKSET05.SDF");
    EXPECT_TRUE(file.contains("[GROUP]1[CAPTION]Hot Drinks[COLOR]BLUE\r\n")) << file.data();
    EXPECT_TRUE(file.contains("[GROUP]3[CAPTION]Chips & Nuts[COLOR]RED\r\n"
                              "[BUTTON]1[CAPTION]Chips[ITEM]0008001.0"))
        << file.data();
}
