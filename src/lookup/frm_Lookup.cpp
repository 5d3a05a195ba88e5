#include "lookup/frm_Lookup.h"
#include "common/Conversions.h"
#include "common/sm_Help_Ops.h"
#include "common/sm_Mouse.h"
#include "common/sm_Text.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/sm_DataGrid.h"
#include "platform/KeyCodes.h"
#include "platform/MSFlexGrid.h"
#include "platform/Modal.h"
#include "platform/Twips.h"
#include "settings/clsDataPath.h"
#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

namespace {

QPushButton *button(const QString &caption, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    b->setFocusPolicy(Qt::NoFocus);
    return b;
}

} // namespace

frm_Lookup::frm_Lookup(QWidget *parent) : KeyPreviewForm(parent)
{
    fgrdItems = new platform::MSFlexGrid(this);
    fgrdItems->setObjectName("fgrdItems");
    fgrdItems->setSelectionBehavior(QAbstractItemView::SelectRows);
    fgrdItems->setSelectionMode(QAbstractItemView::SingleSelection);
    fgrdItems->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fgrdItems->horizontalHeader()->setSectionsClickable(true);
    fgrdItems->viewport()->installEventFilter(this);
    fgrdItems->installEventFilter(this);
    txtEditValue = new QLineEdit(this);
    txtEditValue->setObjectName("txtEditValue");
    txtEditValue->installEventFilter(this);
    Label1 = new QLabel("Search Criteria", this);
    fraPad = new QFrame(this);
    fraPad->setObjectName("fraPad");
    lblPad = new QLabel(fraPad);
    lblPad->setObjectName("lblPad");
    (new QHBoxLayout(fraPad))->addWidget(lblPad);
    ckWildcard = new QCheckBox("F3 Use Wildcard Search", this);
    ckWildcard->setObjectName("ckWildcard");
    cmdSearch = button("Search Now", "cmdSearch", this);
    cmdStop = button("Stop Search", "cmdStop", this);
    cmdEdit[0] = button("Clear", "cmdEdit", this);
    const char *actions[] = {"View Details", "Custom List", "Select Store", "Verify Balance", ""};
    for (int i = 0; i < 5; ++i) cmdAction[i] = button(actions[i], "cmdAction", this);
    cmdExit = button("Exit", "cmdExit", this);
    cmdHelp = button("Help", "cmdHelp", this);
    cmdPage[0] = button("Page Up", "cmdPage", this);
    cmdPage[1] = button("Page Down", "cmdPage", this);
    SpnGrid[0] = button("▲", "SpnGrid", this);
    SpnGrid[1] = button("▼", "SpnGrid", this);
    Lblwait = new QLabel(this);
    Lblwait->setObjectName("Lblwait");
    Lblwait->setFixedSize(16, 16);
    Lblwait->setStyleSheet("background: #c00000;");
    Lblwait->hide();
    LblTraining = new QLabel("Training", this);
    LblTraining->setStyleSheet("color: #c00000; font-weight: bold;");

    auto *search = new QHBoxLayout;
    search->addWidget(Label1);
    search->addWidget(txtEditValue, 1);
    search->addWidget(fraPad);
    search->addWidget(ckWildcard);
    search->addWidget(cmdSearch);
    search->addWidget(cmdStop);
    search->addWidget(Lblwait);
    search->addWidget(LblTraining);
    auto *list = new QHBoxLayout;
    list->addWidget(fgrdItems, 1);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdPage[0], SpnGrid[0], SpnGrid[1], cmdPage[1], cmdEdit[0]})
        buttons->addWidget(b);
    buttons->addStretch();
    for (QPushButton *b : cmdAction) buttons->addWidget(b);
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdExit);
    auto *outer = new QVBoxLayout(this);
    outer->addLayout(search);
    outer->addLayout(list, 1);
    outer->addLayout(buttons);
    // The grid's width follows the form's, never the other way: a minimum taken from it
    // would have Qt resize the form on a passing size and the window manager drop the maximise.
    outer->setSizeConstraint(QLayout::SetNoConstraint);
    setMinimumHeight(platform::twipsToPixels(1000));

    connect(txtEditValue, &QLineEdit::textChanged, this, [this] { txtEditValue_Change(); });
    connect(ckWildcard, &QCheckBox::toggled, this, [this] { ckWildcard_Click(); });
    connect(cmdSearch, &QPushButton::clicked, this, [this] { cmdSearch_Click(); });
    connect(cmdStop, &QPushButton::clicked, this, [this] { cmdStop_Click(); });
    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { cmdEdit_Click(); });
    connect(cmdAction[0], &QPushButton::clicked, this, [this] { cmdAction_Click(0); });
    connect(cmdExit, &QPushButton::clicked, this, [this] { cmdExit_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [] { gpHelp_open("look_up_items.htm"); });
    connect(cmdPage[0], &QPushButton::clicked, this,
            [this] { gpGrid_scroll(fgrdItems, dirPageUp, this); });
    connect(cmdPage[1], &QPushButton::clicked, this,
            [this] { gpGrid_scroll(fgrdItems, dirPageDown, this); });
    connect(SpnGrid[0], &QPushButton::clicked, this,
            [this] { gpGrid_scroll(fgrdItems, dirLineUp, this); });
    connect(SpnGrid[1], &QPushButton::clicked, this,
            [this] { gpGrid_scroll(fgrdItems, dirLineDown, this); });
    connect(fgrdItems->horizontalHeader(), &QHeaderView::sectionPressed, this, [this](int c) {
        for (int i = giSelectColumn; i < giGridCols; ++i) {
            if (i == c)
                gfbSortColumn_select(i);
            else
                gpSortColumn_plain(i);
        }
        focusSearchBox();
    });
    connect(fgrdItems, &QTableWidget::cellDoubleClicked, this, [this](int row) {
        if (cmdAction[0]->isEnabled() && row + 1 > 0)
            cmdAction_Click(0);
    });
}

