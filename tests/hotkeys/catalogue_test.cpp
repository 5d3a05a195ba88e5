#include "hotkeys/hkeyServices.h"
#include "support/HkTest.h"
#include <QFile>

using testing_support::HkTest;

namespace {

QByteArray setFile(const QString &title, const QStringList &links)
{
    QByteArray out = "[SET]" + title.toLatin1() + "\r\n[GROUP]1[CAPTION]Col[COLOR]BLUE\r\n";
    for (int k = 0; k < links.size(); ++k)
        out += "[BUTTON]" + QByteArray::number(k + 1) + "[CAPTION] Key " +
               QByteArray::number(k + 1) + " [ITEM][ICON]p.jpg[IDSELECT]No[LINKSET]" +
               links[k].toLatin1() + "[ROOT]\r\n";
    return out;
}

} // namespace

// A number that names no set removes nothing: every key without a link would match set 0.
TEST_F(HkTest, ListingHoldsExactlyTheSetFilesAndARemovalOfNoSetKeepsEveryKey)
{
    for (const char *name :
         {"HKSET10.SDF", "HKSET2.SDF", "HKSET05.SDFX", "hkset03.sdf", "OTHER.SDF", "HKSET.SDF"})
        writeDataFile(name, "[SET]x\r\n");
    for (const char *name : {"HKSET01.SDF", "HKSET01-old.SDF", "HKSET00.SDF"})
        writeDataFile(name, setFile("One", {"", "2", ""}));
    EXPECT_EQ(hotKeySetFiles(), QStringList({"HKSET.SDF", "HKSET00.SDF", "HKSET01-old.SDF",
                                             "HKSET01.SDF", "HKSET10.SDF", "HKSET2.SDF"}));
    EXPECT_EQ(hotKeySetDigits("HKSET123.SDF"), "123");
    EXPECT_EQ(hotKeySetShownDigits("HKSET1234.SDF"), "234");
    EXPECT_EQ(hotKeySetNumber("HKSET01-old.SDF"), "");
    EXPECT_EQ(hotKeySetNumber("HKSET00.SDF"), "");
    const auto before = testing_support::filesUnder(dataPath());
    for (const QString &number :
         {hotKeySetShownDigits("HKSET01-old.SDF"), QString("00"), QString("0"), QString(" ")}) {
        const SetRemoval r = gpHotKeySet_remove(number);
        EXPECT_TRUE(!r.removed && r.problems.size() == 1);
        EXPECT_EQ(testing_support::filesUnder(dataPath()), before);
    }

    // A label reads only the title line.
    writeDataFile("HKSET07.SDF", "[SET]Seven  \r\n[GROUP]1[CAPTION]X\r\n");
    gpHotKeySet_clear();
    gHotKeyGroups[1].Caption = "editing";
    EXPECT_EQ(gfsHotKeySet_label("7"), "07 Seven");
    EXPECT_EQ(gfsHotKeySet_label("  "), "");
    EXPECT_EQ(gHotKeyGroups[1].Caption, "editing");
}

TEST_F(HkTest, RemovalDropsEveryLinkingLineAndKeepsTheRestToTheByte)
{
    writeDataFile("HKSET07.SDF", setFile("Seven", {"7", "1"}));
    writeDataFile("HKSET01.SDF", setFile("One", {"7", "17", "07", "70", ""}) + "\r\n  \r\n");
    writeDataFile("HKSET02.SDF", setFile("Two", {"1"}));
    const QByteArray two = readDataFile("HKSET02.SDF");

    const SetRemoval r = gpHotKeySet_remove("07");
    EXPECT_TRUE(r.removed && r.problems.isEmpty());
    EXPECT_FALSE(QFile::exists(dataPath() + "/HKSET07.SDF"));
    EXPECT_EQ(readDataFile("HKSET02.SDF"), two) << "a file without a link is not rewritten";
    EXPECT_EQ(readDataFile("HKSET01.SDF"),
              "[SET]One\r\n[GROUP]1[CAPTION]Col[COLOR]BLUE\r\n"
              "[BUTTON]2[CAPTION] Key 2 [ITEM][ICON]p.jpg[IDSELECT]No[LINKSET]17[ROOT]\r\n"
              "[BUTTON]4[CAPTION] Key 4 [ITEM][ICON]p.jpg[IDSELECT]No[LINKSET]70[ROOT]\r\n"
              "[BUTTON]5[CAPTION] Key 5 [ITEM][ICON]p.jpg[IDSELECT]No[LINKSET][ROOT]\r\n");
}
