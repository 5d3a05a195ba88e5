#include "display/Robot.h"
#include "platform/ui/NativeShell.h"
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <gtest/gtest.h>

using display::Robot;

namespace {

QString netWmState(QWidget &w)
{
    return Robot::run("xprop", {"-id", QString::number(w.winId()), "_NET_WM_STATE"});
}

} // namespace

// The port itself, on a dialog in its own modal loop: on and off again and
// again, the dialog stays shown and modal, and the window manager follows.
TEST(TopMostOnDisplay, ShownModalDialogGoesOnAndOffTopWithoutLeavingItsLoop)
{
    platform::NativeShell shell;
    QDialog dialog;
    dialog.resize(300, 200);
    Robot robot;
    QStringList states;
    int toggles = 0;
    const auto toggle = [&] {
        const bool onTop = toggles % 2 == 0;
        shell.setTopMost(&dialog, onTop);
        ++toggles;
    };
    robot.on<QDialog>([&](QDialog &) { toggle(); });
    for (int i = 1; i < 4; ++i) {
        robot.until(
            "the window manager to follow",
            [&] { return netWmState(dialog).contains("_ABOVE") == (toggles % 2 == 1); },
            [&] {
                EXPECT_TRUE(dialog.isVisible());
                EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
                states << (dialog.windowFlags() & Qt::WindowStaysOnTopHint ? "on" : "off");
                toggle();
            });
    }
    robot.until(
        "the window manager to follow", [&] { return !netWmState(dialog).contains("_ABOVE"); },
        [&] { dialog.accept(); });
    robot.start();
    EXPECT_EQ(dialog.exec(), QDialog::Accepted)
        << "the loop ended by the test's accept, not before";
    robot.stop();
    EXPECT_EQ(toggles, 4);
    EXPECT_EQ(states, (QStringList{"on", "off", "on"}));
    EXPECT_FALSE(dialog.windowFlags() & Qt::WindowStaysOnTopHint);
    for (const QString &f : robot.failures) ADD_FAILURE() << f.toStdString();
}

// Before the window is shown the flag goes on the widget, for its first show.
TEST(TopMostOnDisplay, DialogMadeTopmostBeforeItsShowOpensOnTop)
{
    platform::NativeShell shell;
    QDialog dialog;
    dialog.resize(300, 200);
    shell.setTopMost(&dialog, true);
    EXPECT_FALSE(dialog.isVisible());
    Robot robot;
    QString state;
    robot.on<QDialog>([&](QDialog &) {
        state = netWmState(dialog);
        Robot::key("Escape");
    });
    robot.start();
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    robot.stop();
    EXPECT_TRUE(state.contains("_NET_WM_STATE_ABOVE")) << state.toStdString();
    for (const QString &f : robot.failures) ADD_FAILURE() << f.toStdString();
}
