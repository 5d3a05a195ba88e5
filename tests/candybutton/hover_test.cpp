#include "candybutton/CandyButton.h"
#include "support/HkTest.h"
#include "support/ScreenDoubles.h"
#include <QSignalSpy>
#include <QTest>

namespace {

using testing_support::rgbOf;

// A shown button on a panel, scheme 3: up 0x800000, hover 0xA00000, down 0xF00000.
class CandyMouse : public testing_support::HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        panel.resize(300, 100);
        button = new CandyButton(&panel, "cmdGo");
        button->setGeometry(50, 20, 120, 60);
        button->ReadProperties(QVariantMap{{"ColorScheme", 3},
                                           {"ColorButtonUp", 0x800000},
                                           {"ColorButtonHover", 0xA00000},
                                           {"ColorButtonDown", 0xF00000},
                                           {"ColorBright", 0xFF0000}});
        panel.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
        QTest::mouseMove(&panel, QPoint(10, 10));
    }
    QRgb face() const { return button->surface().pixel(0, 0); }

    QWidget panel;
    CandyButton *button = nullptr;
};

TEST_F(CandyMouse, HoverBeginsOnlyInsideTheEdgeAndEndsOnLeaving)
{
    QSignalSpy enter(button, &CandyButton::MouseEnter);
    QSignalSpy leave(button, &CandyButton::MouseLeave);
    QSignalSpy moves(button, &CandyButton::MouseMove);
    QTest::mouseMove(button, QPoint(0, 30));
    EXPECT_EQ(enter.count(), 0);
    EXPECT_FALSE(button->MouseOver());
    EXPECT_EQ(face(), rgbOf(0x800000));
    QTest::mouseMove(button, QPoint(1, 30));
    EXPECT_EQ(enter.count(), 1);
    EXPECT_TRUE(button->MouseOver());
    EXPECT_EQ(face(), rgbOf(0xA00000));
    QTest::mouseMove(button, QPoint(60, 30));
    EXPECT_EQ(enter.count(), 1);
    EXPECT_EQ(moves.count(), 3);
    EXPECT_EQ(moves.last(), QList<QVariant>({0, 0, 60, 30}));

    QTest::mouseMove(&panel, QPoint(250, 50));
    EXPECT_EQ(leave.count(), 1);
    EXPECT_FALSE(button->MouseOver());
    EXPECT_EQ(face(), rgbOf(0x800000));
    // A second visit hovers again.
    QTest::mouseMove(button, QPoint(30, 30));
    EXPECT_EQ(enter.count(), 2);
}

TEST_F(CandyMouse, LeftButtonHeldGivesNoHover)
{
    QSignalSpy enter(button, &CandyButton::MouseEnter);
    QTest::mouseMove(button, QPoint(0, 30));
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, QPoint(0, 30));
    EXPECT_EQ(face(), rgbOf(0xF00000));
    QTest::mouseMove(button, QPoint(20, 30));
    QTest::mouseMove(button, QPoint(40, 30));
    EXPECT_EQ(enter.count(), 0);
    EXPECT_FALSE(button->MouseOver());
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, QPoint(40, 30));
    // Released: the focus look, and the next move hovers.
    EXPECT_EQ(face(), rgbOf(0x800000));
    QTest::mouseMove(button, QPoint(41, 30));
    EXPECT_EQ(enter.count(), 1);
}

TEST_F(CandyMouse, PressAndReleaseOverTheButton)
{
    QSignalSpy down(button, &CandyButton::MouseDown);
    QSignalSpy up(button, &CandyButton::MouseUp);
    QSignalSpy click(button, &CandyButton::Click);
    QTest::mouseMove(button, QPoint(30, 30));
    QTest::mousePress(button, Qt::LeftButton, Qt::ShiftModifier, QPoint(30, 30));
    EXPECT_TRUE(button->HasFocus());
    EXPECT_EQ(face(), rgbOf(0xF00000));
    ASSERT_EQ(down.count(), 1);
    EXPECT_EQ(down.first(), QList<QVariant>({1, 1, 30, 30}));
    EXPECT_EQ(click.count(), 0);
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    EXPECT_EQ(face(), rgbOf(0xA00000));
    EXPECT_EQ(up.count(), 1);
    EXPECT_EQ(click.count(), 1);

    // Leaving with the focus keeps the focus look.
    QTest::mouseMove(&panel, QPoint(250, 50));
    EXPECT_FALSE(button->MouseOver());
    EXPECT_EQ(face(), rgbOf(0x800000));
}

TEST_F(CandyMouse, DraggingOutWithTheButtonHeldDropsTheHover)
{
    QSignalSpy click(button, &CandyButton::Click);
    QTest::mouseMove(button, QPoint(30, 30));
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    QTest::mouseMove(button, QPoint(140, 30));
    EXPECT_FALSE(button->MouseOver());
    EXPECT_EQ(face(), rgbOf(0x800000));
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, QPoint(140, 30));
    EXPECT_EQ(click.count(), 0);
}

TEST_F(CandyMouse, CheckedStaysDownThroughHoverAndLeave)
{
    button->setChecked(true);
    EXPECT_EQ(face(), rgbOf(0xF00000));
    QTest::mouseMove(button, QPoint(30, 30));
    EXPECT_EQ(face(), rgbOf(0xF00000));
    QTest::mouseMove(&panel, QPoint(250, 50));
    EXPECT_EQ(face(), rgbOf(0xF00000));
    button->setChecked(false);
    EXPECT_EQ(face(), rgbOf(0x800000));
}

TEST_F(CandyMouse, EnterKeyPressesAndClicks)
{
    QSignalSpy click(button, &CandyButton::Click);
    button->setFocus();
    QTest::keyPress(button, Qt::Key_Return);
    EXPECT_EQ(face(), rgbOf(0xF00000));
    QTest::keyRelease(button, Qt::Key_Return);
    EXPECT_EQ(click.count(), 1);
    EXPECT_EQ(face(), rgbOf(0x800000));
}

TEST_F(CandyMouse, DisabledButtonIgnoresThePointer)
{
    QSignalSpy down(button, &CandyButton::MouseDown);
    button->setEnabled(false);
    const QImage grey = button->surface();
    QTest::mouseMove(button, QPoint(30, 30));
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    EXPECT_EQ(down.count(), 0);
    EXPECT_EQ(button->surface(), grey);
    EXPECT_EQ(face(), rgbOf(0xB0C0C0));
}

TEST_F(CandyMouse, ShownButtonIsMaskedToItsRoundedShape)
{
    EXPECT_EQ(button->mask(), CandyButton::roundedRegion(120, 60, 16));
    const QImage shot = panel.grab().toImage();
    EXPECT_EQ(shot.pixel(50, 20), panel.grab(QRect(0, 0, 1, 1)).toImage().pixel(0, 0));
    EXPECT_EQ(shot.pixel(110, 50), button->surface().pixel(60, 30));
}

} // namespace
