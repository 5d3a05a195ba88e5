#include "ScreenForms.h"
#include "settings/clsDataPath.h"

namespace {

class SpecialKeysTest : public HkTest {
protected:
    void onEdit(std::function<void(frmSpecialKey_edit &)> act) { modal.on(act); }
};

} // namespace

TEST_F(SpecialKeysTest,
       PrefilledKeysOpenAsTheirLoadOrderLeavesThemClearedOnesAreWrittenAndTheListOpensEach)
{
    writeDataFile("SPECIAL.BDF", "[BUTTON]3[CAPTION]Weigh[KEY]W\r\n");
    writeDataFile("COUPON.BDF", "[BUTTON]1[CAPTION]Dollar Off[KEY]~SCOUPN[VALUE]1\r\n");
    auto special = openKeys(false);
    EXPECT_EQ(special->cmdSpecial[0]->Caption(), "") << "keys without a line stay undefined";
    EXPECT_EQ(special->cmdSpecial[2]->text(), "Weigh\nW");
    onEdit([](frmSpecialKey_edit &d) {
        EXPECT_EQ(d.cboEdit->currentText(), "*") << "a new key opens on the first character";
        QTest::keyClick(d.txtEdit, Qt::Key_Escape);
    });
    QTest::mouseClick(special->cmdSpecial[0], Qt::LeftButton);
    onEdit([](frmSpecialKey_edit &d) {
        EXPECT_EQ(d.txtEdit->text(), "Weigh");
        EXPECT_EQ(d.cboEdit->currentText(), "W");
        EXPECT_FALSE(d.cmdOkCancel[0]->isHidden());
        EXPECT_FALSE(d.cmdOkCancel[0]->isEnabled());
        QTest::keyClick(d.txtEdit, Qt::Key_Escape);
    });
    QTest::mouseClick(special->cmdSpecial[2], Qt::LeftButton);
    onEdit([](frmSpecialKey_edit &d) { QTest::mouseClick(d.cmdClear, Qt::LeftButton); });
    QTest::mouseClick(special->cmdSpecial[2], Qt::LeftButton);
    QTest::keyClick(special.get(), Qt::Key_F10);
    EXPECT_EQ(readDataFile("SPECIAL.BDF"), "[BUTTON]3[CAPTION][KEY]\r\n")
        << "a cleared special key stays as an empty line";

    auto coupons = openKeys(true);
    onEdit([](frmSpecialKey_edit &d) {
        EXPECT_EQ(d.windowTitle(), "Edit Special Key") << "an undefined key is not prefilled";
        QTest::keyClick(d.txtEdit, Qt::Key_Escape);
    });
    QTest::mouseClick(coupons->cmdSpecial[1], Qt::LeftButton);
    onEdit([](frmSpecialKey_edit &d) {
        EXPECT_EQ(d.windowTitle(), "Edit Coupon Key");
        EXPECT_EQ(d.TxtAmount->text(), "1.00");
        QTest::mouseClick(d.cmdClear, Qt::LeftButton);
    });
    QTest::mouseClick(coupons->cmdSpecial[0], Qt::LeftButton);
    QTest::keyClick(coupons.get(), Qt::Key_F10);
    EXPECT_EQ(readDataFile("COUPON.BDF"), "") << "all coupons cleared leaves an empty file";
    EXPECT_TRUE(QFile::exists(dataPath() + "/COUPON.BDF"));

    // The set list opens each kind; a save that fails keeps the screen.
    auto main = openSetList();
    QString title;
    modal.drive("frmSpecialKeys", [&](QDialog &d) {
        title = d.windowTitle();
        QTest::keyClick(&d, Qt::Key_Escape);
    });
    QTest::keyClick(main->fgrdItems, Qt::Key_S);
    EXPECT_EQ(title, "Special Keys");
    modal.drive("frmSpecialKeys", [&](QDialog &d) {
        title = d.windowTitle();
        QTest::keyClick(&d, Qt::Key_F10);
        EXPECT_FALSE(d.isHidden());
        QTest::keyClick(&d, Qt::Key_Escape);
    });
    gDataPath.setDataPath(dataPath() + "/gone");
    QTest::keyClick(main->fgrdItems, Qt::Key_Return);
    EXPECT_EQ(title, "Coupons");
    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].text.contains("COUPON.BDF\r\rCoupon Keys File Could Not Be Saved"));
}

TEST_F(SpecialKeysTest, HandEditedFilesAreReadWithoutHarm)
{
    writeDataFile("SPECIAL.BDF", "junk without tags\n[BUTTON]0[CAPTION]Zero[KEY]*\n"
                                 "[BUTTON]99[CAPTION]Far[KEY]*\r[BUTTON]2[CAPTION]First[KEY]/\n"
                                 "[BUTTON]2[CAPTION]Second[KEY]*\n"
                                 "[BUTTON]1[CAPTION]Coupon here[KEY]~SCOUPN[VALUE]abc\xff");
    auto special = openKeys(false);
    EXPECT_EQ(special->cmdSpecial[1]->Caption(), "First\r/") << "only the first line counts";
    EXPECT_EQ(special->cmdSpecial[0]->Caption(), "Coupon here") << "~SCOUPN reads as a coupon";
    EXPECT_EQ(special->cmdSpecial[0]->Tag, QString::fromUtf8("~SCOUPN|abc\u00ff"));
    EXPECT_EQ(special->cmdSpecial[2]->Caption(), "");

    writeDataFile("COUPON.BDF", "[BUTTON]1[CAPTION]Odd[KEY]~SCOUPN[VALUE]abc\r\n");
    auto odd = openKeys(true);
    onEdit([](frmSpecialKey_edit &d) {
        EXPECT_EQ(d.TxtAmount->text(), "abc") << "an amount that is no number shows as it is";
        QTest::keyClick(d.txtEdit, Qt::Key_F10);
    });
    QTest::mouseClick(odd->cmdSpecial[0], Qt::LeftButton);
    QTest::keyClick(odd.get(), Qt::Key_F10);
    EXPECT_TRUE(odd->isVisible());
    EXPECT_EQ(readDataFile("COUPON.BDF"), "[BUTTON]1[CAPTION]Odd[KEY]~SCOUPN[VALUE]abc\r\n");
    EXPECT_EQ(boxes().size(), 2) << "refused by the key and by the screen: nothing written";
}
