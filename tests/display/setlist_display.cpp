#include "common/ui/frmHelp.h"
#include "display/ProgramTest.h"
#include "platform/ui/MSFlexGrid.h"
#include "shell/frmMain.h"
#include <QFile>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTextBrowser>

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

TEST_F(SetListOnDisplay, MaximisedTheColumnsShareTheWidthAndNoTitleIsCut)
{
    QList<int> widths;
    QStringList cut;
    robot.on<frmMain>([&](frmMain &main) {
        main.showMaximized();
        robot.settle(500);
        expectMaximized(&main);
        platform::MSFlexGrid *grid = main.fgrdItems;
        for (int c = 1; c < 6; ++c) widths << grid->columnWidth(c);
        const QFontMetrics fm(grid->font());
        for (int r = 0; r < grid->rowCount(); ++r)
            for (int c = 1; c < 6; ++c)
                if (fm.horizontalAdvance(grid->item(r, c)->text()) + 8 > grid->columnWidth(c))
                    cut << grid->item(r, c)->text();
        robot.shot(&main, "set-list-maximised");
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    ASSERT_EQ(widths.size(), 5);
    EXPECT_TRUE(cut.isEmpty()) << cut.join(", ").toStdString();
    // The four columns of the same own width share the spare width alike.
    EXPECT_NEAR(widths[4], widths[1], 2) << "column 4 takes no more than column 1";
    EXPECT_NEAR(widths[0], 2 * widths[1], 4) << "the title keeps twice a column's width";
}

TEST_F(SetListOnDisplay, WithoutABrowserHelpShowsItsOwnPageInAHelpWindow)
{
    // The platform finds no browser (or no network) to open the guides page.
    struct NoBrowser : ShellUntilEnd {
        QStringList tried;
        bool openUrl(const QString &url) override
        {
            tried << url;
            return false;
        }
    } noBrowser;
    platform::ShellPort::install(&noBrowser);
    QString title, text;
    robot.on<frmMain>([&](frmMain &) { Robot::key("F1"); });
    robot.on<frmHelp>([&](frmHelp &help) {
        title = help.windowTitle();
        text = help.txtPage->toPlainText();
        expectWhollyOnScreen(&help);
        robot.shot(&help, "help-set-list");
        Robot::key("Escape");
    });
    robot.on<frmMain>([&](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    platform::ShellPort::install(&shell);
    EXPECT_EQ(noBrowser.tried, QStringList{"https://www.zelsoftware.com/guides-documents/"});
    EXPECT_EQ(title, "The List of Hot Key Sets");
    EXPECT_TRUE(text.contains("F9 Print")) << text.toStdString();
}
