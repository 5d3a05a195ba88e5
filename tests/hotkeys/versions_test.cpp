#include "hotkeys/hkeyCompare.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyRelink.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "settings/clsDataPath.h"
#include "support/HkTest.h"
#include "support/SetLines.h"
#include <QDir>
#include <QFile>

using namespace platform;
using testing_support::HkTest;
using testing_support::keyLine;

namespace {

QByteArray newest(const QString &fileName)
{
    const QList<versions::Version> kept = versions::list(fileName);
    return kept.isEmpty() ? QByteArray() : versions::bytesOf(kept.first());
}

class VersionsTest : public HkTest {
protected:
    void saveSet(const QString &number, const QString &title)
    {
        gpHotKeySet_clear();
        gHotKeyGroups[1].Buttons[1].Caption = title;
        gHotKeyGroups[1].Buttons[1].LinkSet = "9";
        ASSERT_TRUE(gpHotKeySet_write(number, title));
    }
};

} // namespace

TEST_F(VersionsTest, EveryRewriteAndRemovalKeepsTheFileAsItWasFiftyVersionsAtMost)
{
    writeDataFile("HKSET01.SDF", "[SET]Hand made\r\n");
    saveSet("01", "Saved");
    EXPECT_EQ(newest("HKSET01.SDF"), "[SET]Hand made\r\n");

    writeDataFile("SPECIAL.BDF", "[BUTTON]1[CAPTION]Old[KEY]*\r\n");
    writeDataFile("COUPON.BDF", "[BUTTON]1[CAPTION]Old[KEY]~SCOUPN[VALUE]1\r\n");
    ASSERT_TRUE(gpSpecialKeys_write("New\r/", "", ""));
    ASSERT_TRUE(gpCouponKeys_write({0, "New", "~SCOUPN|2"}, {1, "", ""}, {2, "", ""}));
    EXPECT_EQ(newest("SPECIAL.BDF"), "[BUTTON]1[CAPTION]Old[KEY]*\r\n");
    EXPECT_EQ(newest("COUPON.BDF"), "[BUTTON]1[CAPTION]Old[KEY]~SCOUPN[VALUE]1\r\n");

    // Removing set 09 repairs set 01, which links to it, and removes 09's own file.
    const QByteArray linking = readDataFile("HKSET01.SDF");
    writeDataFile("HKSET09.SDF", "[SET]Nine\r\n");
    ASSERT_TRUE(gpHotKeySet_remove("09").removed);
    EXPECT_EQ(newest("HKSET01.SDF"), linking);
    EXPECT_EQ(newest("HKSET09.SDF"), "[SET]Nine\r\n");
    EXPECT_EQ(versions::keptFiles(),
              QStringList({"COUPON.BDF", "HKSET01.SDF", "HKSET09.SDF", "SPECIAL.BDF"}));

    // Fifty are kept per file, the oldest dropped first, none twice.
    for (int n = 0; n <= 52; ++n) saveSet("02", "Title " + QString::number(n));
    saveSet("02", "Title 52"); // keeps Title 52 as the file holds it
    saveSet("02", "Title 52"); // which is kept already
    const QList<versions::Version> kept = versions::list("HKSET02.SDF");
    ASSERT_EQ(kept.size(), versions::kMaxVersions);
    EXPECT_TRUE(versions::bytesOf(kept.first()).startsWith("[SET]Title 52\r\n"));
    EXPECT_TRUE(versions::bytesOf(kept.last()).startsWith("[SET]Title 3\r\n"));
    for (int i = 1; i < kept.size(); ++i) EXPECT_GE(kept[i - 1].time, kept[i].time);

    // Another data folder has versions of its own.
    QDir(temp.path()).mkpath("other/data");
    gDataPath.setDataPath(temp.filePath("other/data"));
    EXPECT_TRUE(versions::keptFiles().isEmpty());
    EXPECT_TRUE(versions::list("HKSET01.SDF").isEmpty());
}

