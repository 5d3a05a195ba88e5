#include "ScreenForms.h"
#include "lookup/frm_Lookup.h"
#include "screens/frmReplaceItem.h"
#include <QCheckBox>

namespace {

constexpr int kSets = 50;

// 50 sets that sell the small coffee by its S/L, every second one also by its Item ID.
class ReplaceTest : public StoreDbTest {
protected:
    void seed() override
    {
        openStore();
        addItem("00012345", "COF-1", "COFFEE SMALL");
        addItem("00020010", "COLA-1", "COLA 330ML");
        for (int n = 1; n <= kSets; ++n) {
            QByteArray text = "[SET]Set " + QByteArray::number(n) +
                              "\r\n[GROUP]1[CAPTION]Drinks[COLOR]\r\n" +
                              keyLine(1, "Coffee", "0001234.5", "No") +
                              keyLine(2, "Coffee Id", n % 2 ? "" : "COF-1", n % 2 ? "" : "Yes") +
                              keyLine(3, "Tea", "0009999.0", "No");
            writeDataFile(name(n), text);
            original[name(n)] = text;
        }
        list = std::make_unique<frmSetCheck>(frmSetCheck::Mode::Item);
        list->Form_Load();
        list->txtItem->setText("0001234.5");
        list->cmdSearch->click();
    }
    static QString name(int n) { return QString("HKSET%1.SDF").arg(n, 2, 10, QChar('0')); }
    QByteArray line(int n, int k) { return keyLineIn(readDataFile(name(n)), k); }
    // Picks the cola in the lookup and accepts the preview, with new labels or not.
    void replaceWithCola(bool labels, const std::function<void(frmReplaceItem &)> &meanwhile)
    {
        modal.drive("frm_Lookup", [](QDialog &) { gLookup.gsLookupCode = "00020010"; });
        modal.on<frmReplaceItem>([labels, meanwhile](frmReplaceItem &preview) {
            preview.chkLabel->setChecked(labels);
            meanwhile(preview);
            preview.cmdAccept->click();
        });
        list->cmdReplace->click();
    }
    std::unique_ptr<frmSetCheck> list;
    QHash<QString, QByteArray> original;
};

} // namespace

TEST_F(ReplaceTest, ReplaceChangesEveryKeyAfterAPreviewAndUndoPutsEveryFileBackUnlessChanged)
{
    replaceWithCola(true, [](frmReplaceItem &preview) {
        EXPECT_EQ(preview.fgrdKeys->Rows() - 1, 75);
        QStringList firstRow;
        for (int c = 0; c < 6; ++c) firstRow << preview.fgrdKeys->TextMatrix(1, c);
        EXPECT_EQ(firstRow, QStringList({"01", "Set 1", "1", "1", "\"Coffee\", S/L 0001234.5",
                                         "\"COLA 330ML\", S/L 0002001.0"}));
        EXPECT_EQ(preview.lblWhat->text(),
                  "75 keys in 50 sets will sell S/L 0002001.0 (COLA 330ML) instead of S/L "
                  "0001234.5 or Item ID COF-1 (COFFEE SMALL). Each set is kept in Versions "
                  "first, and Undo Replace puts them all back.");
    });
    for (int n = 1; n <= kSets; ++n) {
        EXPECT_EQ(line(n, 1), keyLine(1, "COLA 330ML", "0002001.0", "No")) << n;
        EXPECT_EQ(line(n, 2), n % 2 ? keyLine(2, "Coffee Id", "", "")
                                    : keyLine(2, "COLA 330ML", "0002001.0", "No"));
        EXPECT_EQ(line(n, 3), keyLine(3, "Tea", "0009999.0", "No")) << n;
        ASSERT_EQ(versions::list(name(n)).size(), 1);
        EXPECT_EQ(versions::bytesOf(versions::list(name(n)).first()), original[name(n)]);
    }
    EXPECT_EQ(list->fgrdItems->Rows(), 1) << "no key sells the coffee any more";
    EXPECT_TRUE(list->lblStatus->text().startsWith("Replaced on 75 keys in 50 sets"));

    list->cmdUndoReplace->click();
    for (int n = 1; n <= kSets; ++n) {
        EXPECT_EQ(readDataFile(name(n)), original[name(n)]) << n;
        EXPECT_EQ(versions::list(name(n)).size(), 2) << "the replaced file is kept too";
    }
    EXPECT_EQ(list->fgrdItems->Rows() - 1, 75);
    EXPECT_FALSE(list->cmdUndoReplace->isEnabled());

    // A set changed at another station is left alone, and so is every set by Undo after one.
    const QByteArray theirs = "[SET]Changed at the till\r\n";
    replaceWithCola(false, [&](frmReplaceItem &) { writeDataFile(name(3), theirs); });
    EXPECT_EQ(boxTexts(),
              QStringList({"These sets were not changed:\r\rset 03 was changed at another "
                           "station since the list was made: it was left as it is"}));
    EXPECT_EQ(readDataFile(name(3)), theirs);
    EXPECT_EQ(line(1, 1), keyLine(1, "Coffee", "0002001.0", "No")) << "labels kept";

    writeDataFile(name(7), theirs);
    list->cmdUndoReplace->click();
    EXPECT_EQ(boxTexts(),
              QStringList({"Undo Replace was refused: set 07 was changed since the replace (at "
                           "another station?), so nothing was put back.\r\rVersions holds every "
                           "set as it was before the replace."}));
    EXPECT_EQ(line(1, 1), keyLine(1, "Coffee", "0002001.0", "No"));
    EXPECT_EQ(readDataFile(name(7)), theirs);
}
