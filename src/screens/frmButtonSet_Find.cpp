#include "screens/frmButtonSet_Find.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "hotkeys/hkeyServices.h"
#include "platform/ui/KeyCodes.h"
#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

frmButtonSet_Find::frmButtonSet_Find(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Find Hot Keys Set");
    lstItems = new QListWidget(this);
    lstItems->setObjectName("lstItems");
    lstItems->setSortingEnabled(true);
    cmdOkCancel[0] = new QPushButton("F10 Accept", this);
    cmdOkCancel[1] = new QPushButton("Esc Cancel", this);
    auto *grid = new QGridLayout(this);
    grid->addWidget(lstItems, 0, 0, 1, 2);
    for (int i = 0; i < 2; ++i) {
        cmdOkCancel[i]->setObjectName("cmdOkCancel");
        cmdOkCancel[i]->setAutoDefault(false);
        grid->addWidget(cmdOkCancel[i], 1, i);
        connect(cmdOkCancel[i], &QPushButton::clicked, this, [this, i] { cmdOkCancel_Click(i); });
    }
    connect(lstItems, &QListWidget::itemDoubleClicked, this, [this] {
        if (cmdOkCancel[0]->isEnabled())
            cmdOkCancel[0]->click();
    });
    resize(360, 420);
}

void frmButtonSet_Find::Form_Load()
{
    gpForm_initControls(this);
    Canceled = true;
    AnySetListed = false;
    const double current = conv::Val(ButtonSet_Current);
    for (const QString &name : hotKeySetFiles()) {
        const QString number = hotKeySetShownDigits(name);
        if (conv::Val(number) == current)
            continue;
        auto *line = new QListWidgetItem(gfsHotKeySet_label(number));
        line->setData(Qt::UserRole, static_cast<qint64>(conv::Val(number)));
        lstItems->addItem(line);
        AnySetListed = true;
    }
    if (AnySetListed)
        lstItems->setCurrentRow(0);
    cmdOkCancel[0]->setEnabled(AnySetListed);
}

void frmButtonSet_Find::cmdOkCancel_Click(int Index)
{
    if (Index == 0) {
        Canceled = false;
        ButtonSet = lstItems->currentItem()->data(Qt::UserRole).toString();
        ButtonSetLabel = lstItems->currentItem()->text();
        accept();
    } else {
        Canceled = true;
        ButtonSet.clear();
        reject();
    }
}

void frmButtonSet_Find::Form_KeyDown(int &KeyCode, int)
{
    mpStandardKeys(
        KeyCode,
        [this] {
            if (cmdOkCancel[0]->isEnabled())
                cmdOkCancel_Click(0);
        },
        [this] { cmdOkCancel_Click(1); });
}
