#include "screens/frmSetCheck.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "common/ui/sm_FGrid.h"
#include "common/ui/sm_Forms.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_InventoryKey.h"
#include "lookup/frm_Lookup.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Modal.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmReplaceItem.h"
#include "screens/hkeyLayoutPanel.h"
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QSet>

using setcheck::Finding;

namespace {

QString counted(qsizetype n, const QString &one)
{
    return QString::number(n) + ' ' + one + (n == 1 ? "" : "s");
}

// The inventory's word on many items of keys at once.
std::optional<QHash<QString, setcheck::ItemState>> itemStates(const QStringList &keys, bool byId)
{
    QList<std::pair<QString, QString>> rows;
    if (!gfbInventory_Statuses(keys, byId, rows))
        return std::nullopt;
    QHash<QString, setcheck::ItemState> states;
    for (const auto &[item, status] : rows) {
        // The S/L comes back stored, as the keys were asked.
        const QString key = (byId ? conv::Trim(item) : conv::RTrim(item)).toUpper();
        states[key] = conv::Trim(status).toUpper() == "D" ? setcheck::ItemState::Deleted
                                                          : setcheck::ItemState::Found;
    }
    return states;
}

QString number(int n)
{
    return n > 0 ? QString::number(n) : QString();
}

} // namespace

frmSetCheck::frmSetCheck(Mode mode, QWidget *parent) : KeyPreviewForm(parent), mMode(mode)
{
    fgrdItems = new platform::MSFlexGrid(this);
    fgrdItems->setObjectName("fgrdItems");
    fgrdItems->setSelectionMode(QAbstractItemView::SingleSelection);
    fgrdItems->setSelectionBehavior(QAbstractItemView::SelectRows);
    lblItem = new QLabel("S/L or Item ID:", this);
    txtItem = new QLineEdit(this);
    txtItem->setObjectName("txtItem");
    const std::pair<QPushButton **, const char *> captions[] = {{&cmdFindItem, "F3 Find &Item"},
                                                                {&cmdSearch, "Enter Search"},
                                                                {&cmdPrint, "F9 Print"},
                                                                {&cmdExit, "Esc Close"}};
    for (const auto &[b, caption] : captions) {
        *b = new QPushButton(caption, this);
        (*b)->setAutoDefault(false);
        (*b)->setMinimumHeight(34);
    }
    for (int i = 0; i < 2; ++i) {
        cmdFix[i] = new QPushButton(this);
        cmdFix[i]->setAutoDefault(false);
        cmdFix[i]->setMinimumHeight(34);
        cmdFix[i]->setVisible(mode == Mode::Check);
        connect(cmdFix[i], &QPushButton::clicked, this, [this, i] { cmdFix_Click(i); });
    }
    cmdFix[0]->setObjectName("cmdFix");
    cmdFix[1]->setObjectName("cmdFixAll");
    mnuFix = new QMenu(this);
    mnuFix->setObjectName("mnuFix");
    for (int i = 0; i < 2; ++i) mnuFix->addAction(QString(), this, [this, i] { cmdFix_Click(i); });
    if (mode == Mode::Check) {
        fgrdItems->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(fgrdItems, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
            const int row = fgrdItems->rowAt(at.y());
            if (row >= 0)
                gpGrid_selectRow(fgrdItems, row + fgrdItems->FixedRows());
            if (mpSelected() && setcheck::fixFor(*mpSelected()) != setcheck::Fix::None)
                mnuFix->popup(fgrdItems->viewport()->mapToGlobal(at));
        });
        connect(fgrdItems, &QTableWidget::itemSelectionChanged, this, [this] { mpFix_show(); });
    }
    cmdReplace = new QPushButton("&Replace Item...", this);
    cmdUndoReplace = new QPushButton("&Undo Replace", this);
    for (QPushButton *b : {cmdReplace, cmdUndoReplace}) {
        b->setAutoDefault(false);
        b->setMinimumHeight(34);
        b->setVisible(mode == Mode::Item);
    }
    cmdReplace->setObjectName("cmdReplace");
    cmdUndoReplace->setObjectName("cmdUndoReplace");
    cmdUndoReplace->setEnabled(false);
    connect(cmdReplace, &QPushButton::clicked, this, [this] { cmdReplace_Click(); });
    connect(cmdUndoReplace, &QPushButton::clicked, this, [this] { cmdUndoReplace_Click(); });
    lblStatus = new QLabel(this);
    lblStatus->setObjectName("lblStatus");
    lblStatus->setWordWrap(true);

    auto *itemRow = new QHBoxLayout;
    itemRow->addWidget(lblItem);
    itemRow->addWidget(txtItem, 1);
    itemRow->addWidget(cmdFindItem);
    itemRow->addWidget(cmdSearch);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(lblStatus, 1);
    buttons->addWidget(cmdFix[0]);
    buttons->addWidget(cmdFix[1]);
    buttons->addWidget(cmdReplace);
    buttons->addWidget(cmdUndoReplace);
    buttons->addWidget(cmdPrint);
    buttons->addWidget(cmdExit);
    auto *grid = new QGridLayout(this);
    grid->addLayout(itemRow, 0, 0);
    grid->addWidget(fgrdItems, 1, 0);
    grid->addLayout(buttons, 2, 0);
    for (QWidget *w : std::initializer_list<QWidget *>{lblItem, txtItem, cmdFindItem, cmdSearch})
        w->setVisible(mode == Mode::Item);
    resize(980, 560);

    connect(cmdFindItem, &QPushButton::clicked, this, [this] { cmdFindItem_Click(); });
    connect(cmdSearch, &QPushButton::clicked, this, [this] { cmdSearch_Click(); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] {
        if (PrintList)
            PrintList(*this);
    });
    connect(cmdExit, &QPushButton::clicked, this, &QDialog::reject);
    connect(fgrdItems, &QTableWidget::cellDoubleClicked, this, [this] { fgrdItems_DblClick(); });
}

