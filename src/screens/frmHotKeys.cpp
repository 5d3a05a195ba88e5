#include "screens/frmHotKeys.h"
#include "common/Conversions.h"
#include "common/sm_Files.h"
#include "common/sm_Messages.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeySetCheck.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/Modal.h"
#include "platform/ui/WindowPlacement.h"
#include "screens/KeyDrag.h"
#include "screens/frmHotKey_Define.h"
#include "screens/posButtons.h"
#include <QEvent>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

MyButton *button(const QString &caption, const QString &name, QWidget *parent)
{
    auto *b = new MyButton(caption, parent);
    b->setObjectName(name);
    return b;
}

} // namespace

frmHotKeys::frmHotKeys(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Hot Keys Set"); // a new set keeps it until its first redraw
    lblEdit = new QLabel("Hot Keys Set Title", this);
    lblEdit->setObjectName("lblEdit");
    lblEdit->installEventFilter(this);
    QFont bold = lblEdit->font();
    bold.setBold(true);
    lblEdit->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(lblEdit->text()) + 4);
    txtButtonSet = new QLineEdit(this);
    txtButtonSet->setObjectName("txtButtonSet");
    txtButtonSet->installEventFilter(this);
    auto *title = new QHBoxLayout;
    title->addWidget(lblEdit);
    title->addWidget(txtButtonSet, 1);

    keyDrag = new KeyDrag(this);
    connect(keyDrag, &KeyDrag::dropped, this, [this](int from, int to, bool copy) {
        DropKey(from / 10, from % 10, to / 10, to % 10, copy);
    });
    auto *columns = new QGridLayout;
    columns->setSpacing(6);
    for (int n = 1; n <= 4; ++n) {
        LblGroup[n - 1] = new QLabel("Group" + QString::number(n), this);
        LblGroup[n - 1]->setObjectName("LblGroup");
        LblGroup[n - 1]->setAlignment(Qt::AlignCenter);
        columns->addWidget(LblGroup[n - 1], 0, n - 1);
        cmdEdit_Group[n] =
            button("Group" + QString::number(n), "cmdEdit_Group" + QString::number(n), this);
        QFont bold = cmdEdit_Group[n]->font();
        bold.setBold(true);
        cmdEdit_Group[n]->setFont(bold);
        columns->addWidget(cmdEdit_Group[n], 1, n - 1);
        connect(cmdEdit_Group[n], &QPushButton::clicked, this, [this, n] { BeginColumnEdit(n); });
        for (int j = 0; j < 8; ++j) {
            MyButton *key = button(QString(), "cmdHkGroup" + QString::number(n), this);
            key->setCaptionalignment(7);
            key->captionposition = 3;
            key->picturealignment = 1;
            key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            cmdHkGroup[n][j] = key;
            columns->addWidget(key, j + 2, n - 1);
            connect(key, &QPushButton::clicked, this, [this, n, j] { PressKey(n, j); });
            keyDrag->addKey(key, n * 10 + j + 1);
        }
    }

    cmdOkCancel[0] = button("Accept", "cmdOkCancel", this);
    cmdOkCancel[1] = button("Cancel", "cmdOkCancel", this);
    cmdHelp = button("&Help", "cmdHelp", this);
    cmdUndo = button("Undo", "cmdUndo", this);
    cmdUndo->setToolTip("Takes back the last change to a key or a column title (Ctrl+Z)");
    cmdRedo = button("Redo", "cmdRedo", this);
    cmdRedo->setToolTip("Makes the change that Undo took back again (Ctrl+Y)");
    fraGroupEdit = new QFrame(this);
    fraGroupEdit->setObjectName("fraGroupEdit");
    fraGroupEdit->setFrameShape(QFrame::StyledPanel);
    lblButtonEdit = new QLabel("Column Title", fraGroupEdit);
    txtEdit = new QLineEdit(fraGroupEdit);
    txtEdit->setObjectName("txtEdit");
    cmdGroup_OkCancel[0] = button("Accept", "cmdGroup_OkCancel", fraGroupEdit);
    cmdGroup_OkCancel[1] = button("Cancel", "cmdGroup_OkCancel", fraGroupEdit);
    auto *panel = new QVBoxLayout(fraGroupEdit);
    panel->addWidget(lblButtonEdit);
    panel->addWidget(txtEdit);
    panel->addWidget(cmdGroup_OkCancel[0]);
    panel->addWidget(cmdGroup_OkCancel[1]);
    fraGroupEdit->setVisible(false);

    auto *right = new QVBoxLayout;
    for (MyButton *b : {cmdOkCancel[0], cmdOkCancel[1], cmdHelp}) {
        b->setMinimumSize(110, 44);
        right->addWidget(b);
    }
    right->addSpacing(16);
    for (MyButton *b : {cmdUndo, cmdRedo}) {
        b->setMinimumSize(110, 44);
        right->addWidget(b);
    }
    right->addSpacing(16);
    right->addWidget(fraGroupEdit);
    right->addStretch();

    lblInstructions = new QLabel("Click on the button or label(above column) to change it.", this);
    lblInstructions->setObjectName("lblInstructions");

    auto *body = new QHBoxLayout;
    body->addLayout(columns, 1);
    body->addLayout(right);
    auto *outer = new QVBoxLayout(this);
    outer->addLayout(title);
    outer->addLayout(body, 1);
    outer->addWidget(lblInstructions);

    for (int i = 0; i < 2; ++i) {
        connect(cmdOkCancel[i], &QPushButton::clicked, this, [this, i] { cmdOkCancel_Click(i); });
        connect(cmdGroup_OkCancel[i], &QPushButton::clicked, this,
                [this, i] { cmdGroup_OkCancel_Click(i); });
    }
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(cmdUndo, &QPushButton::clicked, this, [this] { Undo(); });
    connect(cmdRedo, &QPushButton::clicked, this, [this] { Redo(); });
    connect(txtButtonSet, &QLineEdit::textEdited, this, [this] {
        HelpContextID = 8;
        ShowAcceptButton();
    });
}

