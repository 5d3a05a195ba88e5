#include "common/ui/frmHelp.h"
#include "display/ProgramTest.h"
#include "screens/frmHotKeys.h"
#include "screens/frmSetCheck.h"
#include <QPrinterInfo>
#include <QTextBrowser>

using namespace display;

using SetListOnDisplay = ProgramTest;

namespace {

// The platform finds no browser (or no network) to open the guides page.
struct NoBrowser : ShellUntilEnd {
    bool openUrl(const QString &) override { return false; }
};

} // namespace

// Maximised, the columns share the width and no title is cut; Print says what is
// missing without a printer; help without a browser shows its own page; Delete
// asks, removes the set and clears the keys that opened it. Check Sets opens the
// set of a line by a double click and mends a dead link from the right click.
TEST_F(SetListOnDisplay, MaximisedPrintHelpDeleteWithItsLinksAndCheckSets)
{
    ASSERT_TRUE(QFile::remove(dataPath() + "/HKSET12.SDF")); // Lottery, opened from set 01
    NoBrowser noBrowser;
    platform::ShellPort::install(&noBrowser);
    const bool printers = !QPrinterInfo::availablePrinterNames().isEmpty();
    QPointer<frmSetCheck> check;
    robot.on<frmMain>([&](frmMain &main) {
        main.showMaximized();
        robot.settle(500);
        expectMaximized(&main);
        platform::MSFlexGrid *grid = main.fgrdItems;
        const QFontMetrics fm(grid->font());
        for (int r = 0; r < grid->rowCount(); ++r)
            for (int c = 1; c < 6; ++c)
                EXPECT_LE(fm.horizontalAdvance(grid->item(r, c)->text()) + 8, grid->columnWidth(c))
                    << "cut: " << grid->item(r, c)->text().toStdString();
        // The four columns of the same own width share the spare width alike; the
        // title keeps twice a column's width.
        EXPECT_NEAR(grid->columnWidth(5), grid->columnWidth(2), 2);
        EXPECT_NEAR(grid->columnWidth(1), 2 * grid->columnWidth(2), 4);
        robot.shot("set-list-maximised", &main);
        Robot::click(main.cmdPrint);
        if (printers)
            Robot::key("Escape"); // the menu of report kinds
    });
    if (!printers)
        robot.answer("You must have a windows printer installed", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &) { Robot::key("F1"); });
    robot.on<frmHelp>([&](frmHelp &help) {
        EXPECT_TRUE(help.txtPage->toPlainText().contains("F9 Print"));
        expectWhollyOnScreen(&help);
        robot.shot("help-set-list", &help);
        Robot::key("Escape");
    });
    robot.on<frmMain>([&](frmMain &main) {
        Robot::clickCell(main.fgrdItems, 11, 1); // Tobacco
        Robot::click(main.cmdEdit[2]);
    });
    robot.answer("Ready To Delete 'Tobacco'", QMessageBox::Yes);
    robot.answer("Hot keys Removed", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &main) {
        robot.shot("set-list-after-removal", &main);
        Robot::key("F7");
    });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        check = &list;
        EXPECT_EQ(list.fgrdItems->Rows(), 2);
        EXPECT_EQ(list.fgrdItems->TextMatrix(1, 1), "Main Menu");
        EXPECT_TRUE(list.fgrdItems->TextMatrix(1, 4).startsWith("opens set 12,"));
        robot.shot("check-sets", &list);
        Robot::clickCell(list.fgrdItems, 1, 1, 1, 2);
    });
    robot.on<frmHotKeys>([&](frmHotKeys &editor) {
        EXPECT_EQ(editor.HotKeySet, "01");
        Robot::key("Escape");
    });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        Robot::clickCell(list.fgrdItems, 1, 4, 3);
        robot.settle(400);
        robot.shot("check-sets-fix-menu");
        Robot::key("Down Return"); // the first item: the fix of this line
    });
    robot.until(
        "the list checked again and empty", [&] { return check->fgrdItems->Rows() == 1; },
        [&] {
            robot.shot("check-sets-fixed", check);
            Robot::key("Escape");
        });
    robot.on<frmMain>([&](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    platform::ShellPort::install(&shell);
    EXPECT_FALSE(QFile::exists(dataPath() + "/HKSET11.SDF"));
    const QByteArray menu = readDataFile("HKSET01.SDF");
    EXPECT_FALSE(menu.contains("Tobacco"));
    EXPECT_FALSE(menu.contains("[LINKSET]12[")) << "the dead link is gone";
}