void frm_Lookup::Form_Load()
{
    const DbAction action;
    LblTraining->setVisible(gDataPath.TestPath() == "Y");
    mpSearchButtons_hide();
    giGridRows = 14;
    gpGrid_setup(fgrdItems);
    mbLoaded = true;
    QCoreApplication::processEvents();
    setWindowState(Qt::WindowMaximized);
    mpActivate();
    mpResize();
    focusSearchBox();
}

void frm_Lookup::resizeEvent(QResizeEvent *e)
{
    KeyPreviewForm::resizeEvent(e);
    if (mbLoaded)
        mpResize();
}

void frm_Lookup::mpResize()
{
    const DbAction action;
    gpForm_initControls(this);
    if (Lblwait->isVisible() || !mbLoaded || size() == mResizedTo)
        return; // no size change: Form_Load's own call and the window's event meet here
    mResizedTo = size();
    fgrdItems->setFixedWidth(std::max(200, width() - platform::twipsToPixels(400)));
    fgrdItems->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mpColumns_fit();
    gColumnEdges.resize(giGridCols);
    for (int c = 0; c < giGridCols; ++c)
        gColumnEdges[c] = (c ? gColumnEdges[c - 1] : 0) + fgrdItems->ColWidth(c);
    const double height = platform::pixelsToTwips(fgrdItems->height());
    giGridRows = static_cast<qint16>(std::max(3.0, std::nearbyint((height - 600) / 600 + 1)));
    fgrdItems->setRows(giGridRows + 1);
    for (int r = 0; r < giGridRows; ++r) fgrdItems->setRowHeight(r, platform::twipsToPixels(600));
    mbFirstSort = true;
    if (!gfbGrid_load(fgrdItems)) {
        mbLoaded = false;
        closeLookup();
        return;
    }
    gfbSortColumn_select(giInventorySearch + giSelectColumn);
    gpGrid_setCursor(1, fgrdItems);
    focusSearchBox();
    mbFormReady = true;
}

