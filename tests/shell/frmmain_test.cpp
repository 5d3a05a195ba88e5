#include "common/HelpPages.h"
#include "common/ui/sm_FGrid.h"
#include "hotkeys/hkeyServices.h"
#include "platform/ui/MSFlexGrid.h"
#include "shell/frmMain.h"
#include "support/HkTest.h"
#include "support/OneBox.h"
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace platform;
using testing_support::HkTest;
using testing_support::oneBox;

namespace {

class MainScreenTest : public HkTest {
protected:
    void addSet(int number, const QString &title, const QString &link = QString())
    {
        const QString name = QString("HKSET%1.SDF").arg(number, 2, 10, QChar('0'));
        writeDataFile(name, ("[SET]" + title +
                             "\r\n[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n"
                             "[BUTTON]1[CAPTION]Go[ITEM][ICON][IDSELECT]No[LINKSET]" +
                             link + "[ROOT]\r\n[GROUP]4[CAPTION]Last[COLOR]\r\n")
                                .toLatin1());
    }
    QStringList column(int c) const
    {
        QStringList out;
        for (int r = 1; r < form->fgrdItems->Rows(); ++r) out << form->fgrdItems->TextMatrix(r, c);
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

} // namespace

TEST_F(MainScreenTest, DeleteSaysHowManyKeysItClearsAndYesRemovesRepairsAndSelectsRowOne)
{
    addSet(1, "One", "5");
    addSet(2, "Two", "05");
    addSet(3, "Three");
    writeDataFile("HKSET04.SDF", "[SET]Four\r\n[GROUP]2[CAPTION][COLOR]\r\n"
                                 "[BUTTON]1[CAPTION]A[ITEM][ICON][IDSELECT]No[LINKSET]5[ROOT]\r\n"
                                 "[BUTTON]2[CAPTION]B[ITEM][ICON][IDSELECT]No[LINKSET]5[ROOT]\r\n");
    addSet(5, "Five");
    addSet(6, "Six");
    for (int n = 11; n <= 17; ++n) addSet(n, "Many", "6");
    addSet(100, "Hundred"); // listed as a number, after 17
    const struct {
        int row;
        const char *line;
    } cases[] = {
        {3, "No key of another set opens it."},
        {5, "Keys that open it, which will be cleared: 4 keys in 3 other sets (sets 01, 02, 04)."},
        {6, "Keys that open it, which will be cleared: 7 keys in 7 other sets."},
    };
    load();
    for (const auto &c : cases) {
        gpGrid_selectRow(form->fgrdItems, c.row);
        dialogs.answer(vbNo);
        QTest::mouseClick(form->cmdEdit[2], Qt::LeftButton);
        const QString title = form->fgrdItems->TextMatrix(c.row, 1);
        EXPECT_EQ(boxTexts(), QStringList({"Ready To Delete '" + title + "'\r\r" + c.line +
                                           "\r\rAre You Sure You Want To Delete?"}));
    }
    EXPECT_TRUE(QFile::exists(dataPath() + "/HKSET06.SDF")) << "No deletes nothing";

    dialogs.answer(vbYes);
    QTest::keyClick(form->fgrdItems, Qt::Key_D);
    EXPECT_EQ(boxTexts().value(1), "Hot keys Removed");
    EXPECT_FALSE(QFile::exists(dataPath() + "/HKSET06.SDF"));
    EXPECT_FALSE(readDataFile("HKSET11.SDF").contains("[LINKSET]6"));
    EXPECT_EQ(column(0), QStringList({"01", "02", "03", "04", "05", "11", "12", "13", "14", "15",
                                      "16", "17", "100"}));
    EXPECT_EQ(form->fgrdItems->Row(), 1);
    EXPECT_EQ(form->mpSetNumber_next(), 6);
}

TEST_F(MainScreenTest, AnUnreadableSetFileIsToldBeforeTheEditorAndTheListIsReadAfterCancel)
{
    const QByteArray junk = "hello\r\n[GROUP]9[CAPTION]x\r\n";
    writeDataFile("HKSET01.SDF", junk);
    load();
    dialogs.answer(vbNo);
    QTest::mouseClick(form->cmdEdit[1], Qt::LeftButton);
    EXPECT_TRUE(modal.shown.isEmpty()) << "No opens nothing";
    EXPECT_TRUE(
        oneBox(boxes(),
               "HKSET01.SDF holds what this program cannot read:\rline 1 is not the title line "
               "([SET]): the set shows no title\rline 2 names column \"9\", which is not 1 to 4: "
               "it and its keys were skipped\r\rYes: open it anyway. The editor shows only what "
               "could be read, and Accept replaces the file with that (the file as it is now is "
               "kept in Versions).\rNo: leave the file as it is.",
               vbYesNo + vbExclamation + vbDefaultButton2, "Set File Not Readable"));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), junk);

