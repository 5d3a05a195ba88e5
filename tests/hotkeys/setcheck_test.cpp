#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeySetCheck.h"
#include "support/HkTest.h"
#include "support/SetLines.h"
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>

using namespace setcheck;
using testing_support::HkTest;

namespace {

using testing_support::blankKeys;
using testing_support::keyLine;

// "03 2/5 text" for each finding, so a whole list compares in one line.
QStringList lines(const Result &r)
{
    QStringList out;
    for (const Finding &f : r.findings)
        out << QString("%1 %2/%3 %4").arg(f.number).arg(f.group).arg(f.key).arg(f.text);
    return out;
}

class SetCheckTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        QDir(dataPath()).mkpath("pictures/HotKeys");
        gsHotKeyPicturePath = dataPath() + "/pictures/HotKeys/";
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(Qt::white);
        ASSERT_TRUE(image.save(gsHotKeyPicturePath + "coffee.jpg"));
    }
    // A set whose first column holds `keys`; the other columns are blank.
    void writeSet(int number, const QByteArray &title, const QByteArray &keys,
                  const QByteArray &column = "[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n")
    {
        QByteArray text = "[SET]" + title + "\r\n" + column + keys;
        for (int g = 2; g <= 4; ++g)
            text +=
                "[GROUP]" + QByteArray::number(g) + "[CAPTION][COLOR]*Default\r\n" + blankKeys();
        writeDataFile(QString("HKSET%1.SDF").arg(number, 2, 10, QChar('0')), text);
    }
    Result check()
    {
        return checkSets([this](const QStringList &keys, bool byId) {
            QHash<QString, ItemState> known;
            for (const QString &key : keys) {
                asked << (byId ? "I " : "S ") + key;
                if (inventory.contains(asked.last()))
                    known[key] = inventory[asked.last()];
            }
            return std::optional(known);
        });
    }
    // By the kind asked, as the inventory tells S/Ls and Item IDs apart.
    QHash<QString, ItemState> inventory{{"S 00012345", ItemState::Found},
                                        {"I CAKE-1", ItemState::Found},
                                        {"S 00099990", ItemState::Deleted}};
    QStringList asked;
};

} // namespace

TEST_F(SetCheckTest, FindsEachPlantedFaultAndNothingElse)
{
    writeSet(1, "Main",
             keyLine(1, "Coffee", "0001234.5", "No", "", "coffee.jpg") +
                 keyLine(2, "Cake", "cake-1", "Yes") + keyLine(3, "Lunch", "", "No", "2") +
                 keyLine(4, "Gone", "", "No", "7") + keyLine(5, "Again", "", "No", "01") +
                 keyLine(6, "Old Tea", "0009999.0", "No") + keyLine(7, "Ghost", "0005555.0", "No") +
                 keyLine(8, "", "", "", "", "tea.jpg"));
    writeSet(2, "Lunch",
             keyLine(1, "Back", "", "No", "1") + keyLine(2, "Cake", "CAKE-1", "Yes") +
                 keyLine(3, "Mystery", "X-1", "") + blankKeys(4));
    writeSet(3, "Hidden", blankKeys(), "[GROUP]1[CAPTION][COLOR]RED\r\n");
    const auto before = testing_support::filesUnder(dataPath());

    const Result r = check();

    EXPECT_FALSE(r.canceled);
    EXPECT_EQ(r.sets, 3);
    EXPECT_EQ(
        lines(r),
        QStringList({"01 1/4 opens set 07, which is no longer in the data folder: the key "
                     "leads nowhere",
                     "01 1/5 opens its own set, so it does nothing useful",
                     "01 1/6 sells S/L 0009999.0, which is marked deleted in the inventory",
                     "01 1/7 sells S/L 0005555.0, which is not in the inventory",
                     "01 1/8 shows the picture \"tea.jpg\", which is not in the pictures folder",
                     "01 1/8 has a picture but no label, item or link: a left-over that "
                     "does nothing",
                     "02 1/3 sells \"X-1\" but does not say whether it is an S/L or an Item "
                     "ID, so it sells nothing: open the key and choose one",
                     "03 0/0 no key of another set opens this set (for information: the "
                     "sales screen may open it from elsewhere)",
                     "03 1/0 has the colour RED but no title and no keys: a left-over"}))
        << lines(r).join("\n").toStdString();
    EXPECT_TRUE(r.findings[7].information());
    // One question per item, whatever form the keys give it in.
    EXPECT_EQ(asked.size(), 4) << asked.join(", ").toStdString();
    EXPECT_EQ(testing_support::filesUnder(dataPath()), before);

    // An inventory that cannot be read is told once, and no item is blamed.
    const Result blind = checkSets([](const QStringList &, bool) { return std::nullopt; });
    EXPECT_EQ(lines(blind), QStringList{" 0/0 The inventory could not be read, so no item was "
                                        "checked: check the database and run the check again."} +
                                lines(r).filter(QRegularExpression("^(?!01 1/[67] )")));
}