void frmSetCheck::Form_Load()
{
    gpForm_initControls(this);
    cmdPrint->setVisible(static_cast<bool>(PrintList));
    mpList_format();
    switch (mMode) {
    case Mode::Check:
        Heading = "Check Sets";
        break;
    case Mode::Set:
        Heading = "Where Used: keys that open set " + SetNumber;
        break;
    case Mode::Item:
        Heading = "Where Used: keys that sell an item";
        lblStatus->setText("Type an S/L or an Item ID and press Enter, or press F3 to find "
                           "the item in the inventory.");
        break;
    }
    setWindowTitle(Heading);
    if (mMode != Mode::Item)
        mpList_fill();
    else
        txtItem->setFocus();
}

void frmSetCheck::mpList_format()
{
    static const int widths[] = {600, 2200, 800, 600, 6000};
    static const char *const headings[] = {"Set", "Title", "Column", "Key", "Found"};
    fgrdItems->Clear();
    fgrdItems->setFixedRows(1);
    fgrdItems->setCols(5);
    fgrdItems->setRows(1);
    for (int c = 0; c < 5; ++c) {
        fgrdItems->setTextMatrix(0, c, headings[c]);
        fgrdItems->setColWidth(c, widths[c]);
    }
    for (int c : {0, 2, 3}) fgrdItems->setColAlignment(c, Qt::AlignCenter);
    fgrdItems->horizontalHeader()->setStretchLastSection(true);
}

setcheck::Result frmSetCheck::mpRun()
{
    QProgressDialog progress(Heading + "...", "Cancel", 0, 1, this);
    progress.setWindowTitle(Heading);
    // The list may not show yet, so the whole program waits, not only the list.
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(300);
    Progress = &progress;
    const auto step = [&progress](int done, int total) {
        progress.setMaximum(total);
        progress.setValue(done);
        QCoreApplication::processEvents(); // also before the display shows
        return !progress.wasCanceled();
    };
    setcheck::Result result;
    if (mMode == Mode::Check) {
        const DbAction action; // a database fault is told once for the whole check
        result = setcheck::checkSets(itemStates, step, gfLayout_drawing());
    } else if (mMode == Mode::Set) {
        result = setcheck::whereSetUsed(SetNumber, step);
    } else {
        result = setcheck::whereItemUsed(mItem, step);
    }
    Progress = nullptr;
    return result;
}