void frmHotKeys::Form_Load()
{
    gpForm_initControls(this);
    Canceled = false;
    SetLoaded = false;
    UndoSteps.clear();
    RedoSteps.clear();
    mpSteps_show();
    ReadStamp = versions::FileStamp::of(hotKeySetPath(HotKeySet));
    if (!conv::Trim(fileName).isEmpty()) {
        gpHotKeys_populate(fileName);
    } else {
        txtButtonSet->setText("New Set " + HotKeySet);
        gpHotKeySet_clear();
    }
    cmdOkCancel[0]->setVisible(false);
    SetLoaded = true;
    ReadGroups = gHotKeyGroups;
    ReadTitle = txtButtonSet->text();
    ReadWhole = conv::Trim(fileName).isEmpty() ||
                setcheck::unreadableParts(QFileInfo(hotKeySetPath(HotKeySet)).fileName()).isEmpty();
    platform::setMaximisedWithin(*this);
}

void frmHotKeys::gpHotKeys_populate(const QString &sHotKeySet)
{
    if (SetLoaded) {
        SetTitle = txtButtonSet->text();
    } else {
        gpHotKeySet_clear();
        SetTitle = gfsHotKeySet_read(gfsText_digits(sHotKeySet));
        txtButtonSet->setText(SetTitle);
    }
    if (SetTitle.isEmpty())
        return;
    setWindowTitle("Hot Keys Set:  - " + sHotKeySet);
    mpKeys_draw(false);
}

void frmHotKeys::DrawKey(MyButton *control, const HotKeyButton &k, bool exact)
{
    if (conv::Trim(k.Icon).isEmpty() && conv::Trim(k.Caption).isEmpty()) {
        control->setCaption("");
        control->Tag.clear();
    } else {
        control->setCaption(k.Caption);
    }
    // Only an exact redraw takes a picture away; a missing file leaves the caption alone.
    if (exact)
        control->clearPicture();
    const QString picture = gsHotKeyPicturePath + k.Icon;
    if (!(conv::AboveBlank(k.Icon) && gfbFile_exists(picture) && control->setPicture(picture)))
        control->setCaptionalignment(4);
}