void frm_Lookup::mpColumns_fit()
{
    qint64 total = 90;
    for (int c = 0; c < giGridCols; ++c) total += gLookupColumns[c].lWidth;
    // The width the grid is given, less its frame; the viewport follows it only later.
    const int width =
        platform::pixelsToTwips(fgrdItems->maximumWidth() - 2 * fgrdItems->frameWidth());
    for (int c = 0; c < giGridCols; ++c)
        fgrdItems->setColWidth(
            c, static_cast<int>(std::lround(double(gLookupColumns[c].lWidth) * width / total)));
}

bool frm_Lookup::event(QEvent *e)
{
    if (e->type() == QEvent::WindowActivate)
        mpActivate();
    return KeyPreviewForm::event(e);
}

void frm_Lookup::mpActivate()
{
    QPalette yellow = fraPad->palette();
    yellow.setColor(QPalette::WindowText, Qt::yellow);
    fraPad->setPalette(yellow);
    fraPad->setAutoFillBackground(true);
    yellow.setColor(QPalette::Window, QColor(0, 0, 128));
    fraPad->setPalette(yellow);
    lblPad->setPalette(yellow);
    gbTableBusy = false;
    mbEnterDown = false;
    gbKeyEdit = false;
    cmdAction[0]->setText("F10 Accept");
    for (int i = 1; i < 5; ++i) cmdAction[i]->hide();
    QFont bold = fgrdItems->horizontalHeader()->font();
    bold.setBold(true);
    fgrdItems->horizontalHeader()->setFont(bold);
    gpMouse_default();
}

void frm_Lookup::setSortCaption(const QString &caption)
{
    lblPad->setText(caption);
}
void frm_Lookup::setExitCaption(const QString &caption)
{
    cmdExit->setText(caption);
}
void frm_Lookup::hideAction(int index)
{
    cmdAction[index]->hide();
}

void frm_Lookup::focusSearchBox()
{
    if (txtEditValue->isVisible() && txtEditValue->isEnabled())
        txtEditValue->setFocus();
}

void frm_Lookup::focusList()
{
    if (isVisible())
        fgrdItems->setEnabled(true);
    focusSearchBox(); // typing goes on in the search box
}

void frm_Lookup::closeLookup()
{
    reject();
}

void frm_Lookup::mpSearchButtons_hide()
{
    cmdSearch->hide();
    cmdStop->hide();
}

bool frm_Lookup::gfbSortColumn_select(int iColumn)
{
    const DbAction action;
    gbUpcSort = false;
    gbKeyEdit = false;
    if (QTableWidgetItem *h = fgrdItems->horizontalHeaderItem(iColumn)) {
        h->setForeground(Qt::white);
        h->setBackground(palette().highlight());
    }
    gpInventorySort_set(static_cast<qint16>(iColumn), this);
    if (giScanField >= 0) {
        cmdSearch->show();
        cmdStop->show();
    } else if (!gbWildcard) {
        mpSearchButtons_hide();
    }
    const bool upc = gbUpcSort;
    cmdEdit_Click();
    gbUpcSort = upc;
    // A text that differs from the search value makes the change event reload
    // the list under the new key.
    if (gbUpcSort)
        txtEditValue->setText("");
    else if (!mbFirstSort)
        txtEditValue->setText(" ");
    mbFirstSort = false;
    txtEditValue->setText("");
    return true;
}

void frm_Lookup::gpSortColumn_plain(int iColumn)
{
    if (QTableWidgetItem *h = fgrdItems->horizontalHeaderItem(iColumn)) {
        h->setForeground(Qt::black);
        h->setBackground(palette().button());
    }
}

void frm_Lookup::mpSortBy(int column)
{
    cmdEdit_Click();
    for (int i = giSelectColumn; i < giGridCols; ++i) {
        if (i == column + giSelectColumn)
            gfbSortColumn_select(i);
        else
            gpSortColumn_plain(i);
    }
}

