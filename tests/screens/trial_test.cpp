#include "ScreenForms.h"
#include "screens/frmHotKeys_Trial.h"

namespace {

class TrialTest : public StoreDbTest {
protected:
    void seed() override
    {
        openStore();
        addItem("00012345", "COF-1", "COFFEE SMALL");
        addItem("00020010", "CAKE-1", "CHOCOLATE CAKE");
        usePictures(dataPath());
    }
    // A set of one column: keys given as caption|item|idselect|link.
    void writeSet(int number, const QString &title, const QStringList &keys)
    {
        QByteArray text = "[SET]" + title.toLatin1() + "\r\n[GROUP]1[CAPTION]Col[COLOR]BLUE\r\n";
        for (int k = 0; k < keys.size(); ++k) {
            const QList<QByteArray> f = keys[k].toLatin1().split('|');
            text += keyLine(k + 1, f[0], f[1], f[2], f[3]);
        }
        writeDataFile(QString("HKSET%1.SDF").arg(number, 2, 10, QChar('0')), text);
    }
    std::unique_ptr<frmHotKeys_Trial> open(int row, const QString &file)
    {
        auto t = std::make_unique<frmHotKeys_Trial>();
        t->currentSet = static_cast<qint16>(row);
        t->msfileName = file;
        t->Form_Load();
        t->show();
        return t;
    }
    QStringList sale(frmHotKeys_Trial &t) const
    {
        QStringList rows;
        for (int r = 1; r < t.fgrdItems->Rows(); ++r)
            rows << t.fgrdItems->TextMatrix(r, 0) + ' ' + t.fgrdItems->TextMatrix(r, 1);
        return rows;
    }
};

} // namespace

TEST_F(TrialTest, KeysRingItemsUpAndFollowLinks)
{
    writeSet(1, "Main",
             {"Coffee|0001234.5|No|", "Cake|CAKE-1|Yes|", "Desserts||No|2", "Both|0001234.5|No|2",
              "|0002001.0|No|", "Ghost|9999999.9|No|"});
    writeSet(2, "Desserts", {"Cake again|CAKE-1|Yes|", "Back home||No|1"});
    auto t = open(1, "HKSET01.SDF");
    EXPECT_EQ(t->cmdHkGroup[1][0]->caption(), "Coffee 1");
    EXPECT_EQ(t->cmdHkGroup[1][4]->caption(), "5") << "no caption: the letter alone";
    EXPECT_EQ(t->CmdAcceptCancel->caption(), "Cancel\rEsc");

    QTest::mouseClick(t->cmdHkGroup[1][0], Qt::LeftButton);
    QTest::keyClick(t.get(), Qt::Key_1);
    QTest::keyClick(t.get(), Qt::Key_2);
    QTest::keyClick(t.get(), Qt::Key_6); // an item the inventory lacks
    EXPECT_EQ(sale(*t), QStringList({"2 COFFEE SMALL", "1 CHOCOLATE CAKE"}));
    EXPECT_EQ(t->CmdAcceptCancel->caption(), "Accept\rF10");

    QTest::keyClick(t.get(), Qt::Key_4); // a link and an item: the link wins
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Desserts");
    QTest::keyClick(t.get(), Qt::Key_1); // the same item from another set
    EXPECT_EQ(sale(*t), QStringList({"2 COFFEE SMALL", "2 CHOCOLATE CAKE"}));
    QTest::keyClick(t.get(), Qt::Key_PageUp);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Main") << "Back returns to the set before the link";
    QTest::keyClick(t.get(), Qt::Key_Escape);
    EXPECT_TRUE(t->isHidden());
}

TEST_F(TrialTest, TheFourButtonsWalkTheSetsInNameOrderAreOffWithOneSetAndLettersFollowPlaces)
{
    // Keys 1 and 8 of every column; key 2 opens a set whose file is gone.
    const QByteArray coffee = "[ITEM]0001234.5[ICON][IDSELECT]No[LINKSET][ROOT]\r\n";
    QByteArray text = "[SET]Only\r\n";
    for (int g = 1; g <= 4; ++g) {
        const QByteArray n = QByteArray::number(g);
        text += "[GROUP]" + n + "[CAPTION]G[COLOR]\r\n[BUTTON]1[CAPTION]K" + n + coffee;
        if (g == 1)
            text += "[BUTTON]2[CAPTION]Missing[ITEM][ICON][IDSELECT]No[LINKSET]9[ROOT]\r\n";
        text += "[BUTTON]8[CAPTION]L" + n + coffee;
    }
    writeDataFile("HKSET01.SDF", text);
    auto t = open(1, "HKSET01.SDF");
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(t->cmdBack[i]->isEnabled()) << i;
    QTest::keyClick(t.get(), Qt::Key_End);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Only");
    EXPECT_EQ(t->cmdHkGroup[1][7]->caption(), "L1 8");
    EXPECT_EQ(t->cmdHkGroup[2][0]->caption(), "K2 A");
    EXPECT_EQ(t->cmdHkGroup[3][0]->caption(), "K3 J");
    EXPECT_EQ(t->cmdHkGroup[4][7]->caption(), "L4 Y");

    QTest::keyClick(t.get(), Qt::Key_2);
    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].text.contains("HKSET09.SDF\r\rHot Keys File Is Missing"));
    QTest::keyClick(t.get(), Qt::Key_1);
    EXPECT_TRUE(sale(*t).isEmpty()) << "the record is empty until a set is read again";
    QTest::keyClick(t.get(), Qt::Key_End);
    QTest::keyClick(t.get(), Qt::Key_Y);
    QTest::keyClicks(t.get(), "y");
    EXPECT_EQ(sale(*t), QStringList({"2 COFFEE SMALL"}));
    QTest::keyClicks(t.get(), "9");
    QTest::keyClicks(t.get(), "i");
    EXPECT_EQ(sale(*t), QStringList({"2 COFFEE SMALL"})) << "no key owns 9 or I";

    shell.topMost.clear(); // help comes in front of the panel, which goes back on top after
    QTest::keyClick(t.get(), Qt::Key_F1);
    EXPECT_EQ(shell.topMost, QList<bool>({false, true}));
    EXPECT_EQ(shell.urls.size(), 1);
    QTest::keyClick(t.get(), Qt::Key_F10);
    EXPECT_TRUE(t->isHidden());

    // More sets: the four buttons walk them in name order, Back returns from a link.
    writeSet(3, "Set 3", {"To ten||No|10"});
    writeSet(10, "Set 10", {"Go|0001234.5|No|"});
    t = open(2, "HKSET03.SDF");
    QTest::keyClick(t.get(), Qt::Key_1);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Set 10");
    QTest::keyClick(t.get(), Qt::Key_PageUp);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Set 3") << "the starting set, though numbers have gaps";

    t = open(1, "HKSET01.SDF");
    EXPECT_FALSE(t->cmdBack[0]->isEnabled());
    EXPECT_TRUE(t->cmdBack[2]->isEnabled());
    QTest::keyClick(t.get(), Qt::Key_PageDown);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Set 3");
    QTest::mouseClick(t->cmdBack[3], Qt::LeftButton);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Set 10");
    EXPECT_FALSE(t->cmdBack[2]->isEnabled());
    QTest::keyClick(t.get(), Qt::Key_PageUp);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Set 3");
    QTest::keyClick(t.get(), Qt::Key_Home);
    EXPECT_EQ(t->windowTitle(), "Hot Keys - Only");
}
