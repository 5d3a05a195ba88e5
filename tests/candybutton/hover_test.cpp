#include "candybutton/CandyButton.h"
#include "support/HkTest.h"
#include "support/ScreenDoubles.h"
#include <QTest>

namespace {

using testing_support::rgbOf;

// A shown button at (50, 20) on a panel, scheme 3; its signals in one log.
struct MousePanel {
    MousePanel()
    {
        panel.resize(300, 100);
        button->setGeometry(50, 20, 120, 60);
        button->ReadProperties(QVariantMap());
        button->setColorScheme(3);
        panel.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&panel));
        QTest::mouseMove(&panel, QPoint(10, 10));
        auto logged = [this](const char *name) {
            return [this, name](int b, int s, int x, int y) {
                log << QString("%1 %2 %3 %4 %5").arg(name).arg(b).arg(s).arg(x).arg(y);
            };
        };
        QObject::connect(button, &CandyButton::MouseEnter, [this] { log << "enter"; });
        QObject::connect(button, &CandyButton::MouseLeave, [this] { log << "leave"; });
        QObject::connect(button, &CandyButton::Click, [this] { log << "click"; });
        QObject::connect(button, &CandyButton::MouseMove, logged("move"));
        QObject::connect(button, &CandyButton::MouseDown, logged("down"));
        QObject::connect(button, &CandyButton::MouseUp, logged("up"));
    }

    QWidget panel;
    CandyButton *button = new CandyButton(&panel, "cmdGo");
    QStringList log;
};

using CandyMouse = testing_support::HkTest;

// Acts on the button, one per word: "move X", "press X", "shift X" (pressed with
// Shift), "release X" at (X, 30), "out" onto the panel, "check", "uncheck",
// "enter" and "enter-up". After each the face, "*" when hovered.
TEST_F(CandyMouse, WalksOfThePointerAndTheKeysGiveTheirFacesAndSignals)
{
    const struct {
        QString acts, faces, signalled;
    } walks[] = {
        // Hover begins inside the edge, ends on leaving, and comes again.
        {"move 0, move 1, move 60, out, move 30", "up hover* hover* up hover*",
         "move 0 0 0 30, move 0 0 1 30, enter, move 0 0 60 30, leave, move 0 0 30 30, enter"},
        // The left button held gives no hover; released, the next move hovers.
        {"move 0, press 0, move 20, move 40, release 40, move 41", "up down down down up hover*",
         "move 0 0 0 30, down 1 0 0 30, move 1 0 20 30, move 1 0 40 30, up 1 0 40 30, click, "
         "move 0 0 41 30, enter"},
        {"move 30, shift 30, release 30, out", "hover* down* hover* up",
         "move 0 0 30 30, enter, down 1 1 30 30, up 1 0 30 30, click, leave"},
        // Dragging out with the button held drops the hover and the click.
        {"move 30, press 30, move 140, release 140", "hover* down* up up",
         "move 0 0 30 30, enter, down 1 0 30 30, move 1 0 140 30, up 1 0 140 30"},
        {"check, move 30, out, uncheck", "down down* down up", "move 0 0 30 30, enter, leave"},
        {"enter, enter-up", "down up", "down 1 0 0 0, up 1 0 0 0, click"},
        // Disabled, it keeps its grey face under the pointer and is not pressed.
        {"disable, move 30, press 30, release 30", "grey grey* grey* grey*", "enter"},
    };
    const QMap<QString, quint32> colour{
        {"up", 0x800000}, {"hover", 0xA00000}, {"down", 0xF00000}, {"grey", 0xB0C0C0}};
    for (const auto &w : walks) {
        SCOPED_TRACE(w.acts.toStdString());
        MousePanel p;
        QStringList faces;
        for (const QString &act : w.acts.split(", ")) {
            const QString name = act.section(' ', 0, 0);
            const QPoint at(act.section(' ', 1).toInt(), 30);
            if (name == "move")
                QTest::mouseMove(p.button, at);
            else if (name == "press" || name == "shift")
                QTest::mousePress(p.button, Qt::LeftButton,
                                  name == "shift" ? Qt::ShiftModifier : Qt::NoModifier, at);
            else if (name == "release")
                QTest::mouseRelease(p.button, Qt::LeftButton, Qt::NoModifier, at);
            else if (name == "out")
                QTest::mouseMove(&p.panel, QPoint(250, 50));
            else if (name == "disable")
                p.button->setEnabled(false);
            else if (name == "check" || name == "uncheck")
                p.button->setChecked(name == "check");
            else if (name == "enter")
                p.button->setFocus(), QTest::keyPress(p.button, Qt::Key_Return);
            else
                QTest::keyRelease(p.button, Qt::Key_Return);
            QString face = "?";
            for (auto c = colour.begin(); c != colour.end(); ++c)
                if (rgbOf(c.value()) == p.button->surface().pixel(0, 0))
                    face = c.key();
            faces << face + (p.button->MouseOver() ? "*" : "");
        }
        EXPECT_EQ(faces.join(' ').toStdString(), w.faces.toStdString());
        EXPECT_EQ(p.log.join(", ").toStdString(), w.signalled.toStdString());
        // On screen it is its face, with the panel in the cut corners.
        const QImage shot = p.panel.grab().toImage();
        EXPECT_EQ(shot.pixel(110, 50), p.button->surface().pixel(60, 30));
        EXPECT_EQ(shot.pixel(50, 20), shot.pixel(10, 10));
    }
}

} // namespace
