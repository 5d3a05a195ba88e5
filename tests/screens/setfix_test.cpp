#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/Dialogs.h"
#include "platform/ui/MSFlexGrid.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmSetCheck.h"
#include "support/OneBox.h"
#include "support/StoreDb.h"
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

using testing_support::oneBox;
using testing_support::StoreDbTest;

namespace {

QByteArray mendKey(int k, const QByteArray &caption, const QByteArray &item, const QByteArray &link,
                   const QByteArray &icon = "")
{
    return "[BUTTON]" + QByteArray::number(k) + "[CAPTION]" + caption + "[ITEM]" + item + "[ICON]" +
           icon + "[IDSELECT]" + (item.isEmpty() && link.isEmpty() ? "" : "No") + "[LINKSET]" +
           link + "[ROOT]";
}

// Set 01 holds one fault of each mendable kind in column 1; set 02 one more dead link.
class SetFixTest : public StoreDbTest {
protected:
    void SetUp() override
    {
        StoreDbTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        openStore();
        addItem("00012345", "COF-1", "COFFEE SMALL");
        QDir(dataPath()).mkpath("pictures/HotKeys");
        gsHotKeyPicturePath = dataPath() + "/pictures/HotKeys/";
        QImage(8, 8, QImage::Format_RGB32).save(gsHotKeyPicturePath + "cup.png");
        writeSet("01", {mendKey(1, "Gone", "", "9"), mendKey(2, "Self", "", "1"),
                        mendKey(3, "Coffee", "0001234.5", "", "lost.jpg"),
                        mendKey(4, "", "", "", "cup.png"), mendKey(5, "Ghost", "0005555.0", "")});
        writeSet("02", {mendKey(1, "Back", "", "1"), mendKey(2, "Far", "", "7")});
    }
    void writeSet(const QString &number, const QList<QByteArray> &keys)
    {
        QByteArray text = "[SET]Set " + number.toLatin1() + "\r\n[GROUP]1[CAPTION]Col[COLOR]\r\n";
        for (const QByteArray &k : keys) text += k + "\r\n";
        writeDataFile("HKSET" + number + ".SDF", text);
    }
    // The key line of set `number` for column 1 key `k`, as it is in the file now.
    QByteArray line(const QString &number, int k)
    {
        for (const QByteArray &l : readDataFile("HKSET" + number + ".SDF").split('\n'))
            if (l.startsWith("[BUTTON]" + QByteArray::number(k) + "[CAPTION]"))
                return l.trimmed();
        return "?";
    }
    int rowOf(const QString &start)
    {
        for (int r = 1; r < list->fgrdItems->Rows(); ++r)
            if ((list->fgrdItems->TextMatrix(r, 0) + ' ' + list->fgrdItems->TextMatrix(r, 3) + ' ' +
                 list->fgrdItems->TextMatrix(r, 4))
                    .startsWith(start))
                return r;
        return -1;
    }
    void open()
    {
        list = std::make_unique<frmSetCheck>(frmSetCheck::Mode::Check);
        list->Form_Load();
    }
    void pick(const QString &start)
    {
        const int r = rowOf(start);
        ASSERT_GT(r, 0) << start.toStdString();
        list->fgrdItems->setRow(r);
    }
    std::unique_ptr<frmSetCheck> list;
};

} // namespace