TEST_F(SetCheckTest, HandEditedFilesAreReportedAsWhatTheyAre)
{
    writeDataFile("HKSET01.SDF", "[SET]Bad numbers\r\n[GROUP]7[CAPTION]Far[COLOR]RED\r\n"
                                 "[BUTTON]1[CAPTION]Lost\r\n[GROUP]1[CAPTION]Ok[COLOR]\r\n"
                                 "[BUTTON]x[CAPTION]What\r\n[BUTTON]9[CAPTION]Nine\r\n");
    writeDataFile("HKSET02.SDF", QByteArray("[SET]Junk\r\n\x01\xff\xfe\x00junk\r\n", 21) +
                                     keyLine(1, "Go", "", "No", "1"));
    writeDataFile("HKSET03.SDF",
                  "[SET]Unix\n[GROUP]1[CAPTION]A[COLOR]\n" + keyLine(1, "Go", "", "No", "1"));
    writeDataFile("HKSET04.SDF", "");
    writeDataFile("HKSET05.SDF",
                  "[BUTTON]1[CAPTION]Early[ITEM][ICON][IDSELECT][LINKSET]1[ROOT]\r\n");
    writeDataFile("HKSET01-old.SDF", "[SET]Copy\r\n");

    const Result r = check();

    QStringList said;
    for (const Finding &f : r.findings)
        if (f.kind != Kind::NotOpened)
            said << f.fileName + ": " + f.text;
    EXPECT_EQ(said,
              QStringList(
                  {"HKSET01.SDF: line 2 names column \"7\", which is not 1 to 4: it and its keys "
                   "were skipped",
                   "HKSET01.SDF: line 5 names key \"x\", which is not 1 to 8: it was skipped",
                   "HKSET01.SDF: line 6 names key \"9\", which is not 1 to 8: it was skipped",
                   "HKSET02.SDF: line 2 is neither a column nor a key line: it was skipped",
                   "HKSET02.SDF: line 3 is a key before the first column line: no column shows it",
                   "HKSET03.SDF: its lines do not all end in CR LF, as this program writes them "
                   "(a hand edit?): a sales station may read the set differently",
                   "HKSET04.SDF: the file is empty: the set has no title and no keys",
                   "HKSET05.SDF: line 1 is not the title line ([SET]): the set shows no title",
                   "HKSET01-old.SDF: is not named as a set (HKSET, a number of two digits or "
                   "more, .SDF), so no key can open it: rename or remove HKSET01-old.SDF"}))
        << said.join("\n").toStdString();
}

TEST_F(SetCheckTest, AFileThatVanishesDuringTheCheckIsToldAndCancelKeepsWhatWasFound)
{
    for (int n = 1; n <= 3; ++n) writeSet(n, "Set", keyLine(1, "Go", "", "No", n == 3 ? "1" : "9"));
    const auto noItems = [](const QStringList &, bool) {
        return std::optional(QHash<QString, ItemState>());
    };
    const Result r = checkSets(noItems, [this](int done, int) {
        if (done == 1)
            QFile::remove(dataPath() + "/HKSET02.SDF");
        return true;
    });
    EXPECT_EQ(r.sets, 3);
    EXPECT_TRUE(lines(r).contains("02 0/0 was removed while the check ran"))
        << lines(r).join("\n").toStdString();

    const Result canceled = checkSets(noItems, [](int done, int total) {
        EXPECT_EQ(total, 2);
        return done < 1;
    });
    EXPECT_TRUE(canceled.canceled && canceled.sets == 1);
    // Set 01's missing link, and no word yet on the sets no key opens.
    EXPECT_EQ(lines(canceled), QStringList{lines(r).first()});
}

TEST_F(SetCheckTest, WhereUsedFindsAnItemInEveryFormAndASetByEveryFormOfItsNumber)
{
    writeSet(1, "Main",
             keyLine(1, "Coffee", "0001234.5", "No") + keyLine(2, "Coffee 2", "1234.5", "No") +
                 keyLine(3, "By Id", "cafe-9", "Yes") + keyLine(4, "Link", "0001234.5", "No", "2") +
                 keyLine(5, "Other", "0001234.6", "No") + blankKeys(6));
    writeSet(2, "Lunch",
             keyLine(1, "Back", "", "No", "1") + keyLine(2, "Back 2", "", "No", "01") +
                 keyLine(3, "Far", "", "No", "10") + blankKeys(4));

    EXPECT_EQ(lines(whereItemUsed({"0001234.5", "CAFE-9"})),
              QStringList({"01 1/1 \"Coffee\" sells S/L 0001234.5",
                           "01 1/3 \"By Id\" sells Item ID cafe-9"}));
    // A short S/L is looked for in its full form too; the full form finds only itself above.
    EXPECT_EQ(lines(whereItemUsed({"1234.5", ""})),
              QStringList({"01 1/1 \"Coffee\" sells S/L 0001234.5",
                           "01 1/2 \"Coffee 2\" sells S/L 1234.5"}));
    EXPECT_TRUE(whereItemUsed({"", "0001234.5"}).findings.isEmpty()); // an Item ID is no S/L

    EXPECT_EQ(lines(whereSetUsed("01")),
              QStringList({"02 1/1 \"Back\" opens set 01", "02 1/2 \"Back 2\" opens set 01"}));
    EXPECT_EQ(whereSetUsed("2").findings.size(), 1);
}