TEST_F(VersionsTest, AVersionThatCannotBeKeptIsSaidAndTheUserDecides)
{
    saveSet("01", "Before");
    const QByteArray before = readDataFile("HKSET01.SDF");
    writeDataFile("blocker", "a file where the versions folder should be");
    versions::setRoot(dataPath() + "/blocker/versions");

    dialogs.answer(vbNo);
    gHotKeyGroups[1].Caption = "Changed";
    EXPECT_FALSE(gpHotKeySet_write("01", "After"));
    const testing_support::Box asked = boxes().value(0);
    EXPECT_EQ(asked.title, "Version Not Kept");
    EXPECT_EQ(asked.style, vbYesNo + vbExclamation + vbDefaultButton2);
    EXPECT_TRUE(asked.text.startsWith(
        QDir::toNativeSeparators(dataPath() + "/HKSET01.SDF") +
        "\r\rThe file as it is now could not be kept in Versions:\rThe folder "));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), before);

    dialogs.answer(vbYes);
    EXPECT_TRUE(gpHotKeySet_write("01", "After"));
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_TRUE(readDataFile("HKSET01.SDF").startsWith("[SET]After\r\n"));

    // A removal asks nothing: the set stays, and the reason is among its problems.
    const SetRemoval r = gpHotKeySet_remove("01");
    EXPECT_TRUE(!r.removed && QFile::exists(dataPath() + "/HKSET01.SDF"));
    EXPECT_TRUE(r.problems.value(0).contains("could not be made"));
}

TEST_F(VersionsTest, ClearedKeysGoBackOnlyWherePlacesAreStillEmpty)
{
    writeDataFile("HKSET01.SDF",
                  "[SET]Main\r\n"
                  "[GROUP]1[CAPTION]A[COLOR]\r\n"
                  "[BUTTON]1[CAPTION] [ITEM][ICON][IDSELECT]No[LINKSET][ROOT]\r\n"
                  "[BUTTON]3[CAPTION]Tea[ITEM]0002[ICON][IDSELECT]No[LINKSET][ROOT]\r\n"
                  "[GROUP]2[CAPTION]B[COLOR]\r\n");
    const auto bar = [](int group, int key) {
        return ClearedKey{"HKSET01.SDF", group, key, keyLine(key, "Bar", "", "No", "5").trimmed()};
    };
    QStringList problems;
    // A blank key line is a free place, a key of another item is not, nor a column the set lacks.
    EXPECT_EQ(hotKeySetClearedKeys_restore({bar(1, 1), bar(1, 2), bar(1, 3), bar(2, 4), bar(3, 1)},
                                           &problems),
              3);
    EXPECT_TRUE(problems.isEmpty());
    EXPECT_EQ(readDataFile("HKSET01.SDF"),
              "[SET]Main\r\n"
              "[GROUP]1[CAPTION]A[COLOR]\r\n"
              "[BUTTON]1[CAPTION]Bar[ITEM][ICON][IDSELECT]No[LINKSET]5[ROOT]\r\n"
              "[BUTTON]2[CAPTION]Bar[ITEM][ICON][IDSELECT]No[LINKSET]5[ROOT]\r\n"
              "[BUTTON]3[CAPTION]Tea[ITEM]0002[ICON][IDSELECT]No[LINKSET][ROOT]\r\n"
              "[GROUP]2[CAPTION]B[COLOR]\r\n"
              "[BUTTON]4[CAPTION]Bar[ITEM][ICON][IDSELECT]No[LINKSET]5[ROOT]\r\n");
    EXPECT_EQ(newest("HKSET01.SDF").count("[BUTTON]"), 2) << "kept in Versions first";
}

TEST_F(VersionsTest, TwoStatesOfASetDifferInWordsFieldByField)
{
    HotKeySet before;
    hotKeySetClear(before);
    before[2].Caption = "Drinks";
    before[2].Buttons[5] = {"Coffee", "0001234.5", "", "", "No", "coffee.jpg"};
    EXPECT_TRUE(hotKeySetDifferences(before, "Lunch", before, "Lunch").isEmpty());

    HotKeySet after = before;
    after[2].Caption = "Hot Drinks";
    after[2].Color = glHotKeyColor_value("RED");
    after[2].Buttons[5] = {"Tea", "0001299.0", "03", "X", "Yes", ""};
    after[4].Buttons[8].Caption = "New";
    QStringList said;
    for (const SetDifference &d : hotKeySetDifferences(before, "Lunch", after, "Dinner"))
        said << d.text;
    EXPECT_EQ(said, QStringList({"Title: Lunch -> Dinner",
                                 "Column 2: title Drinks -> Hot Drinks; colour *Default -> RED",
                                 "Column 2 key 5: label Coffee -> Tea; item 0001234.5 -> "
                                 "0001299.0; sold by S/L -> Item ID; link (none) -> 03; picture "
                                 "coffee.jpg -> (none); root (none) -> X",
                                 "Column 4 key 8: label (none) -> New"}));
}
