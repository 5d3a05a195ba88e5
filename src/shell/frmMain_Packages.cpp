// The set list's Export Sets and Import Sets commands.
#include "hotkeys/hkeyPackage.h"
#include "platform/Dialogs.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Modal.h"
#include "screens/frmSetExport.h"
#include "screens/frmSetImport.h"
#include "shell/frmMain.h"
#include <QCoreApplication>
#include <QDir>
#include <QGridLayout>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>

void frmMain::mpPackages_setup()
{
    cmdExport = new QPushButton("E&xport Sets...", this);
    cmdImport = new QPushButton("&Import Sets...", this);
    cmdExport->setToolTip("The chosen sets, their pictures and their items' codes in one "
                          "package, for another store");
    cmdImport->setToolTip("Sets from another store's package, each item found in this store's "
                          "inventory");
    for (QPushButton *b : {cmdExport, cmdImport}) {
        b->setAutoDefault(false);
        b->setMinimumHeight(34);
    }
    cmdExport->setObjectName("cmdExport");
    cmdImport->setObjectName("cmdImport");
    auto *grid = static_cast<QGridLayout *>(layout());
    grid->addWidget(cmdExport, 3, 1);
    grid->addWidget(cmdImport, 3, 2);
    mnuSets->addSeparator();
    mnuSets->addAction("Export Sets...", this, [this] { cmdExport_Click(); });
    mnuSets->addAction("Import Sets...", this, [this] { cmdImport_Click(); });
    connect(cmdExport, &QPushButton::clicked, this, [this] { cmdExport_Click(); });
    connect(cmdImport, &QPushButton::clicked, this, [this] { cmdImport_Click(); });
}

void frmMain::cmdExport_Click()
{
    frmSetExport form(this);
    const int row = fgrdItems->Row();
    if (mpIsSetRow(row))
        form.SetNumber = fgrdItems->TextMatrix(row, 0);
    form.Form_Load();
    platform::showModal(form);
}

void frmMain::cmdImport_Click()
{
    const QString file = platform::DialogPort::get().openFileName("Import Sets", QDir::homePath(),
                                                                  "Set Package (*.zip)|*.zip");
    if (file.isEmpty())
        return;
    QProgressDialog progress("Reading the package...", "Cancel", 0, 1, this);
    progress.setWindowTitle("Import Sets");
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(300);
    QString error;
    std::optional<setpackage::Plan> plan =
        setpackage::readPackage(file, &error, [&progress](int done, int total) {
            progress.setMaximum(total);
            progress.setValue(done);
            QCoreApplication::processEvents();
            return !progress.wasCanceled();
        });
    progress.reset();
    if (!plan) {
        platform::MsgBox(error, platform::vbCritical);
        return;
    }
    frmSetImport preview(this);
    preview.Plan = *plan;
    preview.Form_Load();
    platform::showModal(preview);
    if (preview.Canceled)
        return;
    mpSetList_fill();
    platform::MsgBox(QString("%1 sets were imported.").arg(preview.Plan.sets.size()),
                     platform::vbInformation);
}
