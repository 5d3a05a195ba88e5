#include "shell/frmMain.h"
#include "common/Conversions.h"
#include "common/sm_Messages.h"
#include "common/sm_Text.h"
#include "common/ui/sm_FGrid.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyRelink.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeySetCheck.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Modal.h"
#include "screens/frmHotKeys.h"
#include "screens/frmHotKeys_Trial.h"
#include "screens/frmSpecialKeys.h"
#include "screens/frmVersions.h"
#include "screens/posButtons.h"
#include <QCursor>
#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>

namespace {

QPushButton *button(const QString &caption, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    b->setMinimumHeight(34);
    return b;
}

void colour(QPushButton *b, const char *back, bool bold = false)
{
    b->setStyleSheet(QString("QPushButton { background-color: %1; %2 }"
                             "QPushButton:disabled { color: gray; }")
                         .arg(back, bold ? "font-weight: bold;" : ""));
}

} // namespace

frmMain::frmMain(QWidget *parent) : KeyPreviewForm(parent)
{
    fgrdItems = new platform::MSFlexGrid(this);
    fgrdItems->setObjectName("fgrdItems");
    fgrdItems->setSelectionMode(QAbstractItemView::SingleSelection);
    fgrdItems->setSelectionBehavior(QAbstractItemView::SelectRows);
    cmdEdit[0] = button("&Add", "cmdEdit", this);
    cmdEdit[1] = button("&Change", "cmdEdit", this);
    cmdEdit[2] = button("&Delete", "cmdEdit", this);
    cmdTrial = button("Hot Keys Trial", "cmdTrial", this);
    colour(cmdTrial, "#00c000", true);
    cmdSpecial = button("&Special Keys", "cmdSpecial", this);
    colour(cmdSpecial, "#ffff00");
    CmdCoupon = button("Store &Coupons", "CmdCoupon", this);
    colour(CmdCoupon, "#e0e0e0");
    cmdPrint = button("F9 Print", "cmdPrint", this);
    cmdHelp = button("F1 Help", "cmdHelp", this);
    cmdExit = button("Esc Exit", "cmdExit", this);
    // Sets keep their numbers for life, so there is no order to change.
    cmdChangeOrder = new MyButton("Change Order", this);
    cmdChangeOrder->setObjectName("cmdChangeOrder");
    cmdChangeOrder->setEnabled(false);
    cmdChangeOrder->setToolTip("Sets keep their numbers; there is no order to change.");

    mnuPrint = new QMenu("Print", this);
    mnuPrint->setObjectName("mnuPrint");
    mnuPrintType[0] = mnuPrint->addAction("Summary");
    mnuPrintType[1] = mnuPrint->addAction("Detail");

    auto *grid = new QGridLayout(this);
    grid->addWidget(fgrdItems, 0, 0, 1, 6);
    grid->addWidget(cmdEdit[0], 1, 0);
    grid->addWidget(cmdEdit[1], 1, 1);
    grid->addWidget(cmdEdit[2], 1, 2);
    grid->addWidget(cmdTrial, 1, 3);
    grid->addWidget(cmdSpecial, 1, 4);
    grid->addWidget(CmdCoupon, 1, 5);
    grid->addWidget(cmdChangeOrder, 2, 0);
    grid->addWidget(cmdPrint, 2, 3);
    grid->addWidget(cmdHelp, 2, 4);
    grid->addWidget(cmdExit, 2, 5);
    cmdVersions = button("&Versions", "cmdVersions", this);
    cmdVersions->setToolTip("Earlier versions of the selected set, and removed sets");
    grid->addWidget(cmdVersions, 3, 0);
    connect(cmdVersions, &QPushButton::clicked, this, [this] { cmdVersions_Click(); });
    resize(820, 560);

    for (int i = 0; i < 3; ++i)
        connect(cmdEdit[i], &QPushButton::clicked, this, [this, i] { cmdEdit_Click(i); });
    connect(cmdTrial, &QPushButton::clicked, this, [this] { cmdTrial_Click(); });
    connect(cmdSpecial, &QPushButton::clicked, this, [this] { cmdSpecial_Click(false); });
    connect(CmdCoupon, &QPushButton::clicked, this, [this] { cmdSpecial_Click(true); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    for (int i = 0; i < 2; ++i)
        connect(mnuPrintType[i], &QAction::triggered, this, [this, i] { mnuPrintType_Click(i); });
    connect(cmdHelp, &QPushButton::clicked, this,
            [this] { gpHelp_press(QString::number(HelpContextID)); });
    connect(cmdExit, &QPushButton::clicked, this, &QDialog::reject);
    connect(fgrdItems, &QTableWidget::cellDoubleClicked, this, [this] { fgrdItems_DblClick(); });
    mpCheck_setup();
    mpPackages_setup();
}

void frmMain::Form_Load()
{
    setWindowTitle(QString::fromLatin1(platform::kProductName));
    gpForm_initControls(this);
    cmdEdit[1]->setEnabled(false);
    cmdEdit[2]->setEnabled(false);
    mpSetList_fill();
}

bool frmMain::event(QEvent *e)
{
    if (e->type() == QEvent::WindowActivate)
        HelpContextID = 1;
    return KeyPreviewForm::event(e);
}

void frmMain::mpSetList_format()
{
    static const int widths[] = {600, 2200, 1100, 1100, 1100, 1100};
    fgrdItems->setFixedRows(1);
    fgrdItems->setCols(6);
    fgrdItems->setRows(2);
    fgrdItems->setTextMatrix(0, 0, "Set");
    fgrdItems->setTextMatrix(0, 1, "Title");
    for (int c = 2; c < 6; ++c) fgrdItems->setTextMatrix(0, c, "Column " + QString::number(c - 1));
    for (int c = 0; c < 6; ++c) fgrdItems->setColWidth(c, widths[c]);
    fgrdItems->setColAlignment(0, Qt::AlignCenter);
    fgrdItems->setSpareWidthShared(true);
}

void frmMain::mpSetList_fill()
{
    fgrdItems->setUpdatesEnabled(false);
    fgrdItems->Clear();
    fgrdItems->setRows(fgrdItems->FixedRows());
    mpSetList_format();
    bHaveSets = false;
    msRowFiles.clear();
    QList<QStringList> rows;
    for (const QString &name : hotKeySetFiles()) {
        if (name.right(1).toLower() == "x")
            continue;
        gpHotKeySet_clear();
        const QString shown = hotKeySetShownDigits(name);
        const QString title = gfsHotKeySet_read(hotKeySetDigits(name));
        QStringList cells{shown, title};
        for (int g = 1; g <= 4; ++g) cells << gHotKeyGroups[g].Caption;
        rows << (cells << name); // the name rides behind the shown columns
        bHaveSets = true;
    }
    if (bHaveSets) {
        // The rows go in sorted, in place of the blank row of the set-up.
        std::stable_sort(rows.begin(), rows.end(), [](const QStringList &a, const QStringList &b) {
            return platform::MSFlexGrid::GenericLess(a[0], b[0]);
        });
        fgrdItems->RemoveItem(1);
        fgrdItems->AddItems(rows);
        for (const QStringList &row : rows) msRowFiles << row.last();
        fgrdItems->setCol(0);
        mpSelectRow(1);
    }
    fgrdItems->setUpdatesEnabled(true);
    cmdEdit[1]->setEnabled(bHaveSets);
    cmdEdit[2]->setEnabled(bHaveSets);
    cmdTrial->setEnabled(bHaveSets);
}

void frmMain::mpSelectRow(int row)
{
    gpGrid_selectRow(fgrdItems, row);
    fgrdItems->scrollToItem(fgrdItems->item(row - fgrdItems->FixedRows(), 0));
}

int frmMain::mpSetNumber_next() const
{
    // Only the sets count: a stray copy listed as blank or 00 would make set 01 look free,
    // and the new set would overwrite it.
    int j = 1;
    for (int row = fgrdItems->FixedRows(); row < fgrdItems->Rows(); ++row) {
        if (!mpIsSetRow(row))
            continue;
        if (conv::Val(fgrdItems->TextMatrix(row, 0)) != j)
            return j;
        ++j;
    }
    return j;
}

bool frmMain::mpEditSet(const QString &setNumber, const QString &fileName, int helpContext,
                        QWidget *over)
{
    if (!fileName.isEmpty() && !mpUnreadable_accepted(fileName))
        return false;
    frmHotKeys editor(over ? over : this);
    editor.HotKeySet = setNumber;
    editor.fileName = fileName;
    editor.HelpContextID = helpContext;
    editor.Form_Load();
    platform::showModal(editor);
    return !editor.Canceled;
}

bool frmMain::mpUnreadable_accepted(const QString &fileName)
{
    QStringList parts = setcheck::unreadableParts(fileName);
    if (parts.isEmpty())
        return true;
    constexpr qsizetype shown = 5;
    if (parts.size() > shown)
        parts = parts.mid(0, shown) << QString("and %1 more").arg(parts.size() - shown);
    return platform::MsgBox(
               fileName + " holds what this program cannot read:\r" + parts.join('\r') +
                   "\r\rYes: open it anyway. The editor shows only what could be read, and "
                   "Accept replaces the file with that (the file as it is now is kept in "
                   "Versions).\rNo: leave the file as it is.",
               platform::vbYesNo + platform::vbExclamation + platform::vbDefaultButton2,
               "Set File Not Readable") == platform::vbYes;
}

// A stray copy such as HKSET01-old.SDF is listed but is no set: editing it would write
// HKSET.SDF, and removing it would repair the links of set 0, which every blank link reads as.
bool frmMain::mpIsSetRow(int row) const
{
    const QString number = fgrdItems->TextMatrix(row, 0);
    return !number.isEmpty() &&
           hotKeySetNumber(msRowFiles.value(row - fgrdItems->FixedRows())) == number;
}

bool frmMain::mpRowIsSet(int row, const QString &nothingDone) const
{
    if (mpIsSetRow(row))
        return true;
    platform::MsgBox(msRowFiles.value(row - fgrdItems->FixedRows()) +
                         " is not a hot key set: a set's file is named HKSET, its number "
                         "(01 to 999) and .SDF.\r" +
                         nothingDone +
                         " To use its keys or get rid of it, rename or delete it in the data "
                         "folder.",
                     platform::vbExclamation);
    return false;
}

void frmMain::cmdEdit_Click(int Index)
{
    // The list is read again also after Cancel: another station may have changed the folder.
    if (Index == 0) {
        mpEditSet(conv::Format(mpSetNumber_next(), "#0#"), QString(), 5);
        mpSetList_fill();
        return;
    }
    const int row = fgrdItems->Row();
    const QString number = fgrdItems->TextMatrix(row, 0);
    if (!mpRowIsSet(row, Index == 1 ? "Nothing was changed."
                                    : "Nothing was deleted and no key was changed."))
        return;
    if (Index == 1) {
        mpEditSet(number, "HKSET" + number + ".SDF", 6);
        mpSetList_fill();
        mpSelectRow(row);
        return;
    }
    const QString title = fgrdItems->TextMatrix(row, 1);
    const QList<LinkingKeys> linking = hotKeySetLinkingKeys(number);
    const QString links =
        linking.isEmpty()
            ? "No key of another set opens it."
            : "Keys that open it, which will be cleared: " + hotKeySetLinkingText(linking) + ".";
    if (platform::MsgBox("Ready To Delete '" + title + "'\r\r" + links +
                             "\r\rAre You Sure You Want To Delete?",
                         platform::vbYesNo + platform::vbQuestion,
                         QString::fromLatin1(platform::kProductName)) != platform::vbYes)
        return;
    const SetRemoval removal = gpHotKeySet_remove(number);
    if (removal.removed)
        platform::MsgBox("Hot keys Removed");
    else
        platform::MsgBox("Set " + number +
                             " was not removed, so that no key is left pointing at "
                             "a set that is gone.\rThese files could not be read or changed:\r" +
                             removal.problems.join('\r') +
                             "\r\rMake sure the data folder can be written to and try again.",
                         platform::vbExclamation);
    mpSetList_fill();
}

void frmMain::cmdTrial_Click()
{
    const int row = fgrdItems->Row();
    if (!mpRowIsSet(row, "Nothing was opened."))
        return;
    frmHotKeys_Trial trial(this);
    trial.currentSet = static_cast<qint16>(row);
    trial.msfileName = "HKSET" + fgrdItems->TextMatrix(row, 0) + ".SDF";
    trial.Form_Load();
    platform::showModal(trial);
}

void frmMain::cmdSpecial_Click(bool coupons)
{
    gbCouponKeys = coupons;
    if (!coupons)
        gbSpecialKeys = true;
    frmSpecialKeys screen(this);
    screen.Form_Load();
    platform::showModal(screen);
}

void frmMain::cmdPrint_Click()
{
    if (platform::ShellPort::get().printerNames().isEmpty()) {
        platform::MsgBox("You must have a windows printer installed ", platform::vbOKOnly, "Error");
        return;
    }
    mnuPrint->popup(QCursor::pos());
}

void frmMain::fgrdItems_DblClick()
{
    if (!fgrdItems->TextMatrix(fgrdItems->Row(), 0).isEmpty())
        cmdEdit[1]->click();
    else
        cmdEdit[0]->click();
}

void frmMain::cmdVersions_Click()
{
    frmVersions screen(this);
    const int row = fgrdItems->Row();
    if (bHaveSets && mpIsSetRow(row))
        screen.fileName = msRowFiles.value(row - fgrdItems->FixedRows());
    screen.Form_Load();
    platform::showModal(screen);
    if (screen.Restored)
        mpSetList_fill();
}

void frmMain::Form_KeyDown(int &KeyCode, int)
{
    if (mpCheck_KeyDown(KeyCode)) {
        KeyCode = 0;
        return;
    }
    QPushButton *target = nullptr;
    switch (KeyCode) {
    case platform::vbKeyF1:
        target = cmdHelp;
        break;
    case platform::vbKeyF9:
        target = cmdPrint;
        break;
    case platform::vbKeyA:
        target = cmdEdit[0];
        break;
    case platform::vbKeyA + 2:
        target = cmdEdit[1];
        break; // C
    case platform::vbKeyA + 3:
        target = cmdEdit[2];
        break; // D
    case platform::vbKeyA + 7:
        target = cmdTrial;
        break; // H
    case platform::vbKeyA + 18:
        target = cmdSpecial;
        break; // S
    case platform::vbKeyA + 21:
        target = cmdVersions;
        break; // V
    case platform::vbKeyEscape:
        target = cmdExit;
        break;
    case platform::vbKeyReturn:
        target = CmdCoupon;
        break;
    default:
        return;
    }
    KeyCode = 0;
    if (target->isEnabled())
        target->click();
}
