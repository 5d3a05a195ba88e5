#include "display/ProgramTest.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/frmSpecialKeys.h"
#include "screens/posButtons.h"
#include "shell/frmMain.h"
#include <QLineEdit>
#include <QPushButton>

using namespace display;

namespace {

class SpecialKeysOnDisplay : public ProgramTest {
protected:
    // Types into a box of the edit dialog, then accepts it once its Accept shows.
    void editAndAccept(QLineEdit *frmSpecialKey_edit::*box, const QString &text)
    {
        robot.on<frmSpecialKey_edit>([this, box, text](frmSpecialKey_edit &edit) {
            dialog = &edit;
            robot.shot(&edit, shotName + "-edit");
            Robot::click(edit.*box);
            Robot::key("ctrl+a");
            Robot::type(text);
        });
        robot.until(
            "the typed text",
            [this, box, text] {
                return dialog && (dialog->*box)->text() == text &&
                       dialog->cmdOkCancel[0]->isVisible();
            },
            [this] { Robot::click(dialog->cmdOkCancel[0]); });
    }
    QPointer<frmSpecialKey_edit> dialog;
    QString shotName;
};

} // namespace

// Special keys and coupons, one screen in two roles.
TEST_F(SpecialKeysOnDisplay, DefineASpecialKeyThenChangeACouponAmount)
{
    shotName = "special-keys";
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdSpecial); });
    robot.on<frmSpecialKeys>([&](frmSpecialKeys &keys) {
        EXPECT_EQ(keys.windowTitle(), "Special Keys");
        robot.shot(&keys, "special-keys");
        Robot::click(keys.cmdSpecial[1]);
    });
    editAndAccept(&frmSpecialKey_edit::txtEdit, "Price Check");
    robot.on<frmSpecialKeys>([&](frmSpecialKeys &keys) {
        EXPECT_EQ(keys.cmdSpecial[1]->Caption(), "Price Check\r*");
        Robot::key("F10");
    });
    // Void Line is on "*" too: the screen warns, and Yes saves them so.
    robot.answer("Special keys 1 and 2 both use the keyboard character", QMessageBox::Yes);
    robot.on<frmMain>([&](frmMain &main) {
        shotName = "coupons";
        Robot::click(main.CmdCoupon);
    });
    robot.on<frmSpecialKeys>([&](frmSpecialKeys &keys) {
        EXPECT_EQ(keys.windowTitle(), "Coupons");
        robot.shot(&keys, "coupons");
        Robot::click(keys.cmdSpecial[0]);
    });
    editAndAccept(&frmSpecialKey_edit::TxtAmount, "2.00");
    robot.on<frmSpecialKeys>([&](frmSpecialKeys &keys) { Robot::click(keys.cmdOkCancel[0]); });
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdExit); });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(readDataFile("SPECIAL.BDF"), "[BUTTON]1[CAPTION]Void Line[KEY]*\r\n"
                                           "[BUTTON]2[CAPTION]Price Check[KEY]*\r\n"
                                           "[BUTTON]3[CAPTION]Weigh[KEY]W\r\n");
    EXPECT_EQ(readDataFile("COUPON.BDF"),
              "[BUTTON]1[CAPTION]Dollar Off[KEY]~SCOUPN[VALUE]2.00\r\n"
              "[BUTTON]2[CAPTION]Fifty Cents[KEY]~SCOUPN[VALUE].50\r\n");
}
