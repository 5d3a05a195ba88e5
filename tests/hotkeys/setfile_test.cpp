#include "hotkeys/hkeyServices.h"
#include "support/HkTest.h"
#include "support/SetLines.h"
#include <QDir>

using testing_support::HkTest;

namespace {

using testing_support::blankKeys;

// The worked example: set 03, Lunch Menu.
QByteArray lunchMenu()
{
    return "[SET]Lunch Menu\r\n"
           "[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n"
           "[BUTTON]1[CAPTION]Coffee[ITEM]0001234.5[ICON]coffee.jpg[IDSELECT]No[LINKSET][ROOT]\r\n"
           "[BUTTON]2[CAPTION]More Drinks[ITEM][ICON][IDSELECT]No[LINKSET]7[ROOT]\r\n" +
           blankKeys(3) +
           "[GROUP]2[CAPTION]Desserts[COLOR]DARK_RED\r\n"
           "[BUTTON]1[CAPTION]Cake[ITEM]CAKE-1[ICON][IDSELECT]Yes[LINKSET][ROOT]\r\n" +
           blankKeys(2) + "[GROUP]3[CAPTION][COLOR]*Default\r\n" + blankKeys(1) +
           "[GROUP]4[CAPTION][COLOR]*Default\r\n" + blankKeys(1);
}

} // namespace

TEST_F(HkTest, WorkedExampleIsWrittenByteForByteAndReadBack)
{
    gpHotKeySet_clear();
    gHotKeyGroups[1].Caption = "Drinks";
    gHotKeyGroups[1].Color = glHotKeyColor_value("BLUE");
    gHotKeyGroups[1].Buttons[1] = {"Coffee", "0001234.5", "", "", "No", "coffee.jpg"};
    gHotKeyGroups[1].Buttons[2] = {"More Drinks", "", "7", "", "No", ""};
    gHotKeyGroups[2].Caption = "Desserts";
    gHotKeyGroups[2].Color = glHotKeyColor_value("DARK_RED");
    gHotKeyGroups[2].Buttons[1] = {"Cake", "CAKE-1", "", "", "Yes", ""};
    ASSERT_TRUE(gpHotKeySet_write("03", "Lunch Menu"));
    EXPECT_EQ(readDataFile("HKSET03.SDF"), lunchMenu());

    gpHotKeySet_clear();
    EXPECT_EQ(gfsHotKeySet_read("3"), "Lunch Menu");
    EXPECT_EQ(gHotKeyGroups[1].Color, 0xFF0000);
    EXPECT_EQ(gHotKeyGroups[2].Color, 0x0000C0);
    EXPECT_EQ(gHotKeyGroups[3].Color, kSilverColor) << "*Default reads as silver";
    EXPECT_EQ(gHotKeyGroups[1].Buttons[1].Icon, "coffee.jpg");
    EXPECT_EQ(gHotKeyGroups[1].Buttons[2].LinkSet, "7");
    EXPECT_EQ(gHotKeyGroups[2].Buttons[1].IdSelect, "Yes");

    // Written under the number as given; *Default read back is written blank from then on.
    ASSERT_TRUE(gpHotKeySet_write("3", "Lunch Menu"));
    EXPECT_EQ(readDataFile("HKSET3.SDF"), lunchMenu().replace("[COLOR]*Default", "[COLOR]"));
}