    // Yes opens it; Cancel writes nothing but the list shows what changed meanwhile.
    modal.drive("frmHotKeys", [this](QDialog &editor) {
        addSet(2, "Added Elsewhere");
        QTest::keyClick(&editor, Qt::Key_Escape);
    });
    dialogs.answer(vbYes);
    QTest::mouseClick(form->cmdEdit[1], Qt::LeftButton);
    EXPECT_EQ(column(1), QStringList({"", "Added Elsewhere"}));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), junk);

    // Accept replaces it, even with nothing changed on the screen.
    modal.drive("frmHotKeys", [](QDialog &editor) { QTest::keyClick(&editor, Qt::Key_F10); });
    dialogs.answer(vbYes);
    QTest::mouseClick(form->cmdEdit[1], Qt::LeftButton);
    EXPECT_EQ(readDataFile("HKSET01.SDF").count("\r\n"), 37);
    EXPECT_EQ(boxes().size(), 2);
}

TEST_F(MainScreenTest, AStrayFileIsNeitherEditedNorDeleted)
{
    addSet(1, "One", "2");
    addSet(2, "Two");
    addSet(3, "Three", "");
    QFile::copy(dataPath() + "/HKSET01.SDF", dataPath() + "/HKSET01-old.SDF");
    QFile::copy(dataPath() + "/HKSET03.SDF", dataPath() + "/HKSET00.SDF");
    load();
    ASSERT_EQ(column(0), QStringList({"", "00", "01", "02", "03"}));
    const QStringList names = QDir(dataPath()).entryList(QDir::Files);
    const char *kept[] = {"deleted", "changed", "opened"};
    for (const auto &[stray, shownNumber] :
         {std::pair{"HKSET01-old.SDF", ""}, {"HKSET00.SDF", "00"}}) {
        gpGrid_selectRow(form->fgrdItems, column(0).indexOf(shownNumber) + 1);
        QTest::keyClick(form->fgrdItems, Qt::Key_D);
        QTest::keyClick(form->fgrdItems, Qt::Key_C);
        QTest::keyClick(form->fgrdItems, Qt::Key_H);
        const QStringList shown = boxTexts();
        ASSERT_EQ(shown.size(), 3) << "no question, no editor, no trial: the file is no set";
        for (int i = 0; i < 3; ++i)
            EXPECT_TRUE(shown[i].startsWith(QString(stray) + " is not a hot key set") &&
                        shown[i].contains(QString("Nothing was ") + kept[i]));
    }
    EXPECT_EQ(QDir(dataPath()).entryList(QDir::Files), names);
    EXPECT_EQ(form->mpSetNumber_next(), 4) << "a stray file makes no number look free";
    EXPECT_TRUE(readDataFile("HKSET01.SDF").contains("[LINKSET]2["));
    EXPECT_TRUE(readDataFile("HKSET03.SDF").contains("[CAPTION]Go[ITEM]")) << "blank links stay";
}

TEST_F(MainScreenTest, AnEmptyFolderOffersOnlyAddAndPrintNeedsAPrinter)
{
    load();
    EXPECT_EQ(form->fgrdItems->Rows(), 2) << "one blank row";
    EXPECT_TRUE(form->cmdEdit[0]->isEnabled());
    for (QWidget *off : {form->cmdEdit[1], form->cmdEdit[2], form->cmdTrial})
        EXPECT_FALSE(off->isEnabled());
    QTest::keyClick(form->fgrdItems, Qt::Key_D); // the key does what its disabled button does
    EXPECT_TRUE(boxes().isEmpty());

    QTest::keyClick(form->fgrdItems, Qt::Key_F9);
    EXPECT_TRUE(oneBox(boxes(), "You must have a windows printer installed ", -1, "Error"));
    EXPECT_FALSE(form->mnuPrint->isVisible());

    shell.printers = {"Office"};
    QTest::mouseClick(form->cmdPrint, Qt::LeftButton);
    EXPECT_TRUE(form->mnuPrint->isVisible());
    QStringList kinds;
    for (const QAction *kind : form->mnuPrint->actions()) kinds << kind->text();
    EXPECT_EQ(kinds, QStringList({"Summary", "Detail", "Layout"}));
    form->mnuPrint->hide();
}

TEST(HelpPages, EveryHelpContextHasAPageAndAnyOtherGetsTheContents)
{
    const QList<QPair<QString, QString>> contexts{{"1", "The List of Hot Key Sets"},
                                                  {"5", "Changing a Hot Key Set"},
                                                  {"9", "Defining a Key"},
                                                  {"16", "Special and Coupon Keys"},
                                                  {"17", "Changing a Special or Coupon Key"},
                                                  {"19", "Trying the Hot Keys"},
                                                  {"look_up_items.htm", "Finding an Item"},
                                                  {"0", "Hot Keys Help"}};
    for (const auto &[topic, title] : contexts) {
        const HelpPage page = gHelp_page(topic);
        EXPECT_EQ(page.title, title) << topic.toStdString();
        EXPECT_TRUE(page.html.contains("<h2>" + title + "</h2>"));
    }
}