void frm_Lookup::Form_KeyDown(int &KeyCode, int Shift)
{
    using namespace platform;
    const DbAction action;
    if (!mbFormReady || !isEnabled())
        return;
    if ((KeyCode >= 48 && KeyCode <= 57) || (KeyCode >= 96 && KeyCode <= 105))
        return;
    if (Shift == 0) {
        static const int sortKeys[][2] = {{vbKeyF4, colDescription}, {vbKeyF5, colSubDesc},
                                          {vbKeyF6, colSL},          {vbKeyF7, colItemID},
                                          {vbKeyF8, colDept},        {vbKeyF9, colDeptName}};
        for (const auto &[key, column] : sortKeys) {
            if (KeyCode == key) {
                KeyCode = 0;
                mpSortBy(column);
                return;
            }
        }
        switch (KeyCode) {
        case vbKeyF2:
            KeyCode = 0;
            cmdAction_Click(0);
            return;
        case vbKeyF3:
            KeyCode = 0;
            ckWildcard->setChecked(true);
            return;
        case vbKeyF10:
            KeyCode = 0;
            if (cmdStop->isVisible())
                cmdStop_Click();
            else
                cmdAction_Click(0);
            return;
        case vbKeyF11:
            KeyCode = 0;
            cmdSearch_Click();
            return;
        case vbKeyF12:
            cmdEdit_Click();
            break;
        case vbKeyPageUp:
        case vbKeyPageDown:
        case vbKeyUp:
        case vbKeyDown: {
            const int direction = KeyCode == vbKeyUp         ? dirLineUp
                                  : KeyCode == vbKeyPageUp   ? dirPageUp
                                  : KeyCode == vbKeyPageDown ? dirPageDown
                                                             : dirLineDown;
            giSavedRow = static_cast<qint16>(fgrdItems->Row());
            KeyCode = 0;
            gpGrid_scroll(fgrdItems, direction, this);
            return;
        }
        case vbKeyDelete:
        case vbKeyBack:
            gbKeyEdit = true;
            break;
        default:
            break;
        }
    }
    focusSearchBox();
    if (KeyCode != vbKeyReturn || ckWildcard->isChecked())
        return;
    gbKeyEdit = false;
    if (gbLookupFind && giSelectColumn != 0)
        return;
    if (msTyped != txtEditValue->text() && conv::AboveBlank(msTyped)) {
        gbTableBusy = false;
        txtEditValue->setText(msTyped);
        QCoreApplication::processEvents();
    }
    msTyped.clear();
    KeyCode = 0;
    cmdAction_Click(0);
}

void frm_Lookup::Form_KeyPress(int &KeyAscii)
{
    const DbAction action;
    if (!mbFormReady || !isEnabled())
        return;
    KeyAscii = QChar(KeyAscii).toUpper().unicode();
    if (KeyAscii == 27) {
        KeyAscii = 0;
        msTyped.clear();
        cmdExit_Click();
    } else if (KeyAscii == 13) {
        mbEnterDown = true;
        if (cmdSearch->isVisible()) { // Enter in the search box during a wildcard search
            KeyAscii = 0;
            cmdSearch_Click();
        }
    } else if (mbEnterDown) {
        KeyAscii = 0;
    } else if (gbKeyEdit) {
        msTyped.clear();
    } else {
        msTyped += QChar(KeyAscii);
    }
}

void frm_Lookup::txtEditValue_Change()
{
    const DbAction action;
    gbItemIdSearch = false;
    const QString text = txtEditValue->text();
    if (text != gsSearchValue) {
        if (giSortKey == 1) {
            gsSearchValue = gfsSL_toStored(gfsSL_normalize(text));
        } else if (giSortKey == 2 && !gbUpcSort) {
            gsSearchValue = gfsItemID_key(text, gbItemIdLeft);
            gbItemIdSearch = true;
        } else {
            gsSearchValue = text;
        }
        if (conv::Trim(gsSearchValue).isEmpty())
            gsSearchValue.clear();
        if (gbWildcard || giScanField > -1) {
            if (gsSortFieldName == "QtyOnHand" || gsSortFieldName.startsWith("Price")) {
                ckWildcard->setChecked(true);
                QCoreApplication::processEvents();
            }
        } else {
            gpMouse_wait();
            gfbGrid_search(fgrdItems, this);
        }
    }
    gpMouse_default();
    if (isVisible() && isEnabled())
        focusSearchBox();
}

