#include "display/ProgramTest.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/frmSpecialKeys.h"
#include "screens/posButtons.h"

using namespace display;

namespace {

class SpecialKeysOnDisplay : public ProgramTest {
protected:
    // Opens the screen by `button` on the set list, the edit dialog by its key
    // `index`, types into a box of the dialog and accepts it once its Accept shows.
    void editKey(QPushButton *frmMain::*button, const QString &title, int index,
                 QLineEdit *frmSpecialKey_edit::*box, const QString &text)
    {
        robot.on<frmMain>([button](frmMain &main) { Robot::click(main.*button); });
        robot.on<frmSpecialKeys>([this, title, index](frmSpecialKeys &keys) {
            EXPECT_EQ(keys.windowTitle(), title);
            robot.shot(&keys, title.toLower().replace(' ', '-'));
            Robot::click(keys.cmdSpecial[index]);
        });
        robot.on<frmSpecialKey_edit>([this, box, title, text](frmSpecialKey_edit &edit) {
            dialog = &edit;
            robot.shot(&edit, title.toLower().replace(' ', '-') + "-edit");
            Robot::retype(edit.*box, text);
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
};

} // namespace

// Special keys and coupons, one screen in two roles.
TEST_F(SpecialKeysOnDisplay, DefineASpecialKeyThenChangeACouponAmount)
{
    editKey(&frmMain::cmdSpecial, "Special Keys", 1, &frmSpecialKey_edit::txtEdit, "Price Check");
    robot.on<frmSpecialKeys>([&](frmSpecialKeys &keys) {
        EXPECT_EQ(keys.cmdSpecial[1]->Caption(), "Price Check\r*");
        Robot::key("F10");
    });
    // Void Line is on "*" too: the screen warns, and Yes saves them so.
    robot.answer("Special keys 1 and 2 both use the keyboard character", QMessageBox::Yes);
    editKey(&frmMain::CmdCoupon, "Coupons", 0, &frmSpecialKey_edit::TxtAmount, "2.00");
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
