#include "display/ProgramTest.h"
#include "platform/ui/MSFlexGrid.h"
#include "screens/frmHotKeys.h"
#include "screens/frmSetCheck.h"
#include "shell/frmMain.h"
#include <QApplication>
#include <QFile>

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

// Clicks a cell of the list's first line with the mouse button, `clicks` times.
void clickFirstLine(frmSetCheck &list, int column, const char *button, const char *clicks)
{
    platform::MSFlexGrid *grid = list.fgrdItems;
    const QPoint at =
        grid->viewport()->mapToGlobal(grid->visualItemRect(grid->item(0, column)).center());
    Robot::run("xdotool", {"mousemove", "--sync", QString::number(at.x()), QString::number(at.y()),
                           "click", "--repeat", clicks, button});
}

} // namespace

// A double click opens the set that links to a removed set; the right click mends
// the dead link and the list is checked again.
TEST_F(ListsOnDisplay, CheckSetsOpensTheSetOfALineAndItsRightClickMendsADeadLink)
{
    ASSERT_TRUE(QFile::remove(dataPath() + "/HKSET12.SDF")); // Lottery, opened from set 01
    QStringList found, after;
    QString editorSet;
    robot.on<frmMain>([](frmMain &) { Robot::key("F7"); });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        found = rowTexts(list.fgrdItems);
        robot.shot(&list, "check-sets");
        clickFirstLine(list, 1, "1", "2");
    });
    robot.on<frmHotKeys>([&](frmHotKeys &editor) {
        editorSet = editor.HotKeySet;
        Robot::key("Escape");
    });
    robot.on<frmSetCheck>([&](frmSetCheck &list) {
        clickFirstLine(list, 4, "3", "1");
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
    ASSERT_EQ(found.size(), 1) << found.join('\n').toStdString();
    EXPECT_TRUE(found.first().startsWith("01|Main Menu|")) << found.first().toStdString();
    EXPECT_TRUE(found.first().contains("opens set 12")) << found.first().toStdString();
    EXPECT_EQ(editorSet, "01");
    EXPECT_EQ(after, QStringList());
    EXPECT_FALSE(readDataFile("HKSET01.SDF").contains("[LINKSET]12[")) << "the dead link is gone";
}
