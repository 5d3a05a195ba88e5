#include "screens/frmHotKey_Define.h"
#include "common/Conversions.h"
#include "common/sm_Files.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/zelFormats.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPictures.h"
#include "hotkeys/hkeyServices.h"
#include "lookup/frm_Lookup.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/Modal.h"
#include "screens/frmButtonSet_Find.h"
#include "screens/frmHotKeys.h"
#include "screens/posButtons.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

QPushButton *plainButton(const QString &caption, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

} // namespace

frmHotKey_Define::frmHotKey_Define(QWidget *parent) : KeyPreviewForm(parent)
{
    static const char *const labels[] = {"Key Label", "Stock Locater", "Link To Hot Keys Set",
                                         "Picture (icon)"};
    auto *grid = new QGridLayout(this);
    for (int i = 0; i < 4; ++i) {
        txtEdit[i] = new QLineEdit(this);
        txtEdit[i]->setObjectName("txtEdit");
        lblEdit[i] = new QLabel(labels[i], this);
        lblEdit[i]->setObjectName("lblEdit");
        lblEdit[i]->setBuddy(txtEdit[i]);
        grid->addWidget(lblEdit[i], i, 0);
        grid->addWidget(txtEdit[i], i, 1);
        connect(txtEdit[i], &QLineEdit::textChanged, this, [this] {
            txtEdit_Change();
            mpPreview_draw();
        });
    }
    txtEdit[2]->setReadOnly(true);
    cmdBrowsePath = plainButton("...", "cmdBrowsePath", this);
    cmdBrowsePath->setFixedWidth(36);
    grid->addWidget(cmdBrowsePath, 3, 2);

    LinkLabel = new QLabel("Link Item to key by:", this);
    LinkLabel->setObjectName("LinkLabel");
    Option1[0] = new QRadioButton("Stock Locater", this);
    Option1[1] = new QRadioButton("Item ID", this);
    auto *options = new QHBoxLayout;
    options->addWidget(LinkLabel);
    for (int i = 0; i < 2; ++i) {
        Option1[i]->setObjectName("Option1");
        options->addWidget(Option1[i]);
        connect(Option1[i], &QRadioButton::clicked, this, [this, i] { Option1_Click(i); });
    }
    options->addStretch();
    grid->addLayout(options, 5, 0, 1, 3);

    picPreview = new MyButton(QString(), this);
    picPreview->setObjectName("picPreview");
    picPreview->setCaptionalignment(7);
    picPreview->captionposition = 3;
    picPreview->picturealignment = 1;
    picPreview->setFocusPolicy(Qt::NoFocus);
    picPreview->setFixedSize(picPreview->sizeHint() * 3 / 2);
    lblPicture = new QLabel(this);
    lblPicture->setObjectName("lblPicture");
    lblPicture->setWordWrap(true);
    auto *preview = new QHBoxLayout;
    preview->addWidget(picPreview);
    preview->addWidget(lblPicture, 1);
    auto *onKey = new QLabel("On the key", this);
    grid->addWidget(onKey, 4, 0);
    grid->addLayout(preview, 4, 1, 1, 2);
    Option1[0]->setChecked(true); // as the form is stored

    cmdFind[0] = plainButton("F3 Find &Item", "cmdFind", this);
    cmdFind[1] = plainButton("F4 Find Set", "cmdFind", this);
    cmdClear = plainButton("Clea&r Key", "cmdClear", this);
    cmdOkCancel[0] = plainButton("F10 Accept", "cmdOkCancel", this);
    cmdOkCancel[1] = plainButton("Esc Cancel", "cmdOkCancel", this);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdFind[0], cmdFind[1], cmdClear}) buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(cmdOkCancel[0]);
    buttons->addWidget(cmdOkCancel[1]);
    grid->addLayout(buttons, 6, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    resize(560, sizeHint().height());

    for (int i = 0; i < 2; ++i) {
        connect(cmdFind[i], &QPushButton::clicked, this, [this, i] { cmdFind_Click(i); });
        connect(cmdOkCancel[i], &QPushButton::clicked, this, [this, i] { cmdOkCancel_Click(i); });
    }
    connect(cmdClear, &QPushButton::clicked, this, [this] { cmdClear_Click(); });
    connect(cmdBrowsePath, &QPushButton::clicked, this, [this] { cmdBrowsePath_Click(); });
}

