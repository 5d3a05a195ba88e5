#include "hotkeys/hkeyServices.h"
#include "support/HkTest.h"
#include "support/OneBox.h"
#include "support/SetLines.h"
#include <QDir>

using testing_support::HkTest;
using testing_support::oneBox;

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
    EXPECT_EQ(gHotKeyGroups[3].Color, kSilverColor);

    // Read back whole: written under the number as given, *Default blank from then on.
    ASSERT_TRUE(gpHotKeySet_write("3", "Lunch Menu"));
    EXPECT_EQ(readDataFile("HKSET3.SDF"), lunchMenu().replace("[COLOR]*Default", "[COLOR]"));
}

TEST_F(HkTest, ReaderSkipsWhatItDoesNotKnowAndBadInputOrAMissingFileCorruptsNothing)
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
    EXPECT_EQ(gHotKeyGroups[0].Buttons[2].Caption, "Orphan"); // before any column: column 0
    EXPECT_EQ(gHotKeyGroups[2].Caption, "  Soup");
    EXPECT_EQ(gHotKeyGroups[2].Color, 0x00FF00);
    const auto &b = gHotKeyGroups[2].Buttons;
    EXPECT_EQ(QStringList({b[3].Caption, b[3].Item, b[3].Icon, b[3].LinkSet, b[4].Caption,
                           b[4].Root, b[4].Item}),
              QStringList({"A", "", "", "", "Soup", "r", "12"}));
    EXPECT_EQ(gHotKeyGroups[1].Color, kButtonFaceColor); // missing lines keep the cleared state

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
    EXPECT_EQ(gHotKeyGroups[1].Caption, "\x01\x02");
    EXPECT_EQ(gHotKeyGroups[1].Color, kSilverColor);
    QStringList keys; // the bad numbers skipped, 2.5 rounded half to even
    for (const HotKeyGroup &g : gHotKeyGroups)
        for (const HotKeyButton &key : g.Buttons) keys << key.Caption;
    keys.removeAll("");
    EXPECT_EQ(keys, QStringList({"Even", QString(70000, 'x')}));
    EXPECT_EQ(gHotKeyGroups[3].Buttons[2].Caption, "Even");
    // What was read writes back in the same code page.
    ASSERT_TRUE(gpHotKeySet_write("11", "Junk\u00ff\u20ac"));
    EXPECT_TRUE(readDataFile("HKSET11.SDF").startsWith("[SET]Junk\xff\x80\r\n"));

    // A missing file is told once per read and leaves the record as it was.
    gHotKeyGroups[1].Caption = "Kept";
    for (int read = 0; read < 2; ++read) {
        EXPECT_EQ(gfsHotKeySet_read("42"), "");
        EXPECT_TRUE(oneBox(boxes(),
                           QDir::toNativeSeparators(dataPath() + "/HKSET42.SDF") +
                               "\r\rHot Keys File Is Missing\rMake sure the Hot Keys file is "
                               "in the data path.",
                           platform::vbCritical, "ZEL Hot Keys"));
    }
    EXPECT_EQ(gHotKeyGroups[1].Caption, "Kept");
}
