#include "candybutton/CandyButton.h"
#include "support/HkTest.h"
#include "support/ScreenDoubles.h"
#include <QApplication>
#include <QPalette>
#include <cmath>
#include <functional>

namespace {

using testing_support::rgbOf;

// The bounding box of the pixels `is` picks; by default those close to black (the caption).
QRect boxOf(
    const QImage &image, const std::function<bool(QRgb)> &is = [](QRgb p) { return qGray(p) < 60; })
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (is(image.pixel(x, y)))
                box |= QRect(x, y, 1, 1);
    return box;
}

auto colour(QRgb c)
{
    return [c](QRgb p) { return p == c; };
}

class CandyPainting : public testing_support::HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        button.InitProperties();
        button.setCaption("");
        button.setFont(QFont("DejaVu Sans", 12));
        button.resize(120, 60);
    }
    QImage paint(int state)
    {
        button.Redraw(state);
        return button.surface();
    }

    CandyButton button;
};

TEST(CandyColors, BlendTruncatesTowardZeroClampsThePercentageAndSplitsRedFirst)
{
    const struct {
        quint32 from, to;
        int percent;
        quint32 blend;
    } blends[] = {{0x000000, 0xFFFFFF, 50, 0x7F7F7F},
                  {0xFFFFFF, 0x000000, 50, 0x808080},
                  {0x0000FF, 0xFF0000, 150, 0xFF0000},
                  {0x0000FF, 0xFF0000, -5, 0x0000FF},
                  {0x102030, 0x203040, 33, 0x152535}};
    for (const auto &b : blends)
        EXPECT_EQ(CandyButton::BlendColors(b.from, b.to, b.percent), b.blend) << b.percent;
    int r, g, b;
    CandyButton::GetRGB(r, g, b, 0x8000000F); // the system's button face
    EXPECT_EQ(qRgb(r, g, b), QApplication::palette().color(QPalette::Button).rgb());
}

TEST(CandyShape, RadiusFollowsTheHeightWithinAQuarterOfTheWidthAndCutsOnlyTheCorners)
{
    const struct {
        int w, h, r;
    } cases[] = {{120, 60, 16}, {40, 60, 10}, {3, 20, 1}, {200, 3, 1}, {120, 100, 26}};
    for (const auto &c : cases) {
        CandyButton b;
        b.InitProperties();
        b.setCaption("X");
        b.resize(c.w, c.h);
        b.Redraw(0);
        EXPECT_EQ(b.CornerRadius(), c.r) << c.w << "x" << c.h;
        EXPECT_EQ(b.mask().boundingRect(), QRect(0, 0, c.w, c.h)) << "cut to its shape";
    }
    // In a corner square a pixel nearer the centre than the edge is inside, in all four.
    const QRegion region = CandyButton::roundedRegion(120, 60, 16);
    const struct {
        QPoint at;
        bool inside;
    } corner[] = {{{16, 0}, true}, {{0, 16}, true},  {{1, 15}, true},  {{8, 8}, true},
                  {{0, 0}, false}, {{15, 0}, false}, {{0, 15}, false}, {{3, 3}, false}};
    for (const auto &[at, inside] : corner)
        for (QPoint p : {at, QPoint(119 - at.x(), at.y()), QPoint(at.x(), 59 - at.y()),
                         QPoint(119 - at.x(), 59 - at.y())})
            EXPECT_EQ(region.contains(p), inside) << p.x() << "," << p.y();
}

TEST_F(CandyPainting, OnlyThePressedStateMovesTheCaptionAndTheBorderAndGlowShadeTheFace)
{
    button.setCaption("Sale");
    const QRect atRest = boxOf(paint(0));
    ASSERT_FALSE(atRest.isEmpty());
    EXPECT_EQ(boxOf(paint(1)), atRest.translated(1, 1));
    EXPECT_EQ(boxOf(paint(4)), atRest) << "checked paints down, the caption stays";
    // Only under the pointer, and only when asked, the caption takes its high-lite colour.
    button.setCaptionHighLite(true);
    button.setCaptionHighLiteColor(0x00FF00);
    EXPECT_FALSE(boxOf(paint(3), colour(qRgb(0, 255, 0))).isEmpty());
    EXPECT_TRUE(boxOf(paint(0), colour(qRgb(0, 255, 0))).isEmpty());
    button.setCaptionHighLite(false);
    EXPECT_TRUE(boxOf(paint(3), colour(qRgb(0, 255, 0))).isEmpty());

    // The corners take the face moved by the border brightness.
    button.setCaption("");
    button.setBorderBrightness(-100);
    EXPECT_EQ(paint(0).pixel(119, 59), qRgb(0, 0, 0));
    button.setBorderBrightness(50);
    EXPECT_EQ(paint(0).pixel(3, 0), rgbOf(CandyButton::BlendColors(0xE99950, 0xFFFFFF, 50)));
    EXPECT_EQ(paint(0).pixel(60, 30), rgbOf(0xFFEDB0)) << "the glow is brightest at the centre";
}

TEST_F(CandyPainting, PictureAboveBelowOrAtTheLeftAndItsHighLiteAndDisabledLooks)
{
    QImage picture(20, 20, QImage::Format_ARGB32);
    picture.fill(qRgb(255, 0, 0));
    button.setPicture(picture);
    button.setCaption("Sale");
    const auto red = colour(qRgb(255, 0, 0));
    const int lineHeight = QFontMetrics(button.Font()).height();
    // Above: the picture from (H - (PH + TH)) / 2 + 1, rounded half to even, the caption under it.
    QImage image = paint(0);
    const int top = int(std::lrint((60 - (20 + lineHeight)) / 2.0 + 1));
    EXPECT_EQ(boxOf(image, red), QRect(51, top, 20, 20));
    EXPECT_GT(boxOf(image).top(), top + 19);
    button.setPictureAlignment(1);
    image = paint(0);
    EXPECT_LT(boxOf(image).bottom(), image.height() / 2);
    EXPECT_EQ(image.pixel(60, 45), qRgb(255, 0, 0));

    // At the left: at x = R, y = (H - PH) / 2 + 1.
    button.setCaption("");
    button.setPictureAlignment(2);
    button.setIconHighLite(true);
    button.setIconHighLiteColor(0xFF0000);
    EXPECT_EQ(boxOf(paint(0), red), QRect(16, 21, 20, 20));
    EXPECT_EQ(boxOf(paint(1), red), QRect(17, 22, 20, 20));
    EXPECT_EQ(boxOf(paint(3), colour(qRgb(0, 0, 255))), QRect(16, 21, 20, 20));
    button.setEnabled(false);
    image = paint(0);
    EXPECT_EQ(image.pixel(16, 21), qRgb(128, 128, 128));
    EXPECT_EQ(image.pixel(36, 41), qRgb(255, 255, 255));
}

TEST_F(CandyPainting, TwoLineCaptions)
{
    button.setCaption("One\rTwo");
    const QRect both = boxOf(paint(0));
    // A second line that is a blank is not drawn; a third joins the second.
    button.setCaption("One\r ");
    EXPECT_GT(both.bottom(), boxOf(paint(0)).bottom() + 15);
    button.setCaption("One\rTwo\rThree");
    EXPECT_GT(boxOf(paint(0)).width(), both.width());
}

} // namespace
