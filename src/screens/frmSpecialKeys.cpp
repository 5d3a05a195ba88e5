#include "screens/frmSpecialKeys.h"
#include "common/Conversions.h"
#include "common/sm_Messages.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/Modal.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/posButtons.h"
#include "settings/clsDataPath.h"
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

SpecialKey keyOf(const SpecialKeyPanel *panel)
{
    return SpecialKey{panel->Index(), panel->Caption(), panel->Tag};
}

// A typed amount shows in the money mask; text that is no number shows as it is.
QString amountText(const QString &amount)
{
    bool number = false;
    const double value = conv::Trim(amount).toDouble(&number);
    return number ? conv::Format(value, "#.00") : amount;
}

} // namespace

frmSpecialKeys::frmSpecialKeys(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Special Keys");
    auto *keys = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        cmdSpecial[i] = new SpecialKeyPanel(i, this);
        cmdSpecial[i]->setObjectName("cmdSpecial");
        keys->addWidget(cmdSpecial[i]);
        connect(cmdSpecial[i], &QPushButton::clicked, this, [this, i] { cmdSpecial_Click(i); });
    }
    lblHelp = new QLabel("Press the desired Special Key to define it.", this);
    lblHelp->setObjectName("lblHelp");
    cmdOkCancel[0] = new QPushButton("F10 Accept", this);
    cmdOkCancel[1] = new QPushButton("Esc Cancel", this);
    cmdHelp = new QPushButton("F1 Help", this);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(lblHelp, 1);
    for (QPushButton *b : {cmdHelp, cmdOkCancel[0], cmdOkCancel[1]}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    auto *outer = new QVBoxLayout(this);
    outer->addLayout(keys, 1);
    outer->addLayout(buttons);
    resize(560, 220);

    connect(cmdOkCancel[0], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(0); });
    connect(cmdOkCancel[1], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(1); });
    connect(cmdHelp, &QPushButton::clicked, this,
            [this] { gpHelp_press(QString::number(HelpContextID)); });
}

void frmSpecialKeys::Form_Load()
{
    gpForm_initControls(this);
    ReadStamp = versions::FileStamp::of(mpFile_path());
    for (SpecialKeyPanel *panel : cmdSpecial) {
        SpecialKey key = keyOf(panel);
        gpSpecialKey_read(key);
        panel->setCaption(key.Caption);
        panel->Tag = key.Tag;
        ReadCaptions[key.Index] = key.Caption;
        ReadTags[key.Index] = key.Tag;
    }
    cmdOkCancel[0]->setEnabled(false);
    cmdOkCancel[0]->setVisible(false);
    HelpContextID = 16;
    if (gbCouponKeys)
        setWindowTitle("Coupons");
}

void frmSpecialKeys::cmdSpecial_Click(int Index)
{
    SpecialKeyPanel *panel = cmdSpecial[Index];
    const QString T = conv::Trim(panel->Caption());
    frmSpecialKey_edit dialog(this);
    // A control touched before the form loads loads it; fields do not. The order
    // decides which prefilled text raises the Accept button.
    if (T.isEmpty()) {
        dialog.Form_Load();
    } else if (gbCouponKeys) {
        dialog.Form_Load();
        dialog.TxtAmount->setVisible(true);
        dialog.cboEdit->setVisible(false);
        dialog.setWindowTitle("Edit Coupon Key");
        dialog.lblEdit[1]->setText("Amount");
        dialog.KeyLabel = T;
        dialog.KeyCharacter = panel->Tag.mid(8);
        dialog.TxtAmount->setText(amountText(dialog.KeyCharacter));
    } else {
        const int cr = panel->Caption().indexOf('\r');
        dialog.KeyLabel = cr < 0 ? panel->Caption() : panel->Caption().left(cr);
        dialog.KeyCharacter = panel->Tag;
        dialog.Form_Load();
        dialog.TxtAmount->setVisible(false);
    }
    platform::showModal(dialog);
    if (dialog.Canceled) {
        cmdOkCancel[0]->setVisible(false);
        return;
    }
    cmdOkCancel[0]->setVisible(true);
    if (gbCouponKeys) {
        panel->setCaption(dialog.KeyLabel);
        panel->Tag = QString(kCouponMarker) + '|' + dialog.KeyCharacter;
    } else {
        panel->setCaption(dialog.KeyLabel + '\r' + dialog.KeyCharacter);
        panel->Tag = dialog.KeyCharacter;
    }
    cmdOkCancel[0]->setEnabled(true);
}

void frmSpecialKeys::cmdOkCancel_Click(int Index)
{
    if (Index == 1)
        return reject();
    if (gbCouponKeys) {
        for (const SpecialKeyPanel *panel : cmdSpecial) {
            if (!conv::Trim(panel->Caption()).isEmpty() &&
                gfbCouponAmount_refused(panel->Tag.mid(8)))
                return;
        }
    } else if (!mpClashes_accepted()) {
        return;
    }
    if (!gfbOtherStation_check(mpFile_path(), ReadStamp,
                               gbCouponKeys ? "The coupon key file" : "The special key file"))
        return;
    const bool written =
        gbCouponKeys
            ? gpCouponKeys_write(keyOf(cmdSpecial[0]), keyOf(cmdSpecial[1]), keyOf(cmdSpecial[2]))
            : gpSpecialKeys_write(cmdSpecial[0]->Caption(), cmdSpecial[1]->Caption(),
                                  cmdSpecial[2]->Caption());
    // A failed save keeps the screen, so the keys can be saved again.
    if (written)
        accept();
}

void frmSpecialKeys::reject()
{
    if (!mpChanged() || gfbChanges_discard())
        KeyPreviewForm::reject();
}

bool frmSpecialKeys::mpChanged() const
{
    for (const SpecialKeyPanel *panel : cmdSpecial) {
        if (panel->Caption() != ReadCaptions[panel->Index()] ||
            panel->Tag != ReadTags[panel->Index()])
            return true;
    }
    return false;
}

bool frmSpecialKeys::mpClashes_accepted() const
{
    for (int a = 0; a < 3; ++a) {
        for (int b = a + 1; b < 3; ++b) {
            const QString character = cmdSpecial[a]->Tag;
            if (conv::Trim(character).isEmpty() || cmdSpecial[b]->Tag != character)
                continue;
            return platform::MsgBox(
                       QString("Special keys %1 and %2 both use the keyboard character \"%3\", so "
                               "the keyboard reaches only one of them.\r\rYes: save them as they "
                               "are.\rNo: stay here and change one of them.")
                           .arg(a + 1)
                           .arg(b + 1)
                           .arg(character),
                       platform::vbYesNo + platform::vbExclamation + platform::vbDefaultButton2,
                       "Special Keys") == platform::vbYes;
        }
    }
    return true;
}

QString frmSpecialKeys::mpFile_path() const
{
    return gDataPath.DataPath() + (gbCouponKeys ? "/COUPON.BDF" : "/SPECIAL.BDF");
}

void frmSpecialKeys::Form_KeyDown(int &KeyCode, int)
{
    mpStandardKeys(
        KeyCode, [this] { cmdOkCancel_Click(0); }, [this] { cmdOkCancel_Click(1); },
        [this] { cmdHelp->click(); });
}
