#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "platform/ui/MSFlexGrid.h"
#include "screens/frmSetExport.h"
#include "screens/frmSetImport.h"
#include "shell/frmMain.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include "support/DemoStoreTest.h"
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>

using testing_support::DemoStoreTest;

namespace {

class PackagesScreenTest : public DemoStoreTest {
protected:
    void SetUp() override
    {
        DemoStoreTest::SetUp();
        list.Form_Load();
    }
    QStringList column(platform::MSFlexGrid *grid, int col)
    {
        QStringList cells;
        for (int r = 1; r < grid->Rows(); ++r) cells << grid->TextMatrix(r, col);
        return cells;
    }
    frmMain list;
};

} // namespace

// The demo store exports its main menu with the sets it opens; then it becomes
// another store: sets 06 to 12 gone, the small coffee under another S/L, the BLT
// no longer sold. Cancel on the preview writes nothing; the preview shows that, a set
// gets another number, Import writes.
TEST_F(PackagesScreenTest, ExportFromTheListThenPreviewCancelOrChooseANumberAndImport)
{
    const QString package = temp.filePath("demo.zip");
    list.fgrdItems->setRow(1);
    modal.on<frmSetExport>([](frmSetExport &form) {
        const QStringList selected = form.mpSets_chosen();
        EXPECT_EQ(selected, QStringList{"01"}) << "the selected set is ticked";
        form.cmdAll->click();
        EXPECT_EQ(form.mpSets_chosen().size(), form.lstSets->count());
        form.cmdNone->click();
        EXPECT_TRUE(form.mpSets_chosen().isEmpty());
        form.lstSets->item(0)->setCheckState(Qt::Checked);
        EXPECT_EQ(form.mpSets_chosen(), selected);
        form.ckSpecial->setChecked(true);
        form.cmdOkCancel[0]->click();
    });
    dialogs.answer(platform::vbYes); // the sets it opens too
    dialogs.answerText(package);
    list.cmdExport_Click();
    const QStringList said = boxTexts();
    EXPECT_TRUE(said.value(0).startsWith("Keys of these sets open 11 more sets: 02, 03, "));
    EXPECT_TRUE(said.value(2).contains("The package holds 12 sets, 6 pictures and 37 keys"));

    for (int n = 6; n <= 12; ++n)
        QFile::remove(dataPath() + QString("/HKSET%1.SDF").arg(n, 2, 10, QChar('0')));
    glDBSM_Execute("UPDATE invt1 SET SL = '77777777' WHERE SL = '00012345'");
    glDBSM_Execute("DELETE FROM invt1 WHERE SL = '00030020'");
    list.mpSetList_fill();

    const QStringList before = QDir(dataPath()).entryList(QDir::Files);
    modal.on<frmSetImport>([](frmSetImport &form) { form.cmdOkCancel[1]->click(); });
    dialogs.answerText(package);
    list.cmdImport_Click();
    EXPECT_EQ(QDir(dataPath()).entryList(QDir::Files), before) << "Cancel writes nothing";
    EXPECT_EQ(boxTexts().size(), 1) << "the file choice only";

    modal.on<frmSetImport>([&](frmSetImport &form) {
        const QStringList becomes = column(form.fgrdSets, 3);
        EXPECT_EQ(becomes.value(0), "becomes set 06 (01 is taken here)");
        EXPECT_EQ(becomes.value(5), "becomes set 11 (06 is taken here)");
        const QStringList found = column(form.fgrdKeys, 5);
        EXPECT_TRUE(found.contains("found by Item ID DEMO-2: COFFEE SMALL (the key will hold "
                                   "7777777.7)"));
        EXPECT_TRUE(found.contains("NOT FOUND: kept as written; the key sells nothing until it "
                                   "is set"));
        EXPECT_FALSE(form.ckSpecial->isHidden()) << "the package holds special keys";
        form.txtNumber[1]->setValue(6); // set 02 asks for 06, which set 01 has
        EXPECT_FALSE(form.cmdOkCancel[0]->isEnabled());
        EXPECT_TRUE(form.lblStatus->text().contains("would both become set 06"));
        form.txtNumber[1]->setValue(40);
        EXPECT_TRUE(column(form.fgrdKeys, 5).contains("opens set 2, which will be set 40"));
        form.cmdOkCancel[0]->click();
    });
    dialogs.answerText(package);
    list.cmdImport_Click();
    EXPECT_EQ(boxTexts().value(1), "12 sets were imported.") << "after the file choice";
    EXPECT_TRUE(readDataFile("HKSET40.SDF").startsWith("[SET]Hot Drinks\r\n"));
    EXPECT_TRUE(readDataFile("HKSET40.SDF").contains("[ITEM]7777777.7"));
    EXPECT_EQ(list.fgrdItems->Rows() - 1, 17);
}
