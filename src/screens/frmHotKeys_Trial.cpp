#include "screens/frmHotKeys_Trial.h"
#include "common/Conversions.h"
#include "common/sm_Files.h"
#include "common/sm_Text.h"
#include "common/sm_WindowTop.h"
#include "common/ui/sm_FGrid.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_InventoryKey.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Twips.h"
#include "platform/ui/WindowPlacement.h"
#include "screens/posButtons.h"
#include "screens/sm_Buttons.h"
#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// The keyboard letter of a key: "1" to "8", "A" to "H", "J" to "Q", "R" to "Y".
int letterOf(int group, int key)
{
    int code = '1';
    for (int i = 0; i < (group - 1) * 8 + (key - 1); ++i) {
        ++code;
        if (code == '9')
            code = 'A';
        else if (code == 'I')
            code = 'J';
    }
    return code;
}

MyButton *button(const QString &name, QWidget *parent)
{
    auto *b = new MyButton(QString(), parent);
    b->setObjectName(name);
    return b;
}

} // namespace

frmHotKeys_Trial::frmHotKeys_Trial(QWidget *parent) : KeyPreviewForm(parent)
{
    fgrdItems = new platform::MSFlexGrid(this);
    fgrdItems->setObjectName("fgrdItems");
    fgrdItems->setFixedRows(0);
    fgrdItems->setSelectionBehavior(QAbstractItemView::SelectRows);
    fgrdItems->setSelectionMode(QAbstractItemView::SingleSelection);
    fgrdItems->setFixedWidth(platform::twipsToPixels(3400) + 24);
    fgrdItems->setFocusPolicy(Qt::NoFocus);

    auto *keys = new QGridLayout;
    keys->setSpacing(6);
    for (int n = 1; n <= 4; ++n) {
        LblGroup[n - 1] = new QLabel("Group" + QString::number(n), this);
        LblGroup[n - 1]->setObjectName("LblGroup");
        LblGroup[n - 1]->setAlignment(Qt::AlignCenter);
        keys->addWidget(LblGroup[n - 1], 0, n - 1);
        for (int j = 0; j < 8; ++j) {
            MyButton *key = button("cmdHkGroup" + QString::number(n), this);
            key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            key->setFocusPolicy(Qt::NoFocus);
            cmdHkGroup[n][j] = key;
            keys->addWidget(key, j + 1, n - 1);
            connect(key, &QPushButton::clicked, this, [this, n, j] { PressKey(n, j); });
        }
    }
    auto *bar = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        cmdBack[i] = button("cmdBack", this);
        cmdBack[i]->setMinimumSize(110, 52);
        cmdBack[i]->setFocusPolicy(Qt::NoFocus);
        bar->addWidget(cmdBack[i]);
        connect(cmdBack[i], &QPushButton::clicked, this, [this, i] { cmdBack_Click(i); });
    }
    bar->addStretch();
    cmdHelp = button("cmdHelp", this);
    CmdAcceptCancel = button("CmdAcceptCancel", this);
    for (MyButton *b : {cmdHelp, CmdAcceptCancel}) {
        b->setMinimumSize(110, 52);
        b->setFocusPolicy(Qt::NoFocus);
        bar->addWidget(b);
    }
    QPalette blue = CmdAcceptCancel->palette();
    blue.setColor(QPalette::ButtonText, QColor(0, 0, 0xC0)); // the suite's 0xC00000
    CmdAcceptCancel->setPalette(blue);
    connect(CmdAcceptCancel, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });

    auto *right = new QVBoxLayout;
    right->addLayout(keys, 1);
    right->addLayout(bar);
    auto *outer = new QHBoxLayout(this);
    outer->addWidget(fgrdItems);
    outer->addLayout(right, 1);
    setFocusPolicy(Qt::StrongFocus);
}