TEST_F(SetFixTest, EachFixMendsItsKeyKeepsAVersionAndTheListIsCheckedAgain)
{
    const struct {
        const char *row, *caption;
        int key;
        QByteArray after;
    } cases[] = {
        {"01 1 opens set 09", "&Fix: Clear the Link", 1,
         "[BUTTON]1[CAPTION]Gone[ITEM][ICON][IDSELECT]No[LINKSET][ROOT]"},
        {"01 2 opens its own set", "&Fix: Clear the Link", 2,
         "[BUTTON]2[CAPTION]Self[ITEM][ICON][IDSELECT]No[LINKSET][ROOT]"},
        {"01 3 shows the picture", "&Fix: Clear the Picture", 3,
         mendKey(3, "Coffee", "0001234.5", "")},
        {"01 4 has a picture but no label", "&Fix: Clear the Key", 4,
         "[BUTTON]4[CAPTION][ITEM][ICON][IDSELECT][LINKSET][ROOT]"},
    };
    open();
    for (const auto &c : cases) {
        const qsizetype kept = versions::list("HKSET01.SDF").size();
        pick(c.row);
        EXPECT_EQ(list->cmdFix[0]->text(), c.caption);
        EXPECT_TRUE(list->cmdFix[0]->isEnabled());
        list->cmdFix[0]->click();
        EXPECT_EQ(line("01", c.key), c.after) << c.row;
        EXPECT_EQ(versions::list("HKSET01.SDF").size(), kept + 1) << c.row;
        EXPECT_EQ(rowOf(c.row), -1) << c.row << " is still listed";
    }
    // The whole file as the editor writes it: CR LF, every column and key.
    EXPECT_TRUE(
        readDataFile("HKSET01.SDF").startsWith("[SET]Set 01\r\n[GROUP]1[CAPTION]Col[COLOR]\r\n"));
    EXPECT_EQ(readDataFile("HKSET01.SDF").count("\r\n"), 37);
    EXPECT_EQ(line("02", 2), mendKey(2, "Far", "", "7")) << "set 02 untouched";
}

TEST_F(SetFixTest, FixAllMendsEveryLineOfTheKindAfterOneQuestionAndTheRightClickOffersIt)
{
    open();
    pick("02 2 opens set 07");
    EXPECT_EQ(list->cmdFix[1]->text(), "Fix &All 2 Like It");
    EXPECT_EQ(list->mnuFix->actions()[1]->text(), "Fix &All 2 Like It");
    dialogs.answer(platform::vbYes);
    list->mnuFix->actions()[1]->trigger();
    EXPECT_TRUE(oneBox(boxes(), "Clear the Link on 2 keys in 2 sets?\r\rEach set is kept in "
                                "Versions before it is saved."));
    EXPECT_EQ(line("01", 1), "[BUTTON]1[CAPTION]Gone[ITEM][ICON][IDSELECT]No[LINKSET][ROOT]");
    EXPECT_EQ(line("02", 2), "[BUTTON]2[CAPTION]Far[ITEM][ICON][IDSELECT]No[LINKSET][ROOT]");
    EXPECT_EQ(line("01", 2), mendKey(2, "Self", "", "1")) << "another kind stays";
    EXPECT_EQ(rowOf("01 1 opens"), -1);
    EXPECT_GT(rowOf("01 2 opens its own set"), 0);
}

TEST_F(SetFixTest, AnotherStationsChangeSinceTheCheckIsToldAndKeptWhenTheUserSaysNo)
{
    open();
    pick("01 1 opens set 09");
    writeSet("01", {mendKey(1, "Gone", "", "9"), mendKey(6, "New at the till", "", "2")});
    const QByteArray theirs = readDataFile("HKSET01.SDF");
    dialogs.answer(platform::vbNo);
    list->cmdFix[0]->click();
    EXPECT_TRUE(boxTexts().first().startsWith(
        "Hot keys set 01 was saved at another station since you opened it here."));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), theirs);
    EXPECT_GT(rowOf("01 1 opens set 09"), 0) << "the list shows the file as it is now";
}

TEST_F(SetFixTest, AMissingItemOpensTheKeyDialogOnItsKeyAndSavesWhatTheUserAccepts)
{
    open();
    pick("01 5 sells S/L 0005555.0");
    EXPECT_EQ(list->cmdFix[0]->text(), "&Fix: Edit the Key...");
    modal.on<frmHotKey_Define>([](frmHotKey_Define &dialog) {
        EXPECT_EQ(dialog.ButtonLabel, "Ghost");
        EXPECT_EQ(dialog.ButtonNumber, "5");
        dialog.ButtomItem = "0001234.5";
        dialog.ButtonLabel = "Coffee";
        dialog.Canceled = false;
    });
    list->cmdFix[0]->click();
    EXPECT_EQ(line("01", 5), mendKey(5, "Coffee", "0001234.5", ""));
    EXPECT_EQ(rowOf("01 5 sells S/L 0005555.0"), -1);
}