void frmHotKeys::mpKeys_draw(bool exact)
{
    for (int n = 1; n <= 4; ++n) {
        DrawColumnTitle(n);
        for (int j = 1; j <= 8; ++j)
            DrawKey(cmdHkGroup[n][j - 1], gHotKeyGroups[n].Buttons[j], exact);
    }
}

void frmHotKeys::mpStep_begin()
{
    UndoSteps.push_back(gHotKeyGroups);
    RedoSteps.clear();
    mpSteps_show();
}

template <typename Change> void frmHotKeys::mpStep_make(Change apply)
{
    ::HotKeySet changed = gHotKeyGroups;
    apply(changed);
    if (changed == gHotKeyGroups)
        return;
    mpStep_begin();
    gHotKeyGroups = changed;
}

bool frmHotKeys::mpChanged() const
{
    return gHotKeyGroups != ReadGroups || txtButtonSet->text() != ReadTitle;
}

void frmHotKeys::mpSteps_show()
{
    cmdUndo->setEnabled(!UndoSteps.empty());
    cmdRedo->setEnabled(!RedoSteps.empty());
}

void frmHotKeys::Undo()
{
    mpStep_move(UndoSteps, RedoSteps);
}

void frmHotKeys::Redo()
{
    mpStep_move(RedoSteps, UndoSteps);
}

// Goes back (or forth) one step; the set as it stands becomes a step the other way.
void frmHotKeys::mpStep_move(std::vector<::HotKeySet> &from, std::vector<::HotKeySet> &to)
{
    if (from.empty())
        return;
    to.push_back(gHotKeyGroups);
    gHotKeyGroups = from.back();
    from.pop_back();
    // An open title panel follows, so its Accept cannot store the undone title again.
    if (fraGroupEdit->isVisible())
        txtEdit->setText(gHotKeyGroups[PanelGroup].Caption);
    mpSteps_show();
    mpKeys_draw(true);
    ShowAcceptButton();
}

void frmHotKeys::DropKey(int fromGroup, int fromKey, int toGroup, int toKey, bool copy)
{
    if (fromGroup == toGroup && fromKey == toKey)
        return;
    const HotKeyButton &from = gHotKeyGroups[fromGroup].Buttons[fromKey];
    const HotKeyButton &to = gHotKeyGroups[toGroup].Buttons[toKey];
    if (copy && conv::AboveBlank(to.Caption + to.Icon + to.Item + to.LinkSet) &&
        platform::MsgBox("Key " + QString::number(toKey) + " of column " +
                             QString::number(toGroup) + " (\"" + to.Caption +
                             "\") is already defined.\r\rReplace it with a copy of key " +
                             QString::number(fromKey) + " of column " + QString::number(fromGroup) +
                             " (\"" + from.Caption + "\")?",
                         platform::vbYesNo + platform::vbQuestion + platform::vbDefaultButton2,
                         "Copy Key") != platform::vbYes)
        return;
    mpStep_make([&](::HotKeySet &set) {
        HotKeyButton &source = set[fromGroup].Buttons[fromKey];
        HotKeyButton &target = set[toGroup].Buttons[toKey];
        if (copy)
            target = source;
        else
            std::swap(source, target);
    });
    mpKeys_draw(true);
    ShowAcceptButton();
}

void frmHotKeys::ShowAcceptButton()
{
    cmdOkCancel[0]->setVisible(true);
}

void frmHotKeys::DrawColumnTitle(int N)
{
    if (N >= 1 && N <= 4)
        cmdEdit_Group[N]->setCaption(gHotKeyGroups[N].Caption);
}

void frmHotKeys::BeginColumnEdit(int N)
{
    CurrentGroup = N;
    PanelGroup = N;
    lblButtonEdit->setText("Column " + QString::number(N) + " Title");
    txtEdit->setText(gHotKeyGroups[N].Caption);
    fraGroupEdit->setVisible(true);
    txtEdit->setFocus();
    HelpContextID = 9;
}

