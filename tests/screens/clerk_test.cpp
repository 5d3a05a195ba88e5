#include "ScreenForms.h"
#include "hotkeys/hkeyPictures.h"

// What keeps a clerk's work and keeps a wrong item off a key: the questions before
// changes are dropped, the checks before a file is written, the picture preview.
namespace {

// Set 01 as another station left it.
const QByteArray kSet = "[SET]Lunch\r\n[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n";

class ClerkTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        usePictures(dataPath());
        giLinkOption = 0;
        writeDataFile("HKSET01.SDF", kSet);
    }
    // Edits key `index` of the special or coupon screen: label and character or amount.
    void editKey(frmSpecialKeys &screen, int index, const QString &label, const QString &value)
    {
        modal.on<frmSpecialKey_edit>([=](frmSpecialKey_edit &d) {
            d.txtEdit->setText(label);
            if (gbCouponKeys)
                d.TxtAmount->setText(value);
            else
                d.cboEdit->setEditText(value);
            QTest::keyClick(d.txtEdit, Qt::Key_F10);
            if (d.isVisible()) // refused: the clerk gives up on this key
                QTest::keyClick(d.txtEdit, Qt::Key_Escape);
        });
        QTest::mouseClick(screen.cmdSpecial[index], Qt::LeftButton);
    }
};

class KeyPickTest : public StoreDbTest {
protected:
    void seed() override
    {
        openStore();
        addItem("00012345", "COF-1", "COFFEE SMALL");
        addItem("00020010", "CAKE-1", "CHOCOLATE CAKE");
        giLinkOption = 0;
    }
    // Picks `sl` with F3 in the key dialog.
    void pick(frmHotKey_Define &key, const QString &sl)
    {
        modal.drive("frm_Lookup", [sl](QDialog &) { gLookup.gsLookupCode = sl; }); // the pick
        QTest::keyClick(key.txtEdit[1], Qt::Key_F3);
    }
};

} // namespace

TEST_F(ClerkTest, CancelAndEscAskOnlyWhenSomethingChangedAndNoKeepsTheScreen)
{
    struct Screen {
        std::function<std::unique_ptr<QDialog>()> open;
        std::function<void(QDialog &)> change;
        std::function<void(QDialog &)> cancel;
    };
    const Screen screens[] = {
        {[] { return std::unique_ptr<QDialog>(openEditor()); },
         [](QDialog &f) { static_cast<frmHotKeys &>(f).txtButtonSet->setText("Dinner"); },
         [](QDialog &f) { static_cast<frmHotKeys &>(f).cmdOkCancel[1]->click(); }},
        {[] { return std::unique_ptr<QDialog>(openKeys(false)); },
         [this](QDialog &f) { editKey(static_cast<frmSpecialKeys &>(f), 0, "Void", "*"); },
         [](QDialog &f) { static_cast<frmSpecialKeys &>(f).cmdOkCancel[1]->click(); }},
        {[] { return std::unique_ptr<QDialog>(openKeys(true)); },
         [this](QDialog &f) { editKey(static_cast<frmSpecialKeys &>(f), 0, "Dollar Off", "1"); },
         [](QDialog &f) { f.close(); }},
    };
    const QString discard = "Discard the changes to this set?";
    const int ask = vbYesNo + vbQuestion + vbDefaultButton2;
    for (const Screen &s : screens) {
        auto form = s.open();
        QTest::keyClick(form.get(), Qt::Key_Escape);
        EXPECT_FALSE(form->isVisible()) << "nothing changed: closes at once";

        form = s.open();
        s.change(*form);
        dialogs.answer(vbNo);
        QTest::keyClick(form.get(), Qt::Key_Escape);
        EXPECT_TRUE(oneBox(boxes(), discard, ask));
        EXPECT_TRUE(form->isVisible()) << "No keeps the screen";
        dialogs.answer(vbYes);
        s.cancel(*form);
        EXPECT_TRUE(oneBox(boxes(), discard, ask));
        EXPECT_FALSE(form->isVisible());
    }
    EXPECT_EQ(readDataFile("HKSET01.SDF"), kSet);
    EXPECT_FALSE(QFile::exists(dataPath() + "/SPECIAL.BDF"));
    EXPECT_FALSE(QFile::exists(dataPath() + "/COUPON.BDF"));
}