void frmHotKeys_Trial::Form_Load()
{
    gpForm_initControls(this);
    GridPlaced = false;
    iLastSetIndex = 1;
    FirstDraw = true;
    LoadSetList();
    // The first entry of the history is a position among the sets, like all
    // the others, so that Back to it always shows a set that exists.
    const int start = static_cast<int>(SetFiles.indexOf(msfileName, 1));
    History = {0,
               static_cast<qint16>(
                   start > 0 ? start : std::clamp<int>(currentSet, 1, std::max<int>(SetCount, 1)))};
    setWindowTitle("Hot Keys Trial");
    SetCharKeyCaption(CmdAcceptCancel, "Cancel", 27, false);
    SetFunctionKeyCaption(cmdBack[0], "First Set", 36, false);
    SetFunctionKeyCaption(cmdBack[1], "Back ", 33, false);
    SetFunctionKeyCaption(cmdBack[2], "Next ", 34, false);
    SetFunctionKeyCaption(cmdBack[3], "Last Set", 35, false);
    SetFunctionKeyCaption(cmdHelp, "Help", 112, false);
    DrawSet(msfileName);

    static const int widths[] = {600, 2800, 0};
    fgrdItems->setCols(3);
    fgrdItems->setRows(0);
    for (int c = 0; c < 3; ++c) fgrdItems->setColWidth(c, widths[c]);
    fgrdItems->setColAlignment(0, Qt::AlignCenter);
    fgrdItems->horizontalHeader()->hide();
    fgrdItems->horizontalHeader()->setStretchLastSection(false);
    fgrdItems->AddItem(QString());
    fgrdItems->setRow(0);
    platform::setMaximisedWithin(*this);
}

bool frmHotKeys_Trial::event(QEvent *e)
{
    if (e->type() == QEvent::WindowActivate) {
        gfbWindow_topMost(this, true);
        HelpContextID = 19;
    }
    return KeyPreviewForm::event(e);
}

void frmHotKeys_Trial::resizeEvent(QResizeEvent *e)
{
    if (!GridPlaced) {
        GridPlaced = true;
        QMargins m = layout()->contentsMargins();
        m.setLeft(platform::twipsToPixels(200));
        layout()->setContentsMargins(m);
    }
    KeyPreviewForm::resizeEvent(e);
}

void frmHotKeys_Trial::LoadSetList()
{
    QStringList names = hotKeySetFiles();
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return QString::compare(a, b) < 0; });
    SetFiles = QStringList{QString()} + names;
    SetCount = static_cast<qint16>(names.size());
}

QString frmHotKeys_Trial::SetFileName(const QString &setNumber)
{
    return "HKSET" + gfsText_pad(1, 2, setNumber, "0") + ".SDF";
}

void frmHotKeys_Trial::mpButtonStates()
{
    const int C = SetCount, P = currentSet, D = iLastSetIndex;
    auto set = [this](bool first, bool next, bool last) {
        cmdBack[0]->setEnabled(first);
        cmdBack[2]->setEnabled(next);
        cmdBack[3]->setEnabled(last);
    };
    if (C <= 1) {
        set(false, false, false);
        cmdBack[1]->setEnabled(false);
    } else if (C == 2) {
        set(P != 1, false, P != 2);
        cmdBack[1]->setEnabled(false);
    } else if (P == 1) {
        set(false, true, true);
        cmdBack[1]->setEnabled(false);
    } else {
        set(true, P < C, P < C);
        if (D > 1)
            cmdBack[1]->setEnabled(true);
    }
}

void frmHotKeys_Trial::DrawSet(const QString &file)
{
    if (FirstDraw)
        cmdBack[1]->setEnabled(false);
    mpButtonStates();
    if (SetCount > 2)
        FirstDraw = false;
    gpHotKeySet_clear();
    const QString title = gfsHotKeySet_read(gfsText_digits(file));
    if (title.isEmpty())
        return;
    setWindowTitle("Hot Keys - " + title);
    for (int n = 1; n <= 4; ++n) {
        for (int k = 1; k <= 8; ++k)
            DrawKey(cmdHkGroup[n][k - 1], gHotKeyGroups[n].Buttons[k], n, k);
    }
}

void frmHotKeys_Trial::DrawKey(MyButton *control, const HotKeyButton &key, int group, int index)
{
    DrawKeyLabel(control, key, group, index);
    DrawKeyPicture(control, key);
    control->setCaptionalignment(4);
}

void frmHotKeys_Trial::DrawKeyLabel(MyButton *control, const HotKeyButton &key, int group,
                                    int index)
{
    if (conv::Trim(key.Caption).isEmpty() && conv::Trim(key.Item).isEmpty()) {
        control->setCaption("");
        control->Tag.clear();
    } else {
        QFont f = control->font();
        f.setPointSize(10);
        control->setFont(f);
        SetCharKeyCaption(control, key.Caption, letterOf(group, index), true);
    }
}

