#include "display/ProgramTest.h"
#include "mail/frmSendMail.h"
#include "platform/ui/MSFlexGrid.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "screens/frmHotKeys.h"
#include "screens/frmSetCheck.h"
#include "shell/frmMain.h"
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QPushButton>

using namespace display;

namespace {

class ListsOnDisplay : public ProgramTest {};

QStringList rowTexts(platform::MSFlexGrid *grid)
{
    QStringList rows;
    for (int r = grid->FixedRows(); r < grid->Rows(); ++r) {
        QStringList cells;
        for (int c = 0; c < grid->Cols(); ++c) cells << grid->TextMatrix(r, c);
        rows << cells.join('|');
    }
    return rows;
}

} // namespace

TEST_F(ListsOnDisplay, CheckSetsFindsARemovedSetAndADoubleClickOpensTheSetThatLinksToIt)
{
    ASSERT_TRUE(QFile::remove(dataPath() + "/HKSET12.SDF")); // Lottery, opened from set 01
    QStringList found;
    QString editorSet;
    robot.on<frmMain>([](frmMain &) { Robot::key("F7"); });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        found = rowTexts(list.fgrdItems);
        robot.shot(&list, "check-sets");
        platform::MSFlexGrid *grid = list.fgrdItems;
        const QRect cell = grid->visualItemRect(grid->item(0, 1));
        const QPoint at = grid->viewport()->mapToGlobal(cell.center());
        Robot::run("xdotool", {"mousemove", "--sync", QString::number(at.x()),
                               QString::number(at.y()), "click", "--repeat", "2", "1"});
    });
    robot.on<frmHotKeys>([&](frmHotKeys &editor) {
        editorSet = editor.HotKeySet;
        Robot::key("Escape");
    });
    robot.on<frmSetCheck>([](frmSetCheck &) { Robot::key("Escape"); });
    robot.on<frmMain>([](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    ASSERT_FALSE(found.isEmpty());
    EXPECT_TRUE(found.first().startsWith("01|Main Menu|")) << found.join('\n').toStdString();
    EXPECT_TRUE(found.first().contains("opens set 12")) << found.first().toStdString();
    EXPECT_EQ(found.size(), 1) << found.join('\n').toStdString();
    EXPECT_EQ(editorSet, "01");
}

TEST_F(ListsOnDisplay, TheRightClickMendsADeadLinkAndTheListIsCheckedAgain)
{
    ASSERT_TRUE(QFile::remove(dataPath() + "/HKSET12.SDF"));
    QStringList before, after;
    robot.on<frmMain>([](frmMain &) { Robot::key("F7"); });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        before = rowTexts(list.fgrdItems);
        platform::MSFlexGrid *grid = list.fgrdItems;
        const QPoint at =
            grid->viewport()->mapToGlobal(grid->visualItemRect(grid->item(0, 4)).center());
        Robot::run("xdotool", {"mousemove", "--sync", QString::number(at.x()),
                               QString::number(at.y()), "click", "3"});
        robot.settle(400);
        robot.screenShot("check-sets-fix-menu");
        Robot::key("Down Return"); // the first item: the fix of this line
    });
    robot.until(
        "the list checked again",
        [&] {
            auto *list = qobject_cast<frmSetCheck *>(QApplication::activeModalWidget());
            return list && list->fgrdItems->Rows() == 1;
        },
        [&] {
            auto *list = qobject_cast<frmSetCheck *>(QApplication::activeModalWidget());
            after = rowTexts(list->fgrdItems);
            robot.shot(list, "check-sets-fixed");
            Robot::key("Escape");
        });
    robot.on<frmMain>([](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    ASSERT_EQ(before.size(), 1);
    EXPECT_TRUE(before.first().contains("opens set 12")) << before.first().toStdString();
    EXPECT_EQ(after, QStringList());
    QFile main(dataPath() + "/HKSET01.SDF");
    ASSERT_TRUE(main.open(QIODevice::ReadOnly));
    EXPECT_FALSE(main.readAll().contains("[LINKSET]12[")) << "the dead link is gone";
}

TEST_F(ListsOnDisplay, TheMailScreenOpensFromThePreviewTypesOnItsKeysAndLeavesNoFileBehind)
{
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        GTEST_SKIP() << "no printer: the set list offers no reports (the offscreen print queue "
                        "test starts CUPS with its PDF printer)";
    QString typed;
    bool pdfWhileOpen = false;
    robot.on<frmMain>([](frmMain &main) {
        Robot::click(main.cmdPrint);
        Robot::key("Down Return"); // "Summary"
    });
    robot.on<frmSMPRNT_PREVIEW>([](frmSMPRNT_PREVIEW &) { Robot::key("F8"); });
    robot.on<frmSendMail>([&](frmSendMail &mail) {
        pdfWhileOpen = QFile::exists(dataPath() + "/Doc1.pdf");
        expectWhollyOnScreen(&mail);
        Robot::click(mail.txtTo);
        for (int i : {10, 12}) Robot::click(mail.cmdKeyPad[i]); // two letter keys
        robot.settle();
        typed = mail.txtTo->text();
        robot.shot(&mail, "mail-screen");
        Robot::click(mail.cmdCancel);
    });
    robot.on<frmSMPRNT_PREVIEW>([](frmSMPRNT_PREVIEW &) { Robot::key("Escape"); });
    robot.on<frmMain>([](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_TRUE(pdfWhileOpen);
    EXPECT_EQ(typed.size(), 2) << typed.toStdString();
    EXPECT_FALSE(QFile::exists(dataPath() + "/Doc1.pdf"));
}