void frmHotKeys::cmdGroup_OkCancel_Click(int Index)
{
    if (Index == 0) {
        // An untitled column turns silver with its first title, in the same step, so
        // that undoing the title gives its colour back too.
        mpStep_make([this](::HotKeySet &set) {
            HotKeyGroup &group = set[PanelGroup];
            if (group.Caption.isEmpty() && !txtEdit->text().isEmpty())
                group.Color = kSilverColor;
            group.Caption = txtEdit->text();
        });
        gpHotKeys_populate("");
    } else {
        fraGroupEdit->setVisible(false);
    }
    ShowAcceptButton();
}

void frmHotKeys::PressKey(int group, int index)
{
    CurrentGroup = group;
    frmHotKey_Define dialog(this);
    PrepareKeyDialog(dialog, group, index + 1);
    RunKeyDialog(dialog);
}

void frmHotKeys::PrepareKeyDialog(frmHotKey_Define &dialog, int group, int key)
{
    dialog.LoadKey(HotKeySet, gHotKeyGroups[group], key);
}

void frmHotKeys::RunKeyDialog(frmHotKey_Define &dialog)
{
    platform::showModal(dialog);
    if (!dialog.Canceled) {
        const int key = static_cast<int>(conv::Val(dialog.ButtonNumber));
        if (key >= 1 && key <= 8) {
            mpStep_make([&](::HotKeySet &set) { dialog.StoreKey(set[CurrentGroup].Buttons[key]); });
        }
        gpHotKeys_populate("");
    }
    ShowAcceptButton();
}

void frmHotKeys::cmdOkCancel_Click(int Index)
{
    if (Index == 0) {
        Canceled = false;
        // An existing set taken back to what was read stays the file it was, byte for byte.
        const bool unchanged = ReadStamp.exists && ReadWhole && !mpChanged() &&
                               versions::FileStamp::of(hotKeySetPath(HotKeySet)) == ReadStamp;
        if (!unchanged && !gfbOtherStation_check(hotKeySetPath(HotKeySet), ReadStamp,
                                                 "Hot keys set " + HotKeySet))
            return;
        // A save that fails keeps the editor open, so nothing typed is lost.
        if (!unchanged && !gpHotKeySet_write(HotKeySet, txtButtonSet->text()))
            return;
    } else {
        if (mpChanged() && !gfbChanges_discard())
            return;
        Canceled = true;
    }
    hide();
}

void frmHotKeys::cmdHelp_Click()
{
    gpHelp_press(QString::number(HelpContextID));
}

void frmHotKeys::Form_KeyDown(int &KeyCode, int Shift)
{
    // Ctrl+Z and Ctrl+Y stay a text box's own while it has typing to take back or redo.
    const auto *box = qobject_cast<QLineEdit *>(focusWidget());
    const bool ctrl = Shift & platform::vbCtrlMask;
    const bool redo = KeyCode == platform::vbKeyA + 24 || (Shift & platform::vbShiftMask);
    if (ctrl && (KeyCode == platform::vbKeyA + 25 || KeyCode == platform::vbKeyA + 24) &&
        !(box && (redo ? box->isRedoAvailable() : box->isUndoAvailable()))) {
        KeyCode = 0;
        if (redo)
            Redo();
        else
            Undo();
    } else if (KeyCode == platform::vbKeyF1) {
        KeyCode = 0;
        cmdHelp_Click();
    } else if (KeyCode == platform::vbKeyF10) {
        KeyCode = 0;
        if (cmdGroup_OkCancel[0]->isVisible())
            cmdGroup_OkCancel_Click(0);
        else
            cmdOkCancel_Click(0);
    } else if (KeyCode == platform::vbKeyEscape) {
        // Esc leaves without saving, as Cancel does.
        KeyCode = 0;
        cmdOkCancel_Click(1);
    }
}

bool frmHotKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lblEdit && event->type() == QEvent::MouseButtonPress) {
        txtButtonSet->setFocus();
    } else if (watched == txtButtonSet &&
               (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        QFont f = lblEdit->font();
        f.setBold(event->type() == QEvent::FocusIn);
        lblEdit->setFont(f);
    }
    return KeyPreviewForm::eventFilter(watched, event);
}