void frmHotKeys_Trial::DrawKeyPicture(MyButton *control, const HotKeyButton &key)
{
    const QString picture = gsHotKeyPicturePath + key.Icon;
    if (!(conv::AboveBlank(key.Icon) && gfbFile_exists(picture) && control->setPicture(picture)))
        control->clearPicture();
}

void frmHotKeys_Trial::PressKey(int group, int index)
{
    const HotKeyButton &key = gHotKeyGroups[group].Buttons[index + 1];
    if (key.LinkSet.isEmpty()) {
        if (!key.Item.isEmpty())
            AddItemToList(key.Item, key.IdSelect);
        return;
    }
    const QString file = SetFileName(key.LinkSet);
    for (int i = 1; i <= SetCount; ++i) {
        if (SetFiles[i] != file)
            continue;
        ++iLastSetIndex;
        currentSet = static_cast<qint16>(i);
        History.resize(iLastSetIndex + 1);
        History[iLastSetIndex] = currentSet;
    }
    DrawSet(file);
}

void frmHotKeys_Trial::AddItemToList(const QString &item, const QString &idSelect)
{
    bool counted = false;
    for (int r = 0; r < fgrdItems->Rows() && !counted; ++r) {
        if (fgrdItems->TextMatrix(r, 2) != item)
            continue;
        fgrdItems->setTextMatrix(r, 0, QString::number(conv::Val(fgrdItems->TextMatrix(r, 0)) + 1));
        counted = true;
    }
    bool found = false;
    if (!counted) {
        const DbAction action; // one box and one bounded wait per key press
        found = gfbInventory_ByHotKey(item, idSelect);
    }
    if (found) {
        fgrdItems->AddItem("1\t" + conv::RTrim(gInventoryRecord.text("Description")) + '\t' + item);
        const int row = fgrdItems->Rows() - 1;
        gpGrid_selectRow(fgrdItems, row);
        fgrdItems->scrollToItem(fgrdItems->item(row, 0));
    }
    CmdAcceptCancel->setCaption("Accept\rF10");
}

void frmHotKeys_Trial::cmdBack_Click(int Index)
{
    switch (Index) {
    case 0:
        if (currentSet == 1)
            return;
        currentSet = 1;
        ++iLastSetIndex;
        break;
    case 1:
        if (currentSet < 2 || iLastSetIndex == 1)
            return;
        --iLastSetIndex;
        currentSet =
            std::clamp<qint16>(History.value(iLastSetIndex, 1), 1, std::max<qint16>(SetCount, 1));
        break;
    case 2:
        if (currentSet >= SetCount)
            return;
        ++currentSet;
        ++iLastSetIndex;
        break;
    default:
        currentSet = SetCount;
        ++iLastSetIndex;
        break;
    }
    if (Index != 1) {
        if (History.size() <= iLastSetIndex)
            History.resize(iLastSetIndex + 1);
        History[iLastSetIndex] = currentSet;
    }
    DrawSet(SetFiles.value(currentSet));
}

void frmHotKeys_Trial::cmdHelp_Click()
{
    gfbWindow_topMost(this, false); // let the help come in front of the panel
    gpHelp_press(QString::number(HelpContextID));
    gfbWindow_topMost(this, true);
}

void frmHotKeys_Trial::Form_KeyDown(int &KeyCode, int Shift)
{
    if (Shift != 0)
        return;
    if (KeyCode == CmdAcceptCancel->Tag.toInt() || KeyCode == platform::vbKeyF10) {
        KeyCode = 0;
        accept();
        return;
    }
    if (KeyCode == platform::vbKeyF1) {
        KeyCode = 0;
        cmdHelp_Click();
        return;
    }
    for (int i = 0; i < 4; ++i) {
        if (KeyCode == cmdBack[i]->Tag.toInt()) {
            KeyCode = 0;
            cmdBack_Click(i);
            return;
        }
    }
}

void frmHotKeys_Trial::Form_KeyPress(int &KeyAscii)
{
    const int code = QChar(KeyAscii).toUpper().unicode();
    for (int n = 1; n <= 4; ++n) {
        for (int j = 0; j < 8; ++j) {
            QApplication::processEvents();
            const QString tag = cmdHkGroup[n][j]->Tag;
            if (!tag.isEmpty() && conv::Val(tag) == code) {
                KeyAscii = 0;
                PressKey(n, j);
                return;
            }
        }
    }
    if (conv::Val(CmdAcceptCancel->Tag) == code) {
        KeyAscii = 0;
        accept();
    }
}