void frm_Lookup::ckWildcard_Click()
{
    gbWildcard = ckWildcard->isChecked();
    cmdSearch->setVisible(gbWildcard || giScanField >= 0);
    cmdStop->setVisible(gbWildcard || giScanField >= 0);
    ckWildcard->setFocusPolicy(gbWildcard ? Qt::NoFocus : Qt::TabFocus);
    gbStopSearch = false;
    focusSearchBox();
}

void frm_Lookup::cmdSearch_Click()
{
    const DbAction action;
    if (txtEditValue->text().isEmpty())
        return;
    gsSearchValue = txtEditValue->text();
    Lblwait->show();
    gbStopSearch = false;
    cmdAction[0]->setEnabled(false);
    gfbGrid_search(fgrdItems, this);
    cmdAction[0]->setEnabled(true);
    mbEnterDown = false; // keys typed while it searched are gone; the next ones count
    if (isVisible() && isEnabled())
        focusSearchBox();
}

void frm_Lookup::cmdStop_Click()
{
    gbStopSearch = true;
    ckWildcard->setFocusPolicy(Qt::TabFocus);
}

void frm_Lookup::cmdEdit_Click()
{
    const DbAction action;
    ckWildcard->setChecked(false);
    const bool hadValue = !gsSearchValue.isEmpty() || !txtEditValue->text().isEmpty();
    txtEditValue->blockSignals(true);
    txtEditValue->clear();
    txtEditValue->blockSignals(false);
    msTyped.clear();
    gbKeyEdit = false;
    mbEnterDown = false;
    gfbGrid_reload(fgrdItems, this);
    // The empty value takes the list back to its first record; the bar code
    // order reads nothing before the first character unless a value is cleared.
    gsSearchValue.clear();
    if (!gbWildcard && giScanField < 0 && (!gbUpcSort || hadValue))
        gfbGrid_search(fgrdItems, this);
    Lblwait->hide();
}

void frm_Lookup::cmdAction_Click(int Index)
{
    if (Index != 0)
        return;
    if (gbWildcard || giScanField > -1)
        gbStopSearch = true;
    if (fgrdItems->Row() < 1)
        fgrdItems->setRow(1);
    gpInventoryAction(0, fgrdItems, this);
    mbEnterDown = false;
}

void frm_Lookup::cmdExit_Click()
{
    gbLoadAbort = true;
    gsLookupCode.clear();
    closeLookup();
    giSavedRow = 0;
    gbLoadAbort = false;
}

bool frm_Lookup::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == fgrdItems->viewport() && event->type() == QEvent::MouseButtonRelease) {
        giSavedRow = static_cast<qint16>(fgrdItems->Row());
        msTyped.clear();
        focusSearchBox();
    } else if (watched == txtEditValue && event->type() == QEvent::MouseButtonPress) {
        gbStopSearch = false;
    }
    return KeyPreviewForm::eventFilter(watched, event);
}

QString gfsInventory_find(const QString &sCode)
{
    gbLookupFind = true;
    gsLookupCode = sCode;
    {
        frm_Lookup form;
        bool ready = false;
        {
            // A database that cannot be read at the open is told once, and no empty list
            // is shown to read it again.
            const DbAction action;
            if (gfbInventoryLookup_setup(&form)) {
                QCoreApplication::processEvents();
                form.Form_Load();
                ready = !gfbDBSM_ActionFailed();
            }
        }
        if (ready)
            platform::showModal(form);
    }
    gbLookupFind = false;
    return gsLookupCode > QString() ? gsLookupCode : QString();
}
