#include "display/ProgramTest.h"
#include "screens/frmHotKeys_Trial.h"
#include <QProcess>
#include <QWindow>

using namespace display;

namespace {

class TrialPanelOnDisplay : public ProgramTest {
protected:
    // The panel as the window system and Qt see it: shown, modal, on top.
    void expectModalOnTop(frmHotKeys_Trial &trial, const char *when)
    {
        SCOPED_TRACE(when);
        EXPECT_TRUE(trial.isVisible());
        EXPECT_EQ(QApplication::activeModalWidget(), &trial);
        EXPECT_TRUE(trial.windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_TRUE(trial.windowHandle()->flags() & Qt::WindowStaysOnTopHint);
        const QString state = Robot::wmState(&trial);
        EXPECT_TRUE(state.contains("_NET_WM_STATE_ABOVE") && state.contains("_NET_WM_STATE_MODAL"))
            << state.toStdString();
        // The last of the window manager's clients, bottom to top.
        const QString stack = Robot::run("xprop", {"-root", "_NET_CLIENT_LIST_STACKING"});
        EXPECT_EQ(stack.section(", ", -1).trimmed().toULong(nullptr, 16), trial.winId())
            << "the panel is not the top window";
    }
    static QString saleLine(frmHotKeys_Trial &trial)
    {
        return trial.fgrdItems->TextMatrix(1, 0) + ' ' + trial.fgrdItems->TextMatrix(1, 1);
    }
};

} // namespace

TEST_F(TrialPanelOnDisplay, ShowsOnTopAndKeepsItsModalLoopThroughActivationAndHelp)
{
    QPointer<frmHotKeys_Trial> panel;
    QProcess other; // killed when the test ends
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdTrial); });
    robot.on<frmHotKeys_Trial>([&](frmHotKeys_Trial &trial) {
        panel = &trial;
        expectModalOnTop(trial, "shown");
        expectWhollyOnScreen(&trial);
        expectMaximized(&trial);
        robot.shot(&trial, "trial-panel");
        Robot::key("1"); // the Hot Drinks key links to set 2
    });
    robot.until(
        "set 2 on the panel",
        [&] { return panel && panel->windowTitle() == "Hot Keys - Hot Drinks"; },
        [&] { Robot::key("1"); }); // Coffee Small rings up
    robot.until(
        "the sale line", [&] { return panel && panel->fgrdItems->Rows() == 2; },
        [&] {
            EXPECT_EQ(saleLine(*panel), "1 COFFEE SMALL");
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
        [&] {
            expectModalOnTop(*panel, "activated again");
            Robot::key("F1");
        });
    robot.until(
        "the help page", [&] { return !openedUrls().isEmpty(); },
        [&] {
            expectModalOnTop(*panel, "after help");
            Robot::key("1"); // the panel still takes keys: Coffee Small again
        });
    robot.until(
        "the second Coffee Small", [&] { return saleLine(*panel) == "2 COFFEE SMALL"; },
        [&] {
            robot.shot(panel, "trial-panel-sale");
            Robot::key("Escape");
        });
    robot.on<frmMain>([&](frmMain &main) {
        EXPECT_TRUE(panel.isNull()) << "the panel is gone once it is closed";
        Robot::click(main.cmdExit);
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(openedUrls(), QStringList{"https://www.zelsoftware.com/guides-documents/"});
}