bool frmSetCheck::mpList_fill()
{
    const setcheck::Result result = mpRun();
    mpList_show(result);
    return !result.canceled;
}

void frmSetCheck::mpList_show(const setcheck::Result &result)
{
    fgrdItems->setUpdatesEnabled(false);
    mpList_format();
    Findings = result.findings;
    QList<QStringList> rows;
    for (const Finding &f : Findings)
        rows << QStringList{f.number, f.title, number(f.group), number(f.key), f.text};
    fgrdItems->AddItems(rows);
    fgrdItems->setUpdatesEnabled(true);
    if (!rows.isEmpty())
        gpGrid_selectRow(fgrdItems, 1);
    lblStatus->setText(mpStatus(result));
    mpFix_show();
}

const Finding *frmSetCheck::mpSelected() const
{
    const int row = fgrdItems->Row();
    return row >= 1 && row <= Findings.size() ? &Findings[row - 1] : nullptr;
}

QList<Finding> frmSetCheck::mpLike(const Finding &f) const
{
    QList<Finding> like;
    for (const Finding &other : Findings) {
        if (other.kind == f.kind && setcheck::fixFor(other) != setcheck::Fix::None)
            like << other;
    }
    return like;
}

void frmSetCheck::mpFix_show()
{
    const Finding *f = mpSelected();
    const setcheck::Fix fix = f ? setcheck::fixFor(*f) : setcheck::Fix::None;
    const bool can = fix != setcheck::Fix::None;
    const qsizetype like = can ? mpLike(*f).size() : 0;
    const QString captions[] = {can ? "&Fix: " + setcheck::fixCaption(fix) : QString("&Fix"),
                                like > 0 ? QString("Fix &All %1 Like It").arg(like)
                                         : QString("Fix &All Like It")};
    for (int i = 0; i < 2; ++i) {
        cmdFix[i]->setText(captions[i]);
        cmdFix[i]->setMinimumWidth(cmdFix[i]->sizeHint().width());
        cmdFix[i]->setEnabled(can);
        mnuFix->actions()[i]->setText(captions[i]);
    }
}

bool frmSetCheck::mpEditKey(const Finding &f)
{
    HotKeySet groups;
    hotKeySetClear(groups);
    hotKeySetParse(textfile::fromCp1252(f.bytes), groups);
    frmHotKey_Define dialog(this);
    dialog.LoadKey(hotKeySetNumber(f.fileName), groups[f.group], f.key);
    platform::showModal(dialog);
    if (dialog.Canceled)
        return false;
    setcheck::changeSet(f, [&](HotKeySet &set) { dialog.StoreKey(set[f.group].Buttons[f.key]); });
    return true;
}

void frmSetCheck::cmdFix_Click(int Index)
{
    const Finding *selected = mpSelected();
    if (!selected || setcheck::fixFor(*selected) == setcheck::Fix::None)
        return;
    const setcheck::Fix fix = setcheck::fixFor(*selected);
    const QList<Finding> chosen = Index == 0 ? QList<Finding>{*selected} : mpLike(*selected);
    if (chosen.size() > 1) {
        QSet<QString> sets;
        for (const Finding &f : chosen) sets << f.fileName;
        const QString what =
            fix == setcheck::Fix::EditKey
                ? QString("Open the key dialog on each of the %1 keys in turn?").arg(chosen.size())
                : setcheck::fixCaption(fix) + " on " + counted(chosen.size(), "key") + " in " +
                      counted(sets.size(), "set") + "?";
        if (platform::MsgBox(what + "\r\rEach set is kept in Versions before it is saved.",
                             platform::vbYesNo + platform::vbQuestion,
                             "Fix All") != platform::vbYes)
            return;
    }
    if (fix == setcheck::Fix::EditKey) {
        for (const Finding &f : chosen) {
            if (!mpEditKey(f))
                break;
        }
    } else {
        setcheck::applyFixes(chosen);
    }
    const int row = fgrdItems->Row();
    mpList_fill();
    if (fgrdItems->Rows() > 1)
        gpGrid_selectRow(fgrdItems, std::min(row, fgrdItems->Rows() - 1));
}