TEST_F(HkTest, ReaderSkipsWhatItDoesNotKnowAndBadInputCorruptsNothing)
{
    writeDataFile("HKSET08.SDF", "[SET]Title\r\n"
                                 "[BUTTON]2[CAPTION]Orphan\r\n"
                                 "\r\n"
                                 "junk line\r\n"
                                 "[GROUP]2[CAPTION]  Soup  [COLOR]GREEN\r\n"
                                 "[BUTTON]3[CAPTION]A [B]C\r\n"
                                 "[BUTTON]4[CAPTION]  Soup  [ROOT] r [ITEM] 12 \r\n");
    gpHotKeySet_clear();
    EXPECT_EQ(gfsHotKeySet_read("08"), "Title");
    EXPECT_EQ(gHotKeyGroups[0].Buttons[2].Caption, "Orphan") << "before any group: group 0";
    EXPECT_EQ(gHotKeyGroups[2].Caption, "  Soup");
    EXPECT_EQ(gHotKeyGroups[2].Color, 0x00FF00);
    const HotKeyButton &a = gHotKeyGroups[2].Buttons[3];
    EXPECT_EQ(a.Caption, "A");
    EXPECT_TRUE(a.Item.isEmpty() && a.Icon.isEmpty() && a.LinkSet.isEmpty());
    const HotKeyButton &soup = gHotKeyGroups[2].Buttons[4];
    EXPECT_EQ(soup.Caption, "Soup");
    EXPECT_EQ(soup.Root, "r");
    EXPECT_EQ(soup.Item, "12");
    EXPECT_EQ(gHotKeyGroups[1].Color, kButtonFaceColor) << "missing lines keep the cleared state";

    // Line 1 is the title line whatever it holds; the last line needs no line end.
    writeDataFile("HKSET09.SDF", "[GROUP]1[CAPTION]Lost[COLOR]RED\r\n[GROUP]2[CAPTION]Kept");
    gpHotKeySet_clear();
    EXPECT_EQ(gfsHotKeySet_read("9"), "");
    EXPECT_EQ(gHotKeyGroups[1].Caption, "");
    EXPECT_EQ(gHotKeyGroups[2].Caption, "Kept");

    static constexpr char title[] = "[SET]Junk\xff\x80\x00title\n";
    writeDataFile("HKSET11.SDF", QByteArray(title, sizeof title - 1) +
                                     "[GROUP]9[CAPTION]Nine\r"
                                     "[BUTTON]1[CAPTION]After bad group\r"
                                     "[GROUP]3[CAPTION]Three\n"
                                     "[BUTTON]99[CAPTION]Too far\n"
                                     "[BUTTON]-1[CAPTION]Negative\n"
                                     "[BUTTON]99999999[CAPTION]Overflow\n"
                                     "[BUTTON]2.5[CAPTION]Even\n"
                                     "[BUTTON]5[CAPTION]" +
                                     QByteArray(70000, 'x') +
                                     "\n[GROUP]1[CAPTION]\x01\x02[COLOR]\xff");
    gpHotKeySet_clear();
    EXPECT_EQ(gfsHotKeySet_read("11"), QString::fromUtf8("Junk\u00ff\u20ac") + QChar(0) + "title");
    EXPECT_EQ(gHotKeyGroups[3].Caption, "Three");
    EXPECT_EQ(gHotKeyGroups[3].Buttons[2].Caption, "Even") << "2.5 rounds half to even";
    EXPECT_EQ(gHotKeyGroups[3].Buttons[5].Caption.size(), 70000);
    EXPECT_EQ(gHotKeyGroups[1].Caption, "\x01\x02");
    EXPECT_EQ(gHotKeyGroups[1].Color, kSilverColor);
    QStringList captions;
    for (const HotKeyGroup &g : gHotKeyGroups)
        for (const HotKeyButton &b : g.Buttons) captions << b.Caption;
    for (const char *skipped : {"Nine", "After bad group", "Too far", "Negative", "Overflow"})
        EXPECT_FALSE(captions.contains(skipped)) << skipped;
    // What was read writes back in the same code page.
    ASSERT_TRUE(gpHotKeySet_write("11", "Junk\u00ff\u20ac"));
    EXPECT_TRUE(readDataFile("HKSET11.SDF").startsWith("[SET]Junk\xff\x80\r\n"));
}

TEST_F(HkTest, MissingFileIsReportedOncePerReadAndLeavesTheRecord)
{
    gpHotKeySet_clear();
    gHotKeyGroups[1].Caption = "Kept";
    EXPECT_EQ(gfsHotKeySet_read("42"), "");
    EXPECT_EQ(gfsHotKeySet_read("42"), "");
    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].style, 16);
    EXPECT_EQ(shown[0].title, "ZEL Hot Keys");
    EXPECT_EQ(shown[0].text, QDir::toNativeSeparators(dataPath() + "/HKSET42.SDF") +
                                 "\r\rHot Keys File Is Missing\rMake sure the Hot Keys file is "
                                 "in the data path.");
    EXPECT_EQ(gHotKeyGroups[1].Caption, "Kept");
}
