// The set list's Check Sets and Where Used commands.
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Modal.h"
#include "print/sm_Print_FlexGrid.h"
#include "screens/frmSetCheck.h"
#include "shell/frmMain.h"
#include <QGridLayout>
#include <QMenu>
#include <QPushButton>

void frmMain::mpCheck_setup()
{
    cmdCheck = new QPushButton("F7 Check Sets", this);
    cmdWhereUsed = new QPushButton("F8 Where Used", this);
    for (QPushButton *b : {cmdCheck, cmdWhereUsed}) {
        b->setAutoDefault(false);
        b->setMinimumHeight(34);
    }
    cmdCheck->setObjectName("cmdCheck");
    cmdWhereUsed->setObjectName("cmdWhereUsed");
    auto *grid = static_cast<QGridLayout *>(layout());
    grid->addWidget(cmdCheck, 2, 1);
    grid->addWidget(cmdWhereUsed, 2, 2);

    mnuWhereUsed = new QMenu("Where Used", this);
    mnuWhereUsed->setObjectName("mnuWhereUsed");
    mnuWhereUsedType[0] = mnuWhereUsed->addAction("Keys That Sell an Item...");
    mnuWhereUsedType[1] = mnuWhereUsed->addAction("Keys That Open the Selected Set");
    mnuPrintLayout = mnuPrint->addAction("Layout");
    connect(mnuPrintLayout, &QAction::triggered, this, [this] { mpReport_layout(); });
    mnuSets = new QMenu(this);
    mnuSets->setObjectName("mnuSets");
    mnuSets->addAction("Check Sets", this, [this] { cmdCheck_Click(); });
    mnuSets->addMenu(mnuWhereUsed);

    for (int i = 0; i < 2; ++i)
        connect(mnuWhereUsedType[i], &QAction::triggered, this,
                [this, i] { mnuWhereUsedType_Click(i); });
    connect(cmdCheck, &QPushButton::clicked, this, [this] { cmdCheck_Click(); });
    connect(cmdWhereUsed, &QPushButton::clicked, this, [this] {
        mnuWhereUsed->popup(cmdWhereUsed->mapToGlobal(QPoint(0, cmdWhereUsed->height())));
    });
    fgrdItems->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(fgrdItems, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { mnuSets->popup(fgrdItems->viewport()->mapToGlobal(at)); });
}

bool frmMain::mpCheck_KeyDown(int KeyCode)
{
    if (KeyCode == platform::vbKeyF7)
        cmdCheck->click();
    else if (KeyCode == platform::vbKeyF8)
        cmdWhereUsed->click();
    else
        return false;
    return true;
}

void frmMain::mpCheck_show(int mode, const QString &setNumber)
{
    frmSetCheck list(static_cast<frmSetCheck::Mode>(mode), this);
    list.SetNumber = setNumber;
    // The list and the set list are made again when the editor closes, also after Cancel.
    list.EditSet = [this](QWidget *over, const QString &number, const QString &file) {
        mpEditSet(number, file, 6, over);
        mpSetList_fill();
    };
    list.PrintList = [](frmSetCheck &shown) {
        mpReport_headings(shown.Heading);
        gpPrint_FlexGrid(*shown.fgrdItems);
    };
    list.Form_Load();
    platform::showModal(list);
}

void frmMain::cmdCheck_Click()
{
    mpCheck_show(static_cast<int>(frmSetCheck::Mode::Check), QString());
}

void frmMain::mnuWhereUsedType_Click(int Index)
{
    const int row = fgrdItems->Row();
    if (Index == 0)
        mpCheck_show(static_cast<int>(frmSetCheck::Mode::Item), QString());
    else if (mpRowIsSet(row, "Nothing was looked for."))
        mpCheck_show(static_cast<int>(frmSetCheck::Mode::Set), fgrdItems->TextMatrix(row, 0));
}
