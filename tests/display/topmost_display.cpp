#include "display/Robot.h"
#include "platform/ui/NativeShell.h"
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <gtest/gtest.h>

using display::Robot;

// The port itself, on a dialog in its own modal loop: made topmost before its show
// it opens on top; then off and on again and again it stays shown and modal, and
// the window manager follows.
TEST(TopMostOnDisplay, ADialogOpensOnTopAndGoesOffAndOnWithoutLeavingItsLoop)
{
    platform::NativeShell shell;
    QDialog dialog;
    dialog.resize(300, 200);
    shell.setTopMost(&dialog, true);
    EXPECT_FALSE(dialog.isVisible());
    Robot robot;
    QStringList states;
    bool onTop = true;
    for (int i = 0; i < 4; ++i) {
        robot.until(
            "the window manager to follow",
            [&] {
                return dialog.isVisible() && Robot::wmState(&dialog).contains("_ABOVE") == onTop;
            },
            [&] {
                EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
                states << (dialog.windowFlags() & Qt::WindowStaysOnTopHint ? "on" : "off");
                onTop = !onTop;
                shell.setTopMost(&dialog, onTop);
            });
    }
    robot.until(
        "the window manager to follow", [&] { return Robot::wmState(&dialog).contains("_ABOVE"); },
        [&] { dialog.accept(); });
    robot.start();
    EXPECT_EQ(dialog.exec(), QDialog::Accepted)
        << "the loop ended by the test's accept, not before";
    robot.stop();
    EXPECT_EQ(states, (QStringList{"on", "off", "on", "off"}));
    for (const QString &f : robot.failures) ADD_FAILURE() << f.toStdString();
}
