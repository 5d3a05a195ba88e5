#include "screens/frmSpecialKey_edit.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frmSpecialKey_edit::frmSpecialKey_edit(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Edit Special Key");
    txtEdit = new QLineEdit(this);
    txtEdit->setObjectName("txtEdit");
    cboEdit = new QComboBox(this);
    cboEdit->setObjectName("cboEdit");
    cboEdit->setEditable(true);
    TxtAmount = new QLineEdit(this);
    TxtAmount->setObjectName("TxtAmount");
    lblEdit[0] = new QLabel("Key Label", this);
    lblEdit[1] = new QLabel("Keyboard Character", this);
    cmdClear = new QPushButton("Clea&r Key", this);
    cmdOkCancel[0] = new QPushButton("F10 Accept", this);
    cmdOkCancel[1] = new QPushButton("Esc Cancel", this);
    cmdHelp = new QPushButton("F1 Help", this);
    for (QPushButton *b : {cmdClear, cmdOkCancel[0], cmdOkCancel[1], cmdHelp})
        b->setAutoDefault(false);

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblEdit[0], 0, 0);
    grid->addWidget(txtEdit, 0, 1);
    grid->addWidget(lblEdit[1], 1, 0);
    grid->addWidget(cboEdit, 1, 1);
    grid->addWidget(TxtAmount, 1, 1); // shares the row: only one of the two shows
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdClear);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdOkCancel[0]);
    buttons->addWidget(cmdOkCancel[1]);
    grid->addLayout(buttons, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    resize(480, sizeHint().height());

    connect(txtEdit, &QLineEdit::textChanged, this,
            [this](const QString &t) { mpAcceptFollows(t); });
    connect(cboEdit, &QComboBox::editTextChanged, this, [this](const QString &t) {
        if (cboEdit->hasFocus())
            mpAcceptFollows(t);
    });
    connect(cboEdit, &QComboBox::activated, this, [this] {
        cmdOkCancel[0]->setVisible(true);
        if (cboEdit->count() > 0)
            cmdOkCancel[0]->setEnabled(cboEdit->currentIndex() >= 0);
    });
    connect(cmdClear, &QPushButton::clicked, this, [this] { cmdClear_Click(); });
    connect(cmdOkCancel[0], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(0); });
    connect(cmdOkCancel[1], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(1); });
    connect(cmdHelp, &QPushButton::clicked, this,
            [this] { gpHelp_press(QString::number(HelpContextID)); });
}

void frmSpecialKey_edit::Form_Load()
{
    gpForm_initControls(this);
    if (gbCouponKeys) {
        cboEdit->setVisible(false);
        lblEdit[1]->setText("Amount ");
    } else {
        cboEdit->clear();
        cboEdit->addItems({"*", "/", "W"});
        const int i = KeyCharacter.isEmpty() ? 0 : cboEdit->findText(KeyCharacter);
        cboEdit->setCurrentIndex(i);
        if (i < 0) // a character typed elsewhere stays as it is
            cboEdit->setEditText(KeyCharacter);
        TxtAmount->setVisible(false);
    }
    txtEdit->setText(KeyLabel);
    cmdOkCancel[0]->setEnabled(false);
    cmdOkCancel[0]->setVisible(false);
    HelpContextID = 17;
}

void frmSpecialKey_edit::showEvent(QShowEvent *event)
{
    KeyPreviewForm::showEvent(event);
    if (m_activated)
        return;
    m_activated = true;
    txtEdit->setText(KeyLabel);
    if (KeyLabel > QString())
        cmdOkCancel[0]->setVisible(true);
}

void frmSpecialKey_edit::mpAcceptFollows(const QString &text)
{
    cmdOkCancel[0]->setVisible(true);
    cmdOkCancel[0]->setEnabled(!conv::Trim(text).isEmpty());
}

void frmSpecialKey_edit::cmdClear_Click()
{
    Canceled = false;
    KeyLabel.clear();
    KeyCharacter.clear();
    hide();
}

bool gfbCouponAmount_refused(const QString &amount)
{
    if (gfbCouponAmount_valid(amount))
        return false;
    platform::MsgBox("The amount \"" + amount +
                         "\" is not a number with at most two decimals, such as 1.00 or .50, "
                         "so the sales screen cannot take it.\r\rType the coupon's amount "
                         "again; nothing was saved.",
                     platform::vbExclamation, "Coupon Amount");
    return true;
}

void frmSpecialKey_edit::cmdOkCancel_Click(int Index)
{
    if (Index == 0) {
        if (gbCouponKeys && gfbCouponAmount_refused(TxtAmount->text())) {
            TxtAmount->setFocus();
            TxtAmount->selectAll();
            return;
        }
        Canceled = false;
        KeyLabel = txtEdit->text();
        KeyCharacter = gbCouponKeys ? TxtAmount->text() : cboEdit->currentText();
    } else {
        Canceled = true;
    }
    hide();
}

void frmSpecialKey_edit::Form_KeyDown(int &KeyCode, int)
{
    mpStandardKeys(
        KeyCode, [this] { cmdOkCancel_Click(0); }, [this] { cmdOkCancel_Click(1); },
        [this] { cmdHelp->click(); });
}
