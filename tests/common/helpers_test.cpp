#include "common/sm_Files.h"
#include "common/sm_Shell.h"
#include "common/ui/sm_Combos.h"
#include "common/ui/sm_FGrid.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "common/ui/sm_Keyboard.h"
#include "common/ui/sm_Mouse.h"
#include "common/zelTermDefinitions.h"
#include "platform/AppInfo.h"
#include "platform/ui/MSFlexGrid.h"
#include "support/HkTest.h"
#include "support/OneBox.h"
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

using testing_support::HkTest;
using testing_support::oneBox;

TEST_F(HkTest, FileNamesAndTheFileAndFolderTestsTellThemApart)
{
    for (const char *path : {"C:\\temp\\doc1.pdf", "doc1.pdf", "C:doc1.pdf", "/tmp/doc1.pdf"})
        EXPECT_EQ(gfsFile_name(path), "doc1.pdf");
    EXPECT_EQ(gfsFile_name("\\doc1.pdf"), "\\doc1.pdf");

    writeDataFile("HKSET01.SDF", "x");
    EXPECT_TRUE(gfbFile_exists(dataPath() + "/HKSET01.SDF"));
    EXPECT_FALSE(gfbFile_exists(dataPath()));
    EXPECT_TRUE(gfbFolder_exists(dataPath()));
    EXPECT_FALSE(gfbFolder_exists(dataPath() + "/HKSET01.SDF"));
    EXPECT_FALSE(gfbFile_exists(""));
}

TEST_F(HkTest, HelpPressOpensTheGuidesPageAndWaitsForTheLastHelpProcessIfAny)
{
    shell.processList = {{1, 10, "winhlp32.exe"}, {1, 0, "WinHlp32.exe"}, {1, 22, "WINHLP32.EXE"}};
    shell.windowList = {{100, 10}, {200, 22}, {300, 22}};
    shell.pingAnswers = 2;
    gpHelp_press("5");
    EXPECT_TRUE(shell.urls.value(0).endsWith("/guides-documents/"));
    EXPECT_EQ(glHelpProcess, 22);
    EXPECT_EQ(glHelpWindow, 200u);
    EXPECT_EQ(shell.pinged, QList<quintptr>({200, 200, 200}));

    shell.processList.clear(); // no help viewer: the press returns at once
    shell.windowList.clear();
    gpHelp_press("1");
    EXPECT_EQ(shell.urls.size(), 2);
    EXPECT_EQ(shell.pinged.size(), 4);
}

TEST(KeyPressButton, PressesTheFirstEnabledButtonNamingTheKey)
{
    QDialog form;
    QStringList pressed;
    for (const char *text : {"Find", "F", "F10 Old", "F10 Accept", "F1\rHelp"})
        QObject::connect(new QPushButton(text, &form), &QPushButton::clicked,
                         [&pressed, text] { pressed << text; });
    form.findChildren<QPushButton *>()[2]->setEnabled(false);
    // With Shift every key passes; a key no button names passes too.
    for (const auto &[code, shift, left, press] : {std::tuple{121, 0, 0, "F10 Accept"},
                                                   {112, 1, 112, ""},
                                                   {112, 0, 0, "F1\rHelp"},
                                                   {0, 0, 0, ""},
                                                   {113, 0, 113, ""}}) {
        int key = code;
        gpKey_pressButton(&form, key, shift);
        EXPECT_EQ(key, left) << code;
        EXPECT_EQ(pressed.join(""), press) << code;
        pressed.clear();
    }
}

TEST(InitControls, TurnsTheOldFontsIntoTheFormFont)
{
    gsFontName.clear();
    QDialog form;
    for (const auto &[family, size] :
         {std::pair{"MS Sans Serif", 8.25}, {"Arial", 8.25}, {"Tahoma", 10.0}}) {
        QFont font(family);
        font.setPointSizeF(size);
        (new QLabel("a", &form))->setFont(font);
    }
    gpForm_initControls(&form);
    EXPECT_EQ(gsFontName, "Arial");
    QList<qreal> sizes;
    for (const QLabel *label : form.findChildren<QLabel *>()) {
        EXPECT_EQ(label->font().family(), "Arial");
        sizes << label->font().pointSizeF();
    }
    EXPECT_EQ(sizes, QList<qreal>({9, 8.25, 9}));
}

TEST(GridHelpers, SelectRowWidthAndLastFittingColumn)
{
    platform::MSFlexGrid grid;
    grid.setCols(4);
    grid.setRows(5);
    grid.setFixedCols(1);
    const int widths[] = {1000, 2000, 3000, 1500};
    for (int c = 0; c < 4; ++c) grid.setColWidth(c, widths[c]);

    EXPECT_EQ(glGrid_width(&grid), 7500);
    EXPECT_EQ(gvGrid_lastFitting(&grid, 3500, 0), 1);
    EXPECT_EQ(gvGrid_lastFitting(&grid, 99999, 0), 3);
    EXPECT_EQ(gvGrid_lastFitting(&grid, 4500, 2), 2); // a continued page repeats column 0
    EXPECT_EQ(gvGrid_lastFitting(&grid, 3500, 2), 1);

    gpGrid_selectRow(&grid, 3);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_EQ(grid.ColSel(), 3);
}

TEST(ComboSelect, MatchesIgnoringCaseAndBlanks)
{
    QComboBox combo;
    gpCombo_select(&combo, "x", true);
    combo.addItems({"*", "/", "W"});
    combo.setCurrentIndex(-1);
    gpCombo_select(&combo, " w ", false);
    EXPECT_EQ(combo.currentIndex(), 2);
    combo.setCurrentIndex(-1);
    gpCombo_select(&combo, "Q", true);
    EXPECT_EQ(combo.currentIndex(), 0);
}

TEST_F(HkTest, TermsByNumberOrDefaultTextAndTheMissingTermBox)
{
    EXPECT_EQ(gfsTerm(94, 0), "Last Name");
    EXPECT_EQ(gfsTerm(" last name ", 1), "LAST NAME");
    gTermDefinitions[termBusiness].Defined = "Company ";
    EXPECT_EQ(gfsTerm(50, 2), "company");
    gTermDefinitions[termBusiness].Defined.clear();
    EXPECT_EQ(gfsTerm("No Such Term", 0), "ERROR");
    EXPECT_TRUE(oneBox(boxes(), "ZEL Term 'Defined\\Default' Not Found\rCall ZEL Support"));
}

TEST_F(HkTest, ActivateFirstInstanceGoesOnWhenNoneAnswersAndTheMousePointerNests)
{
    gpMouse_wait();
    gpMouse_wait();
    EXPECT_EQ(giMouse_pointer(), 11);
    gpMouse_default();
    EXPECT_EQ(giMouse_pointer(), 1);
    const QString title = platform::appTitle();
    ActivateFirstInstance();
    EXPECT_EQ(platform::appTitle(), "Unwanted instance");
    platform::setAppTitle(title);
}