QString frmSetCheck::mpStatus(const setcheck::Result &result) const
{
    const QString sets = counted(result.sets, "set");
    if (result.canceled)
        return "Canceled after " + sets + ": the list shows only what was found in them.";
    int faults = 0;
    QSet<QString> faultySets;
    bool keyFiles = false;
    for (const Finding &f : Findings) {
        if (f.information())
            continue;
        ++faults;
        keyFiles |= f.kind == setcheck::Kind::KeyFile;
        if (!f.fileName.isEmpty() && f.kind != setcheck::Kind::KeyFile)
            faultySets << f.fileName;
    }
    const int notes = static_cast<int>(Findings.size()) - faults;
    if (mMode == Mode::Check) {
        if (Findings.isEmpty())
            return "Nothing wrong found in " + sets + ".";
        return counted(faults, "fault") + " found in " + QString::number(faultySets.size()) +
               " of " + sets + (keyFiles ? " and in the special or coupon keys" : "") +
               (notes ? QString(", and %1 for information").arg(notes) : QString()) +
               ". Double click a line to open its set.";
    }
    const QString verb = mMode == Mode::Set ? "open" : "sell";
    const QString target = mMode == Mode::Set ? "set " + SetNumber : mItemText;
    if (Findings.isEmpty())
        return "No key of the " + sets + " " + verb + "s " + target + ".";
    return counted(Findings.size(), "key") + " of the " + sets + " " + verb +
           (Findings.size() == 1 ? "s " : " ") + target + ".";
}

// The item's S/L and Item ID as the inventory pairs them, so keys that sell it
// either way are found; an item the inventory lacks is looked for as typed.
void frmSetCheck::mpResolveItem(const QString &typed)
{
    mItem = {typed, typed};
    mItemText = "\"" + typed + "\"";
    const DbAction action;
    const QStringList sls = setcheck::slForms(typed);
    const auto bySL = [&sls] {
        for (const QString &sl : sls) {
            if (gfbInventory_ByHotKey(sl, "No"))
                return true;
        }
        return false;
    };
    if (bySL() || gfbInventory_ByHotKey(typed, "Yes")) {
        mItem.sl = gfsSL_toDisplay(gInventoryRecord.text("SL"));
        mItem.itemId = conv::Trim(gInventoryRecord.text("ItemID"));
        mItemText = "S/L " + conv::Trim(mItem.sl) + " or Item ID " + mItem.itemId + " (" +
                    conv::Trim(gInventoryRecord.text("Description")) + ")";
    }
    Heading = "Where Used: keys that sell " + mItemText;
}

void frmSetCheck::cmdSearch_Click()
{
    const QString typed = conv::Trim(txtItem->text());
    if (typed.isEmpty()) {
        platform::MsgBox("Type the S/L or the Item ID of the item, or press F3 to find it.",
                         platform::vbExclamation);
        txtItem->setFocus();
        return;
    }
    mpResolveItem(typed);
    setWindowTitle(Heading);
    mpList_fill();
}

void frmSetCheck::cmdFindItem_Click()
{
    const QString code = gfsInventory_find("");
    if (code.isEmpty())
        return;
    txtItem->setText(conv::Trim(gfsSL_toDisplay(code)));
    cmdSearch_Click();
}

