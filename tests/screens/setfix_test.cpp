#include "ScreenForms.h"
#include <QMenu>

namespace {

// Set 01 holds one fault of each mendable kind in column 1; set 02 one more dead link.
class SetFixTest : public StoreDbTest {
protected:
    void seed() override
    {
        openStore();
        addItem("00012345", "COF-1", "COFFEE SMALL");
        usePictures(dataPath());
        savePicture("cup.png");
        writeSet("01",
                 {keyLine(1, "Gone", "", "No", "9"), keyLine(2, "Self", "", "No", "1"),
                  keyLine(3, "Coffee", "0001234.5", "No", "", "lost.jpg"),
                  keyLine(4, "", "", "", "", "cup.png"), keyLine(5, "Ghost", "0005555.0", "No")});
        writeSet("02", {keyLine(1, "Back", "", "No", "1"), keyLine(2, "Far", "", "No", "7")});
        list = std::make_unique<frmSetCheck>(frmSetCheck::Mode::Check);
        list->Form_Load();
    }
    void writeSet(const QString &number, const QList<QByteArray> &keys)
    {
        QByteArray text = "[SET]Set " + number.toLatin1() + "\r\n[GROUP]1[CAPTION]Col[COLOR]\r\n";
        for (const QByteArray &k : keys) text += k;
        writeDataFile("HKSET" + number + ".SDF", text);
    }
    QByteArray line(QString n, int k) { return keyLineIn(readDataFile("HKSET" + n + ".SDF"), k); }
    int rowOf(const QString &start)
    {
        for (int r = 1; r < list->fgrdItems->Rows(); ++r)
            if ((list->fgrdItems->TextMatrix(r, 0) + ' ' + list->fgrdItems->TextMatrix(r, 3) + ' ' +
                 list->fgrdItems->TextMatrix(r, 4))
                    .startsWith(start))
                return r;
        return -1;
    }
    void pick(const QString &start) { list->fgrdItems->setRow(rowOf(start)); }
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
        {"01 1 opens set 09", "&Fix: Clear the Link", 1, keyLine(1, "Gone", "", "No")},
        {"01 2 opens its own set", "&Fix: Clear the Link", 2, keyLine(2, "Self", "", "No")},
        {"01 3 shows the picture", "&Fix: Clear the Picture", 3,
         keyLine(3, "Coffee", "0001234.5", "No")},
        {"01 4 has a picture but no label", "&Fix: Clear the Key", 4, keyLine(4, "", "", "")},
    };
    for (const auto &c : cases) {
        const qsizetype kept = versions::list("HKSET01.SDF").size();
        pick(c.row);
        EXPECT_EQ(list->cmdFix[0]->text(), c.caption);
        list->cmdFix[0]->click();
        EXPECT_EQ(line("01", c.key), c.after) << c.row;
        EXPECT_EQ(versions::list("HKSET01.SDF").size(), kept + 1) << c.row;
        EXPECT_EQ(rowOf(c.row), -1) << c.row << " is still listed";
    }
    // A missing item opens the key dialog on its key.
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
    EXPECT_EQ(line("01", 5), keyLine(5, "Coffee", "0001234.5", "No"));
    EXPECT_EQ(rowOf("01 5 sells S/L 0005555.0"), -1);

    // The whole file as the editor writes it: CR LF, every column and key.
    EXPECT_TRUE(
        readDataFile("HKSET01.SDF").startsWith("[SET]Set 01\r\n[GROUP]1[CAPTION]Col[COLOR]\r\n"));
    EXPECT_EQ(readDataFile("HKSET01.SDF").count("\r\n"), 37);
    EXPECT_EQ(line("02", 2), keyLine(2, "Far", "", "No", "7")) << "set 02 untouched";

    // Another station's save since the check is told, and kept when the user says No.
    pick("02 2 opens set 07");
    writeSet("02", {keyLine(2, "Far", "", "No", "7"), keyLine(6, "New at the till", "", "No")});
    const QByteArray theirs = readDataFile("HKSET02.SDF");
    dialogs.answer(platform::vbNo);
    list->cmdFix[0]->click();
    EXPECT_TRUE(boxTexts().value(0).startsWith(
        "Hot keys set 02 was saved at another station since you opened it here."));
    EXPECT_EQ(readDataFile("HKSET02.SDF"), theirs);
}

TEST_F(SetFixTest, FixAllMendsEveryLineOfTheKindAfterOneQuestionAndTheRightClickOffersIt)
{
    pick("02 2 opens set 07");
    EXPECT_EQ(list->cmdFix[1]->text(), "Fix &All 2 Like It");
    EXPECT_EQ(list->mnuFix->actions()[1]->text(), "Fix &All 2 Like It");
    dialogs.answer(platform::vbYes);
    list->mnuFix->actions()[1]->trigger();
    EXPECT_TRUE(oneBox(boxes(), "Clear the Link on 2 keys in 2 sets?\r\rEach set is kept in "
                                "Versions before it is saved."));
    EXPECT_EQ(line("01", 1), keyLine(1, "Gone", "", "No"));
    EXPECT_EQ(line("02", 2), keyLine(2, "Far", "", "No"));
    EXPECT_EQ(line("01", 2), keyLine(2, "Self", "", "No", "1")) << "another kind stays";
    EXPECT_EQ(rowOf("01 1 opens"), -1);
    EXPECT_GT(rowOf("01 2 opens its own set"), 0);
}