TEST_F(SetCheckTest, EachKeyIsCheckedByItsOwnKindAndSpecialCodesNeedNoRow)
{
    writeSet(1, "Main",
             keyLine(1, "No Stock", "~NONSTK", "No") + keyLine(2, "Paid Out", "~POUT", "No") +
                 keyLine(3, "Coupon", "~SCOUPN", "No") + keyLine(4, "Cake", "CAKE-1", "No") +
                 keyLine(5, "Coffee", "00012345", "Yes") + keyLine(6, "Cake", "CAKE-1", "Yes") +
                 blankKeys(7));
    writeDataFile("SPECIAL.BDF", "[BUTTON]1[CAPTION]Void[KEY]*\r\n"
                                 "[BUTTON]2[CAPTION]Void Too[KEY]*\r\n"
                                 "[BUTTON]3[CAPTION]Odd[KEY]~SCOUPN[VALUE]1.5.0\r\n");
    writeDataFile("COUPON.BDF", "[BUTTON]1[CAPTION]Dollar Off[KEY]~SCOUPN[VALUE]abc-2.5x\r\n"
                                "[BUTTON]2[CAPTION]Fine[KEY]~SCOUPN[VALUE].50\r\n");

    // After set 01, which no other set opens:
    EXPECT_EQ(lines(check()).mid(1),
              QStringList({"01 1/4 sells S/L CAKE-1, which is not in the inventory",
                           "01 1/5 sells Item ID 00012345, which is not in the inventory",
                           " 0/2 \"Void Too\" uses the keyboard character \"*\", as key 1 does: "
                           "the keyboard reaches only one of them",
                           " 0/3 coupon key \"Odd\" has the amount \"1.5.0\", which is not a "
                           "number with at most two decimals",
                           " 0/1 coupon key \"Dollar Off\" has the amount \"abc-2.5x\", which is "
                           "not a number with at most two decimals"}));
    EXPECT_EQ(asked.filter("~"), QStringList()) << "special codes are not asked for";
}

TEST_F(SetCheckTest, TwiceSoldItemsLinksWithoutLabelAndLabelsTheScreenCannotShow)
{
    writeSet(1, "Main",
             keyLine(1, "Coffee", "0001234.5", "No") + keyLine(2, "Coffee 2", "1234.5", "No") +
                 keyLine(3, "Again", "0001234.5", "No") + keyLine(4, "", "", "No", "2") +
                 keyLine(5, "Cake", "CAKE-1", "Yes") + keyLine(6, "Cake too", "cake-1", "Yes") +
                 keyLine(7, "No Stock", "~NONSTK", "No") +
                 keyLine(8, "Far too long", "~NONSTK", "No"));
    // Column 2 reads well, column 3 has no labels to read, column 4 is the button face.
    writeDataFile("HKSET02.SDF",
                  "[SET]Lunch\r\n[GROUP]1[CAPTION]A[COLOR]RED\r\n" +
                      keyLine(1, "Back", "", "No", "1") + "[GROUP]2[CAPTION]B[COLOR]BLUE\r\n" +
                      keyLine(1, "", "0001234.5", "No") + "[GROUP]3[CAPTION]C[COLOR]*Default\r\n" +
                      keyLine(1, "Fine", "0001234.5", "No"));
    Drawing drawing;
    drawing.labelProblem = [](const HotKeyButton &b, int, int) {
        return b.Caption.size() > 10 ? QString("it takes 3 lines where 2 fit") : QString();
    };
    drawing.contrast = [](qint32 color) { return color == 0xFF0000 ? 2.44 : 5.25; };

    const Result r = checkSets(
        [](const QStringList &, bool) { return std::optional(QHash<QString, ItemState>()); }, {},
        drawing);

    QStringList said = lines(r).filter(QRegularExpression("^01 1/[1-8]|^01 1/0|^02"));
    said.removeIf([](const QString &l) { return l.contains("not in the inventory"); });
    EXPECT_EQ(said,
              QStringList({"01 1/0 its labels are hard to read on its colour BLUE (contrast 2.4:1, "
                           "below 3:1 as the sales screen draws them)",
                           "01 1/3 sells S/L 0001234.5, as column 1 key 1 does (for information: "
                           "often a slip, sometimes meant)",
                           "01 1/4 opens set 02 but has no label, so nobody can tell where it "
                           "leads: give it one",
                           "01 1/6 sells Item ID cake-1, as column 1 key 5 does (for "
                           "information: often a slip, sometimes meant)",
                           "01 1/8 shows the label \"Far too long\", which does not fit the key as "
                           "the sales screen draws it: it takes 3 lines where 2 fit",
                           "02 3/1 sells S/L 0001234.5, as column 2 key 1 does (for information: "
                           "often a slip, sometimes meant)"}))
        << said.join("\n").toStdString();
}
