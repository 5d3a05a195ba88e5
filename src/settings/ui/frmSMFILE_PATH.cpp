#include "settings/ui/frmSMFILE_PATH.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Keyboard.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

frmSMFILE_PATH::frmSMFILE_PATH(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Path Browser");
    drvBrowse = new QComboBox(this);
    drvBrowse->setObjectName("drvBrowse");
    for (const QFileInfo &drive : QDir::drives()) drvBrowse->addItem(drive.absolutePath());
    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    dirBrowse = new QTreeView(this);
    dirBrowse->setObjectName("dirBrowse");
    dirBrowse->setModel(m_model);
    for (int c = 1; c < m_model->columnCount(); ++c) dirBrowse->hideColumn(c);
    dirBrowse->header()->hide();
    lblPath = new QLabel(this);
    lblPath->setObjectName("lblPath");
    lblPath->setToolTip("Selected Path");
    lblPath->setFrameShape(QFrame::Panel);
    lblPath->setFrameShadow(QFrame::Sunken);
    cmdHelp = new QPushButton("F1  Help", this);
    cmdHelp->setObjectName("cmdHelp");
    cmdHelp->setToolTip("Show Help");
    cmdOkCancel[0] = new QPushButton("F10  Accept", this);
    cmdOkCancel[0]->setToolTip("Set Path and Close");
    cmdOkCancel[1] = new QPushButton("Esc  Cancel", this);
    cmdOkCancel[1]->setToolTip("Discard and Close");
    for (QPushButton *b : cmdOkCancel) {
        b->setObjectName("cmdOkCancel");
        b->setAutoDefault(false);
    }
    cmdHelp->setAutoDefault(false);

    auto *grid = new QGridLayout(this);
    grid->addWidget(drvBrowse, 0, 0, 1, 3);
    grid->addWidget(dirBrowse, 1, 0, 1, 3);
    grid->addWidget(lblPath, 2, 0, 1, 3);
    grid->addWidget(cmdHelp, 3, 0);
    grid->addWidget(cmdOkCancel[0], 3, 1);
    grid->addWidget(cmdOkCancel[1], 3, 2);
    resize(360, 420);

    connect(drvBrowse, &QComboBox::currentIndexChanged, this, [this] { drvBrowse_Change(); });
    connect(dirBrowse->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { dirBrowse_Change(); });
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(cmdOkCancel[0], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(0); });
    connect(cmdOkCancel[1], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(1); });
}

void frmSMFILE_PATH::Form_Load()
{
    Canceled = true;
    gpForm_initControls(this);
    drvBrowse_Change();
    // A drive or path that no longer exists leaves the lists where they were.
    if (!Drive.trimmed().isEmpty()) {
        const int i = drvBrowse->findText(Drive, Qt::MatchStartsWith);
        if (i >= 0)
            drvBrowse->setCurrentIndex(i);
    }
    if (!Path.trimmed().isEmpty() && QDir(Path).exists()) {
        const QModelIndex index = m_model->index(QDir(Path).absolutePath());
        dirBrowse->setCurrentIndex(index);
        dirBrowse->scrollTo(index);
    }
}

void frmSMFILE_PATH::drvBrowse_Change()
{
    const QString root = drvBrowse->currentText();
    dirBrowse->setRootIndex(m_model->setRootPath(root));
    lblPath->setText(root);
}

void frmSMFILE_PATH::dirBrowse_Change()
{
    lblPath->setText(QDir::toNativeSeparators(m_model->filePath(dirBrowse->currentIndex())));
}

void frmSMFILE_PATH::Form_KeyDown(int &KeyCode, int Shift)
{
    if (KeyCode == platform::vbKeyEscape && Shift == 0) {
        KeyCode = 0;
        cmdOkCancel_Click(1);
        return;
    }
    gpKey_pressButton(this, KeyCode, Shift);
}

void frmSMFILE_PATH::cmdOkCancel_Click(int Index)
{
    if (Index == 0) {
        Canceled = false;
        Path = lblPath->text();
        Drive = drvBrowse->currentText();
        accept();
    } else {
        Canceled = true;
        reject();
    }
}

void frmSMFILE_PATH::cmdHelp_Click()
{
    platform::MsgBox("A path is sometimes refered to as a folder or a directory.\r"
                     "Only a folder that contains the required data files can be\r"
                     "set as your path.\r\r"
                     "ZEL database files are usually located in C:\\QR.\r"
                     "Sample database files, if installed, can be found in:\r"
                     " C:\\Program Files\\Zelmark\\Sample Files\r\r"
                     "You select a path by first, selecting the Drive\r"
                     "from the drop-down listbox. Then, Double-Click on\r"
                     "the folder to be used as your path.\r\r"
                     "HELP - Shows this help box.\r"
                     "OK - Sets the chosen Path and exits.\r"
                     "CANCEL - Discards changes and exits.",
                     platform::vbInformation, "Path Browser Help");
}
