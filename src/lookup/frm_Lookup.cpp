#include "lookup/frm_Lookup.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Help_Ops.h"
#include "common/ui/sm_Mouse.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/sm_DataGrid.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Modal.h"
#include "platform/ui/Twips.h"
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
        for (int i = gLookup.giSelectColumn; i < gLookup.giGridCols; ++i) {
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
    gLookup.giGridRows = 14;
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
    QVector<qint32> &edges = gLookup.gColumnEdges;
    edges.resize(gLookup.giGridCols);
    for (int c = 0; c < gLookup.giGridCols; ++c)
        edges[c] = (c ? edges[c - 1] : 0) + fgrdItems->ColWidth(c);
    const double height = platform::pixelsToTwips(fgrdItems->height());
    const qint16 rows =
        static_cast<qint16>(std::max(3.0, std::nearbyint((height - 600) / 600 + 1)));
    gLookup.giGridRows = rows;
    fgrdItems->setRows(rows + 1);
    for (int r = 0; r < rows; ++r) fgrdItems->setRowHeight(r, platform::twipsToPixels(600));
    mbFirstSort = true;
    if (!gfbGrid_load(fgrdItems)) {
        mbLoaded = false;
        closeLookup();
        return;
    }
    gfbSortColumn_select(giInventorySearch + gLookup.giSelectColumn);
    gpGrid_show(fgrdItems, gLookup.highlight(1));
    focusSearchBox();
    mbFormReady = true;
}

void frm_Lookup::mpColumns_fit()
{
    qint64 total = 90;
    for (int c = 0; c < gLookup.giGridCols; ++c) total += gLookup.gLookupColumns[c].lWidth;
    // The width the grid is given, less its frame; the viewport follows it only later.
    const int width =
        platform::pixelsToTwips(fgrdItems->maximumWidth() - 2 * fgrdItems->frameWidth());
    for (int c = 0; c < gLookup.giGridCols; ++c)
        fgrdItems->setColWidth(c, static_cast<int>(std::lround(
                                      double(gLookup.gLookupColumns[c].lWidth) * width / total)));
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
    gLookup.gbTableBusy = false;
    mbEnterDown = false;
    gLookup.gbKeyEdit = false;
    cmdAction[0]->setText("F10 Accept");
    for (int i = 1; i < 5; ++i) cmdAction[i]->hide();
    QFont bold = fgrdItems->horizontalHeader()->font();
    bold.setBold(true);
    fgrdItems->horizontalHeader()->setFont(bold);
    gpMouse_default();
}

void frm_Lookup::showSort(const LookupPage &page)
{
    if (!page.sortCaption.isEmpty())
        lblPad->setText(page.sortCaption);
    gpLookup_tell(page);
    setWindowTitle("Find Inventory Item");
    cmdExit->setText("Esc Cancel");
    cmdAction[3]->hide();
}

void frm_Lookup::focusSearchBox()
{
    if (txtEditValue->isVisible() && txtEditValue->isEnabled())
        txtEditValue->setFocus();
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
    gLookup.gbUpcSort = false;
    gLookup.gbKeyEdit = false;
    if (QTableWidgetItem *h = fgrdItems->horizontalHeaderItem(iColumn)) {
        h->setForeground(Qt::white);
        h->setBackground(palette().highlight());
    }
    showSort(gLookup.sortBy(iColumn));
    if (gLookup.giScanField >= 0) {
        cmdSearch->show();
        cmdStop->show();
    } else if (!gLookup.gbWildcard) {
        mpSearchButtons_hide();
    }
    const bool upc = gLookup.gbUpcSort;
    cmdEdit_Click();
    gLookup.gbUpcSort = upc;
    // A text that differs from the search value makes the change event reload
    // the list under the new key.
    if (upc)
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
    for (int i = gLookup.giSelectColumn; i < gLookup.giGridCols; ++i) {
        if (i == column + gLookup.giSelectColumn)
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
            gLookup.pick(fgrdItems->Row());
            KeyCode = 0;
            gpGrid_scroll(fgrdItems, direction, this);
            return;
        }
        case vbKeyDelete:
        case vbKeyBack:
            gLookup.gbKeyEdit = true;
            break;
        default:
            break;
        }
    }
    focusSearchBox();
    if (KeyCode != vbKeyReturn || ckWildcard->isChecked())
        return;
    gLookup.gbKeyEdit = false;
    if (gLookup.gbLookupFind && gLookup.giSelectColumn != 0)
        return;
    if (msTyped != txtEditValue->text() && conv::AboveBlank(msTyped)) {
        gLookup.gbTableBusy = false;
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
    } else if (gLookup.gbKeyEdit) {
        msTyped.clear();
    } else {
        msTyped += QChar(KeyAscii);
    }
}