void frmSetCheck::cmdReplace_Click()
{
    if (Findings.isEmpty()) {
        platform::MsgBox("No key sells the item looked for, so there is nothing to replace. Look "
                         "for the item first.",
                         platform::vbExclamation);
        return;
    }
    const QString code = gfsInventory_find("");
    if (code.isEmpty())
        return;
    frmReplaceItem preview(this);
    preview.Keys = Findings;
    preview.FromText = mItemText;
    preview.To = {conv::Trim(gfsSL_toDisplay(code)), "No", QString()};
    preview.ToText = "S/L " + preview.To.item;
    {
        const DbAction action;
        if (gfbInventory_ByHotKey(preview.To.item, "No")) {
            // The label a pick puts on a key in the key dialog.
            preview.Description = conv::Trim(gInventoryRecord.text("Description")).left(15);
            preview.ToText += " (" + conv::Trim(gInventoryRecord.text("Description")) + ")";
        }
    }
    preview.Form_Load();
    platform::showModal(preview);
    if (preview.Canceled)
        return;
    const replace::Outcome done = replace::apply(Findings, preview.To);
    if (!done.written.isEmpty())
        LastReplace = done.written;
    cmdUndoReplace->setEnabled(!LastReplace.isEmpty());
    mpList_fill();
    lblStatus->setText(QString("Replaced on %1 in %2; Undo Replace puts them back. ")
                           .arg(counted(done.keys, "key"), counted(done.written.size(), "set")) +
                       lblStatus->text());
    if (!done.problems.isEmpty())
        platform::MsgBox("These sets were not changed:\r\r" + done.problems.join("\r"),
                         platform::vbExclamation);
}

void frmSetCheck::cmdUndoReplace_Click()
{
    const QStringList changed = replace::changedSince(LastReplace);
    if (!changed.isEmpty()) {
        platform::MsgBox("Undo Replace was refused: " + changed.join(", ") +
                             (changed.size() == 1 ? " was" : " were") +
                             " changed since the replace (at another station?), so nothing was "
                             "put back.\r\rVersions holds every set as it was before the replace.",
                         platform::vbExclamation);
        return;
    }
    QStringList problems;
    const qsizetype sets = LastReplace.size();
    if (!replace::undo(LastReplace, &problems)) {
        platform::MsgBox("Undo Replace could not put back every set:\r\r" + problems.join("\r"),
                         platform::vbExclamation);
    }
    LastReplace.clear();
    cmdUndoReplace->setEnabled(false);
    mpList_fill();
    lblStatus->setText("Put back " + counted(sets, "set") + " as they were before the replace. " +
                       lblStatus->text());
}

void frmSetCheck::fgrdItems_DblClick()
{
    const int row = fgrdItems->Row();
    if (row < 1 || row > Findings.size() || !EditSet)
        return;
    const Finding f = Findings[row - 1];
    const QString setNumber = hotKeySetNumber(f.fileName);
    if (setNumber.isEmpty()) {
        if (f.kind == setcheck::Kind::KeyFile)
            platform::MsgBox("Change the keys of " + f.fileName +
                                 " with the Special Keys or Coupons button of the set list.",
                             platform::vbInformation);
        else if (!f.fileName.isEmpty())
            platform::MsgBox(f.fileName +
                                 " is not a hot key set, so it cannot be opened in the editor. "
                                 "Rename or delete it in the data folder.",
                             platform::vbExclamation);
        return;
    }
    EditSet(this, setNumber, f.fileName);
    mpList_fill();
    if (row < fgrdItems->Rows())
        gpGrid_selectRow(fgrdItems, row);
}

void frmSetCheck::Form_KeyDown(int &KeyCode, int)
{
    switch (KeyCode) {
    case platform::vbKeyEscape:
        KeyCode = 0;
        cmdExit->click();
        break;
    case platform::vbKeyF9:
        KeyCode = 0;
        if (cmdPrint->isVisible())
            cmdPrint->click();
        break;
    case platform::vbKeyF3:
        if (mMode == Mode::Item) {
            KeyCode = 0;
            cmdFindItem->click();
        }
        break;
    case platform::vbKeyReturn:
        if (mMode == Mode::Item) {
            KeyCode = 0;
            cmdSearch->click();
        }
        break;
    default:
        break;
    }
}