void frmHotKey_Define::LoadKey(const QString &set, const HotKeyGroup &group, int key)
{
    const HotKeyButton &k = group.Buttons[key];
    ButtonSet = set;
    Group = group.Caption;
    ButtonNumber = QString::number(key);
    ButtomItem = k.Item;
    ButtonLabel = k.Caption;
    ButtonLink = k.LinkSet;
    ItemIDLink = k.IdSelect;
    ButtonIcon = k.Icon;
    Form_Load();
}

void frmHotKey_Define::StoreKey(HotKeyButton &key) const
{
    key.Caption = ButtonLabel;
    key.Item = ButtomItem;
    key.IdSelect = ItemIDLink;
    key.LinkSet = ButtonLink;
    key.Icon = ButtonIcon;
}

void frmHotKey_Define::Form_Load()
{
    gpForm_initControls(this);
    Canceled = true;
    setWindowTitle(Group + " Button #" + ButtonNumber);
    txtEdit[0]->setMaxLength(15);
    txtEdit[0]->setText(ButtonLabel);
    txtEdit[1]->setText(ButtomItem);
    txtEdit[2]->setText(gfsHotKeySet_label(ButtonLink));
    txtEdit2_Tag = ButtonLink;
    txtEdit[3]->setText(ButtonIcon);
    mpSelectOption(ItemIDLink == "Yes" ? 1 : 0);
    cmdOkCancel[0]->setVisible(false);
    HelpContextID = 9;
    mpSelectOption(giLinkOption);
}

// Selecting an option that was not selected runs its click, as the user's would.
void frmHotKey_Define::mpSelectOption(int Index)
{
    if (Option1[Index]->isChecked())
        return;
    Option1[Index]->setChecked(true);
    Option1_Click(Index);
}

void frmHotKey_Define::Option1_Click(int Index)
{
    giLinkOption = static_cast<qint16>(Index);
    lblEdit[1]->setText(Index == 0 ? "Stock Locater" : "Item ID");
}

void frmHotKey_Define::txtEdit_Change()
{
    cmdOkCancel[0]->setVisible(true);
    cmdOkCancel[0]->setEnabled(true);
}

void frmHotKey_Define::cmdFind_Click(int Index)
{
    if (Index == 0)
        return mpFindItem();
    frmButtonSet_Find finder(this);
    finder.ButtonSet_Current = ButtonSet;
    finder.Form_Load();
    platform::showModal(finder);
    if (finder.Canceled)
        return;
    txtEdit[0]->setText(conv::Trim(finder.ButtonSetLabel.mid(3)));
    txtEdit[1]->clear();
    txtEdit[2]->setText(finder.ButtonSetLabel);
    txtEdit2_Tag = finder.ButtonSet;
    txtEdit[3]->clear();
}

void frmHotKey_Define::mpFindItem()
{
    const QString code = gfsInventory_find("");
    if (code.isEmpty())
        return;
    gInventoryRecord.setText("SL", gfsSL_toStored(code));
    const DbAction action; // a locked or damaged database is told once for the pick
    QString sql;
    if (gfbDBSM_Record(tblInventory, opEqual, invKeySL, false, false, sql)) {
        if (Option1[0]->isChecked()) {
            txtEdit[1]->setText(conv::Trim(gfsSL_toDisplay(gInventoryRecord.text("SL"))));
        } else {
            sql.clear();
            if (gfbDBSM_Record(tblInventory, opEqual, invKeyItemID, false, false, sql))
                txtEdit[1]->setText(conv::Trim(gInventoryRecord.text("ItemID")));
        }
    }
    // A label the clerk typed stays; one the last pick put there follows the new item.
    const QString description = conv::Trim(gInventoryRecord.text("Description")).left(15);
    if (conv::Trim(txtEdit[0]->text()).isEmpty() || txtEdit[0]->text() == PickedLabel) {
        txtEdit[0]->setText(description);
        PickedLabel = description;
    }
    txtEdit[0]->setFocus();
}

