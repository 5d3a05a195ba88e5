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
    QList<int> widths;
    QStringList cut;
    QString title, text, editorSet, found;
    int rows = 0, lines = 0;
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
        Robot::click(main.cmdPrint);
        if (printers)
            Robot::key("Escape"); // the menu of report kinds
    });
    if (!printers)
        robot.answer("You must have a windows printer installed", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &) { Robot::key("F1"); });
    robot.on<frmHelp>([&](frmHelp &help) {
        title = help.windowTitle();
        text = help.txtPage->toPlainText();
        expectWhollyOnScreen(&help);
        robot.shot(&help, "help-set-list");
        Robot::key("Escape");
    });
    robot.on<frmMain>([&](frmMain &main) {
        Robot::clickCell(main.fgrdItems, 11, 1); // Tobacco
        Robot::click(main.cmdEdit[2]);
    });
    robot.answer(
        "Ready To Delete 'Tobacco'\n\nKeys that open it, which will be cleared: 1 key in 1 "
        "other set (set 01).\n\nAre You Sure You Want To Delete?",
        QMessageBox::Yes);
    robot.answer("Hot keys Removed", QMessageBox::Ok);
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        robot.shot(&main, "set-list-after-removal");
        Robot::key("F7");
    });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        lines = list.fgrdItems->Rows() - 1;
        for (int c : {0, 1, 4}) found += list.fgrdItems->TextMatrix(1, c) + '|';
        robot.shot(&list, "check-sets");
        Robot::clickCell(list.fgrdItems, 1, 1, 1, 2);
    });
    robot.on<frmHotKeys>([&](frmHotKeys &editor) {
        editorSet = editor.HotKeySet;
        Robot::key("Escape");
    });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        Robot::clickCell(list.fgrdItems, 1, 4, 3);
        robot.settle(400);
        robot.screenShot("check-sets-fix-menu");
        Robot::key("Down Return"); // the first item: the fix of this line
    });
    robot.until(
        "the list checked again and empty",
        [&] {
            auto *list = Robot::modal<frmSetCheck>();
            return list && list->fgrdItems->Rows() == 1;
        },
        [&] {
            robot.shot(Robot::modal<frmSetCheck>(), "check-sets-fixed");
            Robot::key("Escape");
        });
    robot.on<frmMain>([&](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    platform::ShellPort::install(&shell);
    ASSERT_EQ(widths.size(), 5);
    EXPECT_TRUE(cut.isEmpty()) << cut.join(", ").toStdString();
    // The four columns of the same own width share the spare width alike.
    EXPECT_NEAR(widths[4], widths[1], 2) << "column 4 takes no more than column 1";
    EXPECT_NEAR(widths[0], 2 * widths[1], 4) << "the title keeps twice a column's width";
    EXPECT_EQ(title, "The List of Hot Key Sets");
    EXPECT_TRUE(text.contains("F9 Print")) << text.toStdString();
    EXPECT_EQ(rows, 11);
    EXPECT_FALSE(QFile::exists(dataPath() + "/HKSET11.SDF"));
    EXPECT_EQ(lines, 1);
    EXPECT_TRUE(found.startsWith("01|Main Menu|opens set 12,")) << found.toStdString();
    EXPECT_EQ(editorSet, "01");
    const QByteArray menu = readDataFile("HKSET01.SDF");
    EXPECT_FALSE(menu.contains("Tobacco"));
    EXPECT_FALSE(menu.contains("[LINKSET]12[")) << "the dead link is gone";
    EXPECT_TRUE(menu.contains("[CAPTION]Grocery"));
}