void frm_Lookup::txtEditValue_Change()
{
    const DbAction action;
    const QString text = txtEditValue->text();
    if (text != gLookup.gsSearchValue && !gLookup.gbWildcard && gLookup.giScanField < 0)
        gpMouse_wait();
    const LookupPage page = gLookup.type(text);
    gpGrid_show(fgrdItems, page);
    if (page.askWildcard) {
        ckWildcard->setChecked(true);
        QCoreApplication::processEvents();
    }
    gpMouse_default();
    if (isVisible() && isEnabled())
        focusSearchBox();
}

void frm_Lookup::ckWildcard_Click()
{
    const bool on = ckWildcard->isChecked();
    gLookup.gbWildcard = on;
    cmdSearch->setVisible(on || gLookup.giScanField >= 0);
    cmdStop->setVisible(on || gLookup.giScanField >= 0);
    ckWildcard->setFocusPolicy(on ? Qt::NoFocus : Qt::TabFocus);
    gLookup.gbStopSearch = false;
    focusSearchBox();
}

void frm_Lookup::cmdSearch_Click()
{
    const DbAction action;
    if (txtEditValue->text().isEmpty())
        return;
    Lblwait->show();
    gLookup.gbStopSearch = false;
    cmdAction[0]->setEnabled(false);
    gpGrid_show(fgrdItems, gLookup.search(txtEditValue->text()));
    cmdAction[0]->setEnabled(true);
    mbEnterDown = false; // keys typed while it searched are gone; the next ones count
    if (isVisible() && isEnabled())
        focusSearchBox();
}

void frm_Lookup::cmdStop_Click()
{
    gLookup.gbStopSearch = true;
    ckWildcard->setFocusPolicy(Qt::TabFocus);
}

void frm_Lookup::cmdEdit_Click()
{
    const DbAction action;
    ckWildcard->setChecked(false);
    const bool hadValue = !gLookup.gsSearchValue.isEmpty() || !txtEditValue->text().isEmpty();
    txtEditValue->blockSignals(true);
    txtEditValue->clear();
    txtEditValue->blockSignals(false);
    msTyped.clear();
    gLookup.gbKeyEdit = false;
    mbEnterDown = false;
    gpGrid_show(fgrdItems, gLookup.clear(hadValue));
    Lblwait->hide();
}

void frm_Lookup::cmdAction_Click(int Index)
{
    if (Index != 0)
        return;
    if (gLookup.gbWildcard || gLookup.giScanField > -1)
        gLookup.gbStopSearch = true;
    if (fgrdItems->Row() < 1)
        fgrdItems->setRow(1);
    gLookup.accept(fgrdItems->Row());
    gLookup.gbLookupClosing = true;
    closeLookup();
    gLookup.gbLookupClosing = false;
    mbEnterDown = false;
}

void frm_Lookup::cmdExit_Click()
{
    gLookup.gbLoadAbort = true;
    gLookup.gsLookupCode.clear();
    closeLookup();
    gLookup.giSavedRow = 0;
    gLookup.gbLoadAbort = false;
}

bool frm_Lookup::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == fgrdItems->viewport() && event->type() == QEvent::MouseButtonRelease) {
        gLookup.pick(fgrdItems->Row());
        msTyped.clear();
        focusSearchBox();
    } else if (watched == txtEditValue && event->type() == QEvent::MouseButtonPress) {
        gLookup.gbStopSearch = false;
    }
    return KeyPreviewForm::eventFilter(watched, event);
}

bool gfbInventoryLookup_setup(frm_Lookup *form)
{
    const LookupPage page = gLookup.setup();
    if (form)
        form->showSort(page);
    else
        gpLookup_tell(page);
    return true;
}

QString gfsInventory_find(const QString &sCode)
{
    gLookup.gbLookupFind = true;
    gLookup.gsLookupCode = sCode;
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
    gLookup.gbLookupFind = false;
    const QString code = gLookup.gsLookupCode;
    return code > QString() ? code : QString();
}