TEST_F(ClerkTest, CouponAmountsAreRefusedUnlessANumberAndSpecialKeysWarnOfAClash)
{
    const struct {
        const char *amount;
        bool taken;
    } amounts[] = {{"abc-2.5x", false}, {"1.234", false}, {"", false},    {"-1", false},
                   {"1", true},         {".50", true},    {"10.00", true}};
    auto coupons = openKeys(true);
    for (const auto &c : amounts) {
        const QString before = coupons->cmdSpecial[0]->Tag;
        editKey(*coupons, 0, "Coupon", c.amount);
        EXPECT_EQ(coupons->cmdSpecial[0]->Tag, c.taken ? QString("~SCOUPN|") + c.amount : before);
        EXPECT_EQ(boxTexts(), c.taken
                                  ? QStringList()
                                  : QStringList({QString("The amount \"%1\" is not a number with "
                                                         "at most two decimals, such as 1.00 or "
                                                         ".50, so the sales screen cannot take "
                                                         "it.\r\rType the coupon's amount again; "
                                                         "nothing was saved.")
                                                     .arg(c.amount)}));
    }
    EXPECT_FALSE(QFile::exists(dataPath() + "/COUPON.BDF"));
    // Another station's coupons saved meanwhile are kept when the clerk says No.
    const QByteArray theirs = "[BUTTON]3[CAPTION]Theirs[KEY]~SCOUPN[VALUE]1\r\n";
    writeDataFile("COUPON.BDF", theirs);
    dialogs.answer(vbNo);
    QTest::mouseClick(coupons->cmdOkCancel[0], Qt::LeftButton);
    EXPECT_TRUE(boxTexts().value(0).startsWith("The coupon key file was saved at another station"));
    EXPECT_EQ(readDataFile("COUPON.BDF"), theirs);
    EXPECT_TRUE(coupons->isVisible());

    auto special = openKeys(false);
    editKey(*special, 0, "Void", "*");
    editKey(*special, 2, "Void Too", "*");
    for (const int answer : {vbNo, vbYes}) {
        EXPECT_FALSE(QFile::exists(dataPath() + "/SPECIAL.BDF"));
        dialogs.answer(answer);
        QTest::keyClick(special.get(), Qt::Key_F10);
        EXPECT_TRUE(oneBox(boxes(),
                           "Special keys 1 and 3 both use the keyboard character \"*\", so the "
                           "keyboard reaches only one of them.\r\rYes: save them as they are.\r"
                           "No: stay here and change one of them.",
                           vbYesNo + vbExclamation + vbDefaultButton2));
        EXPECT_EQ(special->isVisible(), answer == vbNo);
    }
    EXPECT_EQ(readDataFile("SPECIAL.BDF"),
              "[BUTTON]1[CAPTION]Void[KEY]*\r\n[BUTTON]3[CAPTION]Void Too[KEY]*\r\n");
}

TEST_F(ClerkTest, TheKeyDialogShowsThePictureAsOnTheKeyAndSaysWhyNot)
{
    savePicture("good.jpg", 40, 30);
    savePicture("wide.png", kMaxPictureSide + 1, 2);
    writeDataFile("pictures/HotKeys/text.jpg", "not a picture");
    const struct {
        const char *name;
        const char *said; // after "The picture "<name>" "
    } cases[] = {
        {"good.jpg", ""},
        {"text.jpg", "cannot be read as a picture"},
        {"wide.png", "is 4097 x 2 pixels, larger than the 4096 x 4096 a key can show"},
        {"gone.jpg", "is not in the pictures folder"},
    };
    for (const auto &c : cases) {
        const QString said =
            *c.said
                ? QString("The picture \"%1\" %2, so the key shows no picture.").arg(c.name, c.said)
                : QString();
        frmHotKey_Define key;
        key.ButtonLabel = "Coffee";
        key.ButtomItem = "0001";
        key.ButtonIcon = c.name;
        key.Form_Load();
        key.show();
        EXPECT_EQ(key.lblPicture->text(), said);
        EXPECT_EQ(key.picPreview->picture().isNull(), *c.said != 0) << c.name;
        EXPECT_EQ(key.picPreview->caption(), "Coffee");
        if (*c.said) {
            dialogs.answer(vbNo);
            QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
            EXPECT_TRUE(key.Canceled) << "No stays to choose another picture";
            dialogs.answer(vbYes);
        }
        QTest::keyClick(key.txtEdit[0], Qt::Key_F10);
        EXPECT_FALSE(key.Canceled);
        for (const auto &box : boxes())
            EXPECT_TRUE(oneBox({box},
                               said + "\r\rYes: keep this picture name on the key all the "
                                      "same.\rNo: stay here and choose another picture.",
                               -1, "Set Picture"));
    }
}

TEST_F(KeyPickTest, APickFillsTheLabelOnlyWhenEmptyOrStillTheLastPicksOwn)
{
    const struct {
        const char *typed;  // the label before the first pick; "-" for none
        const char *retype; // typed between the two picks; "-" for none
        const char *label;  // after the second pick
    } cases[] = {
        {"My Coffee", "-", "My Coffee"},
        {"", "Mine", "Mine"},
        {"   ", "-", "CHOCOLATE CAKE"},
    };
    for (const auto &c : cases) {
        frmHotKey_Define key;
        key.ButtonLabel = c.typed;
        key.Form_Load();
        key.show();
        pick(key, "00012345");
        if (QString(c.retype) != "-")
            key.txtEdit[0]->setText(c.retype);
        pick(key, "00020010");
        EXPECT_EQ(key.txtEdit[0]->text(), c.label) << c.typed << '|' << c.retype;
        EXPECT_EQ(key.txtEdit[1]->text(), "0002001.0") << "the item follows every pick";
    }
}
