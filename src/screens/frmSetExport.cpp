#include "screens/frmSetExport.h"
#include "common/Conversions.h"
#include "common/sm_Messages.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage.h"
#include "hotkeys/hkeyServices.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"
#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>

frmSetExport::frmSetExport(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Export Sets");
    lstSets = new QListWidget(this);
    lstSets->setObjectName("lstSets");
    lstSets->setStyleSheet("QListWidget::item { padding: 4px; }");
    cmdAll = new QPushButton("Tick &All", this);
    cmdAll->setObjectName("cmdAll");
    cmdNone = new QPushButton("Tick &None", this);
    cmdNone->setObjectName("cmdNone");
    ckSpecial = new QCheckBox("The &special keys too (SPECIAL.BDF)", this);
    ckSpecial->setObjectName("ckSpecial");
    ckCoupon = new QCheckBox("The &coupon keys too (COUPON.BDF)", this);
    ckCoupon->setObjectName("ckCoupon");
    lblStatus = new QLabel("The package holds the ticked sets, the pictures their keys show "
                           "and, for every key that sells an item, its S/L, Item ID, UPC codes "
                           "and description, so another store can find its own item.",
                           this);
    lblStatus->setObjectName("lblStatus");
    lblStatus->setWordWrap(true);
    cmdOkCancel[0] = new QPushButton("F10 Export...", this);
    cmdOkCancel[1] = new QPushButton("Esc Cancel", this);
    for (QPushButton *b : {cmdAll, cmdNone, cmdOkCancel[0], cmdOkCancel[1]}) {
        b->setAutoDefault(false);
        b->setMinimumHeight(36);
    }
    for (int i = 0; i < 2; ++i) {
        cmdOkCancel[i]->setObjectName("cmdOkCancel");
        connect(cmdOkCancel[i], &QPushButton::clicked, this, [this, i] { cmdOkCancel_Click(i); });
    }
    connect(cmdAll, &QPushButton::clicked, this, [this] { mpSets_tick(true); });
    connect(cmdNone, &QPushButton::clicked, this, [this] { mpSets_tick(false); });

    auto *layout = new QGridLayout(this);
    layout->addWidget(new QLabel("Sets to export", this), 0, 0, 1, 2);
    layout->addWidget(lstSets, 1, 0, 1, 2);
    layout->addWidget(cmdAll, 2, 0);
    layout->addWidget(cmdNone, 2, 1);
    layout->addWidget(ckSpecial, 3, 0, 1, 2);
    layout->addWidget(ckCoupon, 4, 0, 1, 2);
    layout->addWidget(lblStatus, 5, 0, 1, 2);
    layout->addWidget(cmdOkCancel[0], 6, 0);
    layout->addWidget(cmdOkCancel[1], 6, 1);
    resize(520, 640);
}

void frmSetExport::Form_Load()
{
    gpForm_initControls(this);
    Canceled = true;
    lstSets->clear();
    const double start = conv::Val(SetNumber);
    for (const QString &name : hotKeySetFiles()) {
        const QString number = hotKeySetNumber(name);
        if (number.isEmpty())
            continue;
        auto *row = new QListWidgetItem(gfsHotKeySet_label(number), lstSets);
        row->setData(Qt::UserRole, number);
        row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
        row->setCheckState(conv::Val(number) == start ? Qt::Checked : Qt::Unchecked);
        if (conv::Val(number) == start)
            lstSets->setCurrentItem(row);
    }
    for (auto [box, name] : {std::pair{ckSpecial, "SPECIAL.BDF"}, {ckCoupon, "COUPON.BDF"}}) {
        box->setEnabled(QFile::exists(gDataPath.DataPath() + '/' + name));
        box->setChecked(false);
    }
}

void frmSetExport::mpSets_tick(bool all)
{
    for (int i = 0; i < lstSets->count(); ++i)
        lstSets->item(i)->setCheckState(all ? Qt::Checked : Qt::Unchecked);
}

QStringList frmSetExport::mpSets_chosen() const
{
    QStringList sets;
    for (int i = 0; i < lstSets->count(); ++i) {
        if (lstSets->item(i)->checkState() == Qt::Checked)
            sets << lstSets->item(i)->data(Qt::UserRole).toString();
    }
    return sets;
}

void frmSetExport::cmdOkCancel_Click(int Index)
{
    if (Index == 1) {
        reject();
        return;
    }
    setpackage::ExportRequest request{mpSets_chosen(), ckSpecial->isChecked(),
                                      ckCoupon->isChecked()};
    if (request.sets.isEmpty()) {
        platform::MsgBox("Tick the sets to export.", platform::vbExclamation);
        return;
    }
    const QStringList linked = setpackage::linkedSets(request.sets);
    if (!linked.isEmpty() && gfbAsk(QString("Keys of these sets open %1 more sets: %2.")
                                        .arg(linked.size())
                                        .arg(linked.join(", ")),
                                    "Export those sets too?", 0))
        request.sets += linked;
    QString file = platform::DialogPort::get().saveFileName(
        "Export Sets", QDir::home().filePath("Hot Key Sets, store " + gsStoreNumber + ".zip"),
        "Set Package (*.zip)|*.zip");
    if (file.isEmpty())
        return;
    if (!file.endsWith(".zip", Qt::CaseInsensitive))
        file += ".zip";
    QProgressDialog progress("Exporting the sets...", "Cancel", 0, 1, this);
    progress.setWindowTitle("Export Sets");
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(300);
    const setpackage::ExportResult result =
        setpackage::exportSets(file, request, [&progress](int done, int total) {
            progress.setMaximum(total);
            progress.setValue(done);
            QCoreApplication::processEvents();
            return !progress.wasCanceled();
        });
    progress.reset(); // gone before the box that says what came of it
    if (!result.ok) {
        platform::MsgBox(result.error, platform::vbCritical);
        return;
    }
    QString text = QString("%1\r\rThe package holds %2 sets, %3 pictures and %4 keys that sell "
                           "an item.")
                       .arg(QDir::toNativeSeparators(file))
                       .arg(result.sets)
                       .arg(result.pictures)
                       .arg(result.itemKeys);
    if (!result.notes.isEmpty())
        text += "\r\r" + result.notes.join('\r');
    platform::MsgBox(text, platform::vbInformation);
    PackageFile = file;
    Canceled = false;
    accept();
}

void frmSetExport::Form_KeyDown(int &KeyCode, int Shift)
{
    Q_UNUSED(Shift);
    mpStandardKeys(
        KeyCode, [this] { cmdOkCancel_Click(0); }, [this] { cmdOkCancel_Click(1); });
}
