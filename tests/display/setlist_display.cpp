#include "display/ProgramTest.h"
#include "platform/MSFlexGrid.h"
#include "shell/frmMain.h"
#include <QFile>
#include <QPrinterInfo>
#include <QPushButton>

using namespace display;

namespace {

class SetListOnDisplay : public ProgramTest {
protected:
    // A click on a row of the set list, below its heading.
    static void clickRow(frmMain &main, int row)
    {
        platform::MSFlexGrid *grid = main.fgrdItems;
        const QRect cell = grid->visualItemRect(grid->item(row - grid->FixedRows(), 1));
        Robot::click(grid->viewport(), cell.center());
    }
};

} // namespace

TEST_F(SetListOnDisplay, StartsOnTheSetListAndEscEndsTheProgram)
{
    int rows = 0;
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        robot.shot(&main, "set-list");
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 13) << "a heading and the twelve demo sets";
}

TEST_F(SetListOnDisplay, RemoveASetAfterTheQuestionAndItsLinksGoToo)
{
    int rows = 0;
    robot.on<frmMain>([&](frmMain &main) {
        clickRow(main, 12); // Lottery
        Robot::click(main.cmdEdit[2]);
    });
    robot.answer("Ready To Delete 'Lottery'", QMessageBox::Yes);
    robot.answer("Hot keys Removed", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        robot.shot(&main, "set-list-after-removal");
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 12);
    EXPECT_EQ(robot.boxTexts, (QStringList{"Ready To Delete 'Lottery'\n\nKeys that open it, which "
                                           "will be cleared: 1 key in 1 other set (set 01).\n\n"
                                           "Are You Sure You Want To Delete?",
                                           "Hot keys Removed"}));
    EXPECT_FALSE(QFile::exists(dataPath() + "/HKSET12.SDF"));
    EXPECT_FALSE(readDataFile("HKSET01.SDF").contains("Lottery"));
    EXPECT_TRUE(readDataFile("HKSET01.SDF").contains("[CAPTION]Tobacco"));
}

TEST_F(SetListOnDisplay, HelpOpensTheGuidesAndPrintSaysWhatIsMissing)
{
    const bool printers = !QPrinterInfo::availablePrinterNames().isEmpty();
    robot.on<frmMain>([&](frmMain &main) {
        Robot::click(main.cmdHelp);
        Robot::click(main.cmdPrint);
        if (printers)
            Robot::key("Escape"); // the menu of report kinds
    });
    if (!printers)
        robot.answer("You must have a windows printer installed", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdExit); });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(openedUrls(), QStringList{"https://www.zelsoftware.com/guides-documents/"});
}