void frmHotKey_Define::cmdBrowsePath_Click()
{
    const QString pictures = gDataPath.DataPath() + "/pictures";
    if (!gfbFolder_exists(pictures + "/HotKeys") && !QDir().mkpath(pictures + "/HotKeys")) {
        platform::MsgBox("The folder " + QDir::toNativeSeparators(pictures + "/HotKeys") +
                             " could not be made.",
                         platform::vbOKOnly, "Unexpected Error");
        return;
    }
    const QString file = platform::DialogPort::get().openFileName(
        "Set Picture", pictures + "/HotKeys", "Picture (*.jpg)|*.jpg");
    // Leaving the file dialog without a choice keeps the picture the key had.
    if (file.isEmpty())
        return;
    ButtonIcon = QFileInfo(file).fileName();
    txtEdit[3]->setText(ButtonIcon);
}

void frmHotKey_Define::cmdClear_Click()
{
    for (QLineEdit *box : txtEdit) box->clear();
    txtEdit2_Tag.clear();
    Canceled = false;
    ButtonLabel.clear();
    ButtomItem.clear();
    ButtonLink.clear();
    ButtonIcon.clear();
    hide();
}

void frmHotKey_Define::cmdOkCancel_Click(int Index)
{
    if (Index == 1) {
        Canceled = true;
        reject();
        return;
    }
    const QString L = conv::Trim(txtEdit[0]->text()), I = conv::Trim(txtEdit[1]->text()),
                  K = conv::Trim(txtEdit[2]->text()), P = conv::Trim(txtEdit[3]->text());
    QString message;
    QLineEdit *focus = nullptr;
    if (!L.isEmpty() && I.isEmpty() && K.isEmpty()) {
        message = "Button needs an Item or a Link";
        focus = txtEdit[1];
    } else if ((!I.isEmpty() || !K.isEmpty()) && L.isEmpty()) {
        if (P.isEmpty()) {
            message = "Button needs a Label or Icon";
            focus = txtEdit[0];
        } else if (platform::MsgBox("Create Key with no Caption",
                                    platform::vbYesNo + platform::vbQuestion) != platform::vbYes) {
            // No: the user wants a label after all, so the dialog stays open for it.
            txtEdit[0]->setFocus();
            return;
        }
    }
    if (!message.isEmpty()) {
        platform::MsgBox(message, platform::vbInformation, platform::appTitle());
        focus->setFocus();
        return;
    }
    if (!mpPicture_accepted())
        return;
    Canceled = false;
    ButtonLabel = txtEdit[0]->text();
    ButtomItem = txtEdit[1]->text();
    ButtonIcon = txtEdit[3]->text();
    ButtonLink = txtEdit2_Tag;
    ItemIDLink = giLinkOption == 0 ? "No" : "Yes";
    accept();
}

void frmHotKey_Define::mpPreview_draw()
{
    HotKeyButton key;
    key.Caption = txtEdit[0]->text();
    key.Icon = conv::Trim(txtEdit[3]->text());
    frmHotKeys::DrawKey(picPreview, key, true);
    const QString problem =
        key.Icon.isEmpty() ? QString() : hotKeyPictureProblem(gsHotKeyPicturePath + key.Icon);
    lblPicture->setText(problem.isEmpty() ? QString()
                                          : "The picture \"" + key.Icon + "\" " + problem +
                                                ", so the key shows no picture.");
}

bool frmHotKey_Define::mpPicture_accepted()
{
    const QString icon = conv::Trim(txtEdit[3]->text());
    if (icon.isEmpty() || hotKeyPictureProblem(gsHotKeyPicturePath + icon).isEmpty())
        return true;
    if (platform::MsgBox(lblPicture->text() +
                             "\r\rYes: keep this picture name on the key all the same."
                             "\rNo: stay here and choose another picture.",
                         platform::vbYesNo + platform::vbExclamation + platform::vbDefaultButton2,
                         "Set Picture") == platform::vbYes)
        return true;
    txtEdit[3]->setFocus();
    return false;
}

void frmHotKey_Define::Form_KeyDown(int &KeyCode, int Shift)
{
    if (Shift != 0)
        return;
    if (KeyCode == platform::vbKeyF3)
        cmdFind[0]->click();
    else if (KeyCode == platform::vbKeyF4)
        cmdFind[1]->click();
    else
        mpStandardKeys(
            KeyCode, [this] { cmdOkCancel_Click(0); }, [this] { cmdOkCancel_Click(1); });
}
