#include "candybutton/CandyButton.h"
#include "support/HkTest.h"
#include <QSettings>
#include <QSignalSpy>

namespace {

class CandyProperties : public testing_support::HkTest {
protected:
    QStringList marks(QSignalSpy &spy)
    {
        QStringList names;
        for (const QList<QVariant> &args : spy) names << args.at(0).toString();
        return names;
    }
};

TEST_F(CandyProperties, NewControlTakesTheDefaultsAndItsNameAsCaption)
{
    CandyButton b(nullptr, "cmdSave");
    b.ReadProperties(QVariantMap());
    EXPECT_TRUE(b.Ready());
    EXPECT_EQ(b.Caption(), "cmdSave");
    EXPECT_TRUE(b.Enabled());
    EXPECT_EQ(b.ColorButtonHover(), 0xFFC090u);
    EXPECT_EQ(b.ColorButtonUp(), 0xE99950u);
    EXPECT_EQ(b.ColorButtonDown(), 0xE99950u);
    EXPECT_EQ(b.ColorBright(), 0xFFEDB0u);
    EXPECT_EQ(b.CaptionHighLiteColor(), 0x00FF00u);
    EXPECT_EQ(b.IconHighLiteColor(), 0x00FF00u);
    EXPECT_EQ(b.ForeColor(), 0u);
    EXPECT_EQ(b.ColorScheme(), 0);
    EXPECT_EQ(b.BorderBrightness(), 0);
    EXPECT_EQ(b.PictureAlignment(), 0);
    EXPECT_FALSE(b.Checked());
    EXPECT_TRUE(b.Picture().isNull());
    // Defaults are not stored.
    EXPECT_TRUE(b.WriteProperties().isEmpty());
}

TEST_F(CandyProperties, SchemeSetsTheFourColoursAndAHandSetColourMakesItCustom)
{
    CandyButton b;
    b.InitProperties();
    QSignalSpy spy(&b, &CandyButton::PropertyChanged);
    b.setColorScheme(3);
    EXPECT_EQ(b.ColorScheme(), 3);
    EXPECT_EQ(b.ColorButtonUp(), 0x800000u);
    EXPECT_EQ(b.ColorButtonHover(), 0xA00000u);
    EXPECT_EQ(b.ColorButtonDown(), 0xF00000u);
    EXPECT_EQ(b.ColorBright(), 0xFF0000u);
    EXPECT_EQ(marks(spy), QStringList({"m_ColorButtonUp", "m_ColorButtonHover", "m_ColorButtonDown",
                                       "m_ColorBright", "m_ColorScheme"}));

    spy.clear();
    b.setColorButtonUp(0x123456);
    EXPECT_EQ(b.ColorScheme(), 0);
    EXPECT_EQ(b.ColorButtonUp(), 0x123456u);
    EXPECT_EQ(b.ColorButtonHover(), 0xA00000u);
    EXPECT_EQ(b.ColorButtonDown(), 0xF00000u);
    EXPECT_EQ(b.ColorBright(), 0xFF0000u);
    EXPECT_EQ(marks(spy), QStringList({"m_ColorScheme", "m_ColorButtonUp"}));

    // A number outside the table leaves the colours alone, and is kept.
    b.setColorScheme(7);
    EXPECT_EQ(b.ColorScheme(), 7);
    EXPECT_EQ(b.ColorButtonUp(), 0x123456u);
}

TEST_F(CandyProperties, BorderBrightnessIsClampedAndMarkedUnderItsOwnName)
{
    CandyButton b;
    QSignalSpy spy(&b, &CandyButton::PropertyChanged);
    b.setBorderBrightness(150);
    EXPECT_EQ(b.BorderBrightness(), 100);
    b.setBorderBrightness(-150);
    EXPECT_EQ(b.BorderBrightness(), -100);
    b.setBorderBrightness(-7);
    EXPECT_EQ(b.BorderBrightness(), -7);
    EXPECT_EQ(marks(spy), QStringList(3, "m_BorderBrightness"));
}

TEST_F(CandyProperties, UnchangedAlignmentAndStyleMarkNothing)
{
    CandyButton b;
    QSignalSpy spy(&b, &CandyButton::PropertyChanged);
    b.setPictureAlignment(0);
    b.setStyle(0);
    EXPECT_TRUE(spy.isEmpty());
    b.setPictureAlignment(2);
    b.setStyle(5);
    b.setCaption("Go");
    b.setChecked(true);
    EXPECT_EQ(marks(spy), QStringList({"PictureAlignment", "Style", "Caption", "Checked"}));
    EXPECT_EQ(b.Style(), 5);
}

TEST_F(CandyProperties, SchemeBeforeReadyStoresColoursAndDrawsNothing)
{
    CandyButton b;
    b.resize(40, 20);
    b.setColorScheme(5);
    EXPECT_EQ(b.ColorButtonUp(), 0x008000u);
    EXPECT_FALSE(b.Ready());
    EXPECT_TRUE(b.surface().isNull());
    b.InitProperties();
    b.Redraw(0);
    EXPECT_FALSE(b.surface().isNull());
}

TEST_F(CandyProperties, BagWithoutSchemeKeepsTheStoredColours)
{
    CandyButton b;
    b.ReadProperties(QVariantMap{{"ColorButtonUp", 0x112233}, {"ColorBright", 0x445566}});
    EXPECT_EQ(b.ColorScheme(), 0);
    EXPECT_EQ(b.ColorButtonUp(), 0x112233u);
    EXPECT_EQ(b.ColorBright(), 0x445566u);
    EXPECT_EQ(b.ColorButtonHover(), 0xFFC090u);
}

TEST_F(CandyProperties, EveryPropertyGoesThroughTheBagAndBack)
{
    QImage picture(8, 6, QImage::Format_ARGB32);
    picture.fill(qRgba(10, 20, 30, 255));
    QFont font("DejaVu Sans", 13);
    font.setBold(true);

    CandyButton a(nullptr, "cmdA");
    a.InitProperties();
    a.setColorScheme(4);
    a.setBorderBrightness(-40);
    a.setEnabled(false);
    a.setFont(font);
    a.setCaption("Two\rlines");
    a.setIconHighLite(true);
    a.setIconHighLiteColor(0x0000FF);
    a.setCaptionHighLite(true);
    a.setCaptionHighLiteColor(0xFF0000);
    a.setForeColor(0x808080);
    a.setPicture(picture);
    a.setPictureAlignment(3);
    a.setStyle(2);
    a.setChecked(true);
    a.setDisplayHand(true);
    const QVariantMap bag = a.WriteProperties();
    EXPECT_EQ(bag.size(), 19);

    CandyButton b(nullptr, "cmdA");
    b.ReadProperties(bag);
    EXPECT_EQ(b.WriteProperties(), bag);
    EXPECT_EQ(b.ColorScheme(), 4);
    EXPECT_EQ(b.ColorButtonDown(), 0x0000F0u);
    EXPECT_EQ(b.BorderBrightness(), -40);
    EXPECT_FALSE(b.Enabled());
    EXPECT_FALSE(b.isEnabled());
    EXPECT_EQ(b.Font(), font);
    EXPECT_EQ(b.Caption(), "Two\rlines");
    EXPECT_EQ(b.Picture().pixel(3, 3), picture.pixel(3, 3));
    EXPECT_EQ(b.PictureAlignment(), 3);
    EXPECT_TRUE(b.Checked());
    EXPECT_EQ(b.cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(CandyProperties, SettingsFileKeepsTheLookAcrossProcesses)
{
    const QString file = temp.filePath("look.ini");
    {
        CandyButton a(nullptr, "cmdOk");
        a.ReadProperties(QVariantMap());
        a.setColorScheme(2);
        a.setBorderBrightness(25);
        a.setCaptionHighLite(true);
        a.setCaption("OK");
        QSettings s(file, QSettings::IniFormat);
        s.beginGroup("cmdOk");
        s.setValue("Checked", true); // a value left from an older look
        a.WriteProperties(s);
    }
    // Read back as text, as a new process sees an INI file.
    QSettings s(file, QSettings::IniFormat);
    s.beginGroup("cmdOk");
    EXPECT_FALSE(s.contains("Checked"));
    EXPECT_EQ(s.value("ColorButtonHover").toString(), QString::number(0xE06000));
    CandyButton b(nullptr, "cmdOk");
    b.ReadProperties(s);
    EXPECT_EQ(b.ColorScheme(), 2);
    EXPECT_EQ(b.ColorButtonUp(), 0xD09060u);
    EXPECT_EQ(b.ColorButtonHover(), 0xE06000u);
    EXPECT_EQ(b.ColorBright(), 0xFFFAFAu);
    EXPECT_EQ(b.BorderBrightness(), 25);
    EXPECT_TRUE(b.CaptionHighLite());
    EXPECT_FALSE(b.Checked());
    EXPECT_EQ(b.Caption(), "OK");
}

TEST_F(CandyProperties, HostileBagValuesFallBackOrClamp)
{
    CandyButton b;
    b.ReadProperties(QVariantMap{{"BorderBrightness", "900"},
                                 {"PictureAlignment", "-3"},
                                 {"Enabled", "perhaps"},
                                 {"ColorButtonUp", "red"},
                                 {"Picture", QByteArray("not a picture")}});
    EXPECT_EQ(b.BorderBrightness(), 100);
    EXPECT_EQ(b.PictureAlignment(), 0);
    EXPECT_TRUE(b.Enabled());
    EXPECT_EQ(b.ColorButtonUp(), 0xE99950u);
    EXPECT_TRUE(b.Picture().isNull());
}

} // namespace
