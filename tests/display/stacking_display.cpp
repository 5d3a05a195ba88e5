#include "display/ProgramTest.h"
#include "lookup/frm_Lookup.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/posButtons.h"
#include "shell/frmMain.h"
#include <QLineEdit>
#include <QPushButton>

using namespace display;

namespace {

class StackedWindowsOnDisplay : public ProgramTest {};

} // namespace

// Every window of a stack is drawn, whichever lies over which: the set list under
// the editor under the key dialog under a box, and the lookup over all of them.
TEST_F(StackedWindowsOnDisplay, EveryWindowOfAStackIsDrawn)
{
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdEdit[1]); });
    robot.on<frmHotKeys>([&](frmHotKeys &editor) {
        robot.screenShot("stack-1-editor");
        Robot::click(editor.cmdHkGroup[3][2]);
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        robot.screenShot("stack-2-key-dialog");
        Robot::click(key.txtEdit[0]);
        Robot::type("Label only");
        Robot::key("F10"); // a label without item or link: the box says so
    });
    robot.on<QMessageBox>([&](QMessageBox &box) {
        EXPECT_EQ(box.text(), "Button needs an Item or a Link");
        robot.screenShot("stack-3-box");
        Robot::click(box.button(QMessageBox::Ok));
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        robot.screenShot("stack-4-key-dialog-again");
        Robot::click(key.cmdFind[0]);
    });
    robot.on<frm_Lookup>([&](frm_Lookup &) {
        robot.screenShot("stack-5-lookup");
        Robot::key("Escape");
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &) {
        robot.screenShot("stack-6-key-dialog-after-lookup");
        Robot::key("Escape");
    });
    robot.on<frmHotKeys>([&](frmHotKeys &) {
        robot.screenShot("stack-7-editor-after-dialogs");
        Robot::key("Escape");
    });
    robot.on<frmMain>([&](frmMain &) {
        robot.screenShot("stack-8-set-list");
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
}
