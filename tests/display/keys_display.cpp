#include "display/ProgramTest.h"
#include "screens/frmHotKeys_Trial.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/frmSpecialKeys.h"
#include "screens/posButtons.h"
#include <QProcess>

using namespace display;

namespace {

class KeysOnDisplay : public ProgramTest {
protected:
    // Opens the screen by `button` on the set list, the edit dialog by its key
    // `index`, types into a box of the dialog and accepts it once its Accept shows.
    void editKey(QPushButton *frmMain::*button, const QString &shot, int index,
                 QLineEdit *frmSpecialKey_edit::*box, const QString &text)
    {
        robot.on<frmMain>([button](frmMain &main) { Robot::click(main.*button); });
        robot.on<frmSpecialKeys>([this, shot, index](frmSpecialKeys &keys) {
            robot.shot(shot, &keys);
            Robot::click(keys.cmdSpecial[index]);
        });
        robot.on<frmSpecialKey_edit>([this, box, shot, text](frmSpecialKey_edit &edit) {
            dialog = &edit;
            robot.shot(shot + "-edit", &edit);
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
    // The panel as the window system sees it: shown, modal, on top.
    void expectModalOnTop(frmHotKeys_Trial &trial, const char *when)
    {
        SCOPED_TRACE(when);
        EXPECT_EQ(QApplication::activeModalWidget(), &trial);
        const QString state =
            Robot::run("xprop", {"-id", QString::number(trial.winId()), "_NET_WM_STATE"});
        EXPECT_TRUE(state.contains("_NET_WM_STATE_ABOVE") && state.contains("_NET_WM_STATE_MODAL"))
            << state.toStdString();
        // The last of the window manager's clients, bottom to top.
        const QString stack = Robot::run("xprop", {"-root", "_NET_CLIENT_LIST_STACKING"});
        EXPECT_EQ(stack.section(", ", -1).trimmed().toULong(nullptr, 16), trial.winId())
            << "the panel is not the top window";
    }
    QPointer<frmSpecialKey_edit> dialog;
};

} // namespace

// Special keys and coupons, one screen in two roles; then the trial panel shows on
// top and keeps its modal loop while another program takes the focus and through
// its help.
TEST_F(KeysOnDisplay, ASpecialKeyACouponAmountAndTheTrialPanelOnTop)
{
    editKey(&frmMain::cmdSpecial, "special-keys", 1, &frmSpecialKey_edit::txtEdit, "Price Check");
    robot.on<frmSpecialKeys>([](frmSpecialKeys &) { Robot::key("F10"); });
    // Void Line is on "*" too: the screen warns, and Yes saves them so.
    robot.answer("Special keys 1 and 2 both use the keyboard character", QMessageBox::Yes);
    editKey(&frmMain::CmdCoupon, "coupons", 0, &frmSpecialKey_edit::TxtAmount, "2.00");
    robot.on<frmSpecialKeys>([&](frmSpecialKeys &keys) { Robot::click(keys.cmdOkCancel[0]); });

    QPointer<frmHotKeys_Trial> panel;
    QProcess other; // killed when the test ends
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdTrial); });
    robot.on<frmHotKeys_Trial>([&](frmHotKeys_Trial &trial) {
        panel = &trial;
        expectModalOnTop(trial, "shown");
        expectMaximized(&trial);
        robot.shot("trial-panel", &trial);
        Robot::key("1"); // the Hot Drinks key links to set 2
    });
    robot.until(
        "set 2 on the panel",
        [&] { return panel && panel->windowTitle() == "Hot Keys - Hot Drinks"; },
        [&] { Robot::key("1"); }); // Coffee Small rings up
    robot.until(
        "the sale line", [&] { return panel && panel->fgrdItems->Rows() == 2; },
        [&] {
            EXPECT_EQ(panel->fgrdItems->TextMatrix(1, 1), "COFFEE SMALL");
            // Another program takes the focus, then the panel gets it back.
            other.start("xmessage", {"-geometry", "+40+40", "another program"});
        });
    robot.until(
        "the other program active", [&] { return panel && !panel->isActiveWindow(); },
        [&] {
            expectModalOnTop(*panel, "another program active");
            Robot::run("xdotool", {"windowactivate", QString::number(panel->winId())});
        });
    robot.until(
        "the panel active again", [&] { return panel && panel->isActiveWindow(); },
        [&] { Robot::key("F1"); });
    robot.until(
        "the help page", [&] { return !openedUrls().isEmpty(); },
        [&] {
            expectModalOnTop(*panel, "after help");
            Robot::key("1"); // the panel still takes keys: Coffee Small again
        });
    robot.until(
        "the second Coffee Small", [&] { return panel->fgrdItems->TextMatrix(1, 0) == "2"; },
        [&] {
            robot.shot("trial-panel-sale", panel);
            Robot::key("Escape");
        });
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdExit); });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_TRUE(readDataFile("SPECIAL.BDF").contains("[BUTTON]2[CAPTION]Price Check[KEY]*\r\n"));
    EXPECT_TRUE(readDataFile("COUPON.BDF")
                    .contains("[BUTTON]1[CAPTION]Dollar Off[KEY]~SCOUPN[VALUE]2.00\r\n"));
    EXPECT_EQ(openedUrls(), QStringList{"https://www.zelsoftware.com/guides-documents/"});
}
