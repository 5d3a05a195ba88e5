#include "screens/frmReplaceItem.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace {

QString keyText(const HotKeyButton &b)
{
    return "\"" + b.Caption + "\", " + (b.IdSelect == "Yes" ? "Item ID " : "S/L ") + b.Item;
}

} // namespace

frmReplaceItem::frmReplaceItem(QWidget *parent) : KeyPreviewForm(parent)
{
    lblWhat = new QLabel(this);
    lblWhat->setWordWrap(true);
    chkLabel = new QCheckBox(this);
    chkLabel->setObjectName("chkLabel");
    fgrdKeys = new platform::MSFlexGrid(this);
    fgrdKeys->setObjectName("fgrdKeys");
    fgrdKeys->setSelectionBehavior(QAbstractItemView::SelectRows);
    cmdAccept = new QPushButton("F10 &Accept", this);
    cmdCancel = new QPushButton("Esc Cancel", this);
    for (QPushButton *b : {cmdAccept, cmdCancel}) {
        b->setAutoDefault(false);
        b->setMinimumHeight(34);
    }
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdAccept);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblWhat);
    layout->addWidget(chkLabel);
    layout->addWidget(fgrdKeys, 1);
    layout->addLayout(buttons);
    resize(980, 520);
    connect(chkLabel, &QCheckBox::toggled, this, [this] { mpPreview_fill(); });
    connect(cmdAccept, &QPushButton::clicked, this, [this] {
        Canceled = false;
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmReplaceItem::Form_Load()
{
    gpForm_initControls(this);
    setWindowTitle("Replace Item");
    chkLabel->setText("Change the labels to \"" + Description + "\" too");
    chkLabel->setEnabled(!Description.isEmpty());
    mpPreview_fill();
}

void frmReplaceItem::mpPreview_fill()
{
    To.label = chkLabel->isChecked() ? Description : QString();
    static const int widths[] = {600, 2000, 800, 600, 3200, 3200};
    static const char *const headings[] = {"Set", "Title", "Column", "Key", "Now", "After"};
    fgrdKeys->Clear();
    fgrdKeys->setFixedRows(1);
    fgrdKeys->setCols(6);
    fgrdKeys->setRows(1);
    for (int c = 0; c < 6; ++c) {
        fgrdKeys->setTextMatrix(0, c, headings[c]);
        fgrdKeys->setColWidth(c, widths[c]);
    }
    fgrdKeys->horizontalHeader()->setStretchLastSection(true);
    QList<QStringList> rows;
    QSet<QString> sets;
    for (const setcheck::Finding &f : Keys) {
        rows << QStringList{f.number,
                            f.title,
                            QString::number(f.group),
                            QString::number(f.key),
                            keyText(replace::keyOf(f)),
                            keyText(replace::replaced(f, To))};
        sets << f.fileName;
    }
    fgrdKeys->AddItems(rows);
    lblWhat->setText(
        QString("%1 in %2 will sell %3 instead of %4. Each set is kept in Versions "
                "first, and Undo Replace puts them all back.")
            .arg(Keys.size() == 1 ? QString("1 key") : QString("%1 keys").arg(Keys.size()),
                 sets.size() == 1 ? QString("1 set") : QString("%1 sets").arg(sets.size()), ToText,
                 FromText));
}

void frmReplaceItem::Form_KeyDown(int &KeyCode, int)
{
    if (KeyCode == platform::vbKeyEscape) {
        KeyCode = 0;
        cmdCancel->click();
    } else if (KeyCode == platform::vbKeyF10) {
        KeyCode = 0;
        cmdAccept->click();
    }
}
