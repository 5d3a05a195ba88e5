#include "candybutton/CandyButton.h"
#include "support/HkTest.h"
#include <QSettings>

namespace {

using CandyProperties = testing_support::HkTest;

// Up, hover, down and bright.
QList<quint32> faceColours(const CandyButton &b)
{
    return {b.ColorButtonUp(), b.ColorButtonHover(), b.ColorButtonDown(), b.ColorBright()};
}

TEST_F(CandyProperties, SchemesColoursSetByHandAndHostileValuesInAHandEditedBag)
{
    CandyButton b;
    b.InitProperties();
    b.setColorScheme(3);
    b.setColorButtonUp(0x123456);
    EXPECT_EQ(b.ColorScheme(), 0) << "a colour set by hand makes the scheme custom";
    b.setColorScheme(7);
    EXPECT_EQ(b.ColorScheme(), 7) << "a number outside the table is kept";
    EXPECT_EQ(faceColours(b), QList<quint32>({0x123456, 0xA00000, 0xF00000, 0xFF0000}));
    b.setBorderBrightness(-150);
    EXPECT_EQ(b.BorderBrightness(), -100);
    // A bag edited by hand keeps its colours; hostile values fall back or clamp.
    b.ReadProperties(QVariantMap{{"ColorButtonUp", 0x112233}, {"ColorBright", 0x445566}});
    EXPECT_EQ(b.ColorScheme(), 0);
    EXPECT_EQ(faceColours(b), QList<quint32>({0x112233, 0xFFC090, 0xE99950, 0x445566}));

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

TEST_F(CandyProperties, EveryPropertyGoesThroughASettingsFileAndBack)
{
    CandyButton a(nullptr, "cmdOk");
    a.ReadProperties(QVariantMap());
    EXPECT_EQ(a.Caption(), "cmdOk") << "a new control is captioned with its name";
    EXPECT_EQ(QList<quint32>({a.CaptionHighLiteColor(), a.IconHighLiteColor(), a.ForeColor(),
                              a.ColorBright()}),
              QList<quint32>({0x00FF00, 0x00FF00, 0, 0xFFEDB0}));
    EXPECT_TRUE(a.WriteProperties().isEmpty()) << "defaults are not stored";
    QImage picture(8, 6, QImage::Format_ARGB32);
    picture.fill(qRgba(10, 20, 30, 255));
    QFont font("DejaVu Sans", 13);
    font.setBold(true);
    a.setColorScheme(2);
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
    a.setDisplayHand(true);
    const QVariantMap bag = a.WriteProperties();
    EXPECT_EQ(bag.size(), 18) << "all but Checked, left at its default";
    const QString file = temp.filePath("look.ini");
    {
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
    EXPECT_EQ(b.WriteProperties(), bag);
    EXPECT_FALSE(b.isEnabled());
    EXPECT_EQ(b.cursor().shape(), Qt::PointingHandCursor);
}

} // namespace
