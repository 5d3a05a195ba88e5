#include "settings/ui/frmSM_DATAPATH2.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "platform/Dialogs.h"
#include "platform/Paths.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/Modal.h"
#include "settings/clsDataPath.h"
#include "settings/ui/frmSMFILE_PATH.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

namespace {

QPushButton *button(const QString &text, const QString &name, const QString &tip, QWidget *parent)
{
    auto *b = new QPushButton(text, parent);
    b->setObjectName(name);
    b->setToolTip(tip);
    b->setAutoDefault(false);
    return b;
}

} // namespace

frmSM_DATAPATH2::frmSM_DATAPATH2(QWidget *parent) : KeyPreviewForm(parent)
{
    Frame1 = new QGroupBox("Select Data Path", this);
    for (int i = 0; i < 2; ++i) {
        txtEdit[i] = new QLineEdit(Frame1);
        txtEdit[i]->setObjectName("txtEdit");
        txtEdit[i]->installEventFilter(this);
        cmdBrowsePath[i] = button("...", "cmdBrowsePath", "", Frame1);
        connect(txtEdit[i], &QLineEdit::textChanged, this, [this] { mpAcceptEnable(); });
        connect(cmdBrowsePath[i], &QPushButton::clicked, this,
                [this, i] { cmdBrowsePath_Click(i); });
    }
    lblEdit[0] = new QLabel("Station Number", Frame1);
    lblEdit[0]->setToolTip("Select WorkStation's Number");
    lblEdit[1] = new QLabel("Import/Export Path", Frame1);
    lblEdit[2] = new QLabel("Data Path", Frame1);
    lblEdit[2]->setToolTip("Location of Data Files (*.ZEL)");
    for (QLabel *l : lblEdit) l->setObjectName("lblEdit");
    cboEdit = new QComboBox(Frame1);
    cboEdit->setObjectName("cboEdit");
    cboEdit->installEventFilter(this);
    chkNetwork = new QCheckBox("Network", Frame1);
    chkNetwork->setObjectName("chkNetwork");
    Label2 = new QLabel("( If your data is to be kept on a networked computer, check Network. )",
                        Frame1);
    Label2->setObjectName("Label2");
    Label2->setWordWrap(true);
    ckTest = new QCheckBox("Flag as Training Data", Frame1);
    ckTest->setObjectName("ckTest");
    cmdBrowse = button("F2 Browse", "cmdBrowse", "Look for Folder with Files for Path", this);
    cmdHelp = button("F1 Help", "cmdHelp", "Show Help", this);
    cmdOkCancel[0] = button("F10 Accept", "cmdOkCancel", "Save and Close", this);
    cmdOkCancel[1] = button("Esc Cancel", "cmdOkCancel", "Discard and Close", this);

    auto *grid = new QGridLayout(Frame1);
    grid->addWidget(lblEdit[1], 0, 0);
    grid->addWidget(txtEdit[0], 0, 1);
    grid->addWidget(cmdBrowsePath[0], 0, 2);
    grid->addWidget(lblEdit[2], 1, 0);
    grid->addWidget(txtEdit[1], 1, 1);
    grid->addWidget(cmdBrowsePath[1], 1, 2);
    grid->addWidget(lblEdit[0], 2, 0);
    grid->addWidget(cboEdit, 2, 1);
    grid->addWidget(chkNetwork, 3, 1);
    grid->addWidget(Label2, 4, 1, 1, 2);
    grid->addWidget(ckTest, 5, 1);
    grid->setColumnStretch(1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdBrowse);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdOkCancel[0]);
    buttons->addWidget(cmdOkCancel[1]);
    auto *outer = new QVBoxLayout(this);
    outer->addWidget(Frame1);
    outer->addLayout(buttons);
    for (QPushButton *b : cmdBrowsePath) b->setFixedWidth(36);
    resize(560, sizeHint().height());

    connect(cboEdit, &QComboBox::activated, this, [this] { mpAcceptEnable(); });
    connect(ckTest, &QCheckBox::clicked, this, [this] { ckTest_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(cmdOkCancel[0], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(0); });
    connect(cmdOkCancel[1], &QPushButton::clicked, this, [this] { cmdOkCancel_Click(1); });
}

void frmSM_DATAPATH2::Form_Load()
{
    setWindowTitle("Set Data Path");
    bLoaded = false;
    mLoaded = gDataPath;
    cmdOkCancel[0]->setEnabled(false);
    gpForm_initControls(this);
    if (!gDataPath.StationNumberEnabled())
        iCurrentPath = 1;
    ckTest->setChecked(gDataPath.TestPath() == "Y");
    cboEdit->clear();
    for (int i = 1; i <= gDataPath.MaxStations(); ++i) cboEdit->addItem(QString::number(i));
    mpLayoutRows();

    const double station = conv::Val(gDataPath.Station());
    if (station <= 0)
        cboEdit->setCurrentIndex(cboEdit->findText(gDataPath.DefaultStation()));
    else if (station > gDataPath.MaxStations())
        cboEdit->setCurrentIndex(cboEdit->count() - 1);
    else
        cboEdit->setCurrentIndex(cboEdit->findText(QString::number(static_cast<int>(station))));

    if (!gDataPath.DataPath().isEmpty()) {
        txtEdit[1]->setText(gDataPath.DataPath());
        chkNetwork->setChecked(gDataPath.Network());
    } else {
        const QString path = platform::nativePath("C:\\QR");
        txtEdit[0]->setText(path);
        txtEdit[1]->setText(path);
        chkNetwork->setChecked(false);
    }
    mpLayoutRows();
    cmdBrowse->setEnabled(false);
    bLoaded = true;
}

// The import/export row is not used here: the data path takes its place.
void frmSM_DATAPATH2::mpLayoutRows()
{
    txtEdit[0]->setEnabled(false);
    for (QWidget *w : {static_cast<QWidget *>(txtEdit[0]), static_cast<QWidget *>(lblEdit[1]),
                       static_cast<QWidget *>(cmdBrowsePath[0])})
        w->setVisible(false);
    const bool station = gDataPath.StationNumberEnabled();
    cboEdit->setVisible(station);
    lblEdit[0]->setVisible(station);
}

void frmSM_DATAPATH2::mpAcceptEnable()
{
    cmdOkCancel[0]->setEnabled(!conv::Trim(txtEdit[1]->text()).isEmpty());
}

void frmSM_DATAPATH2::Form_KeyDown(int &KeyCode, int Shift)
{
    // F10 runs Accept even while the button is disabled.
    if (Shift == 0)
        mpStandardKeys(
            KeyCode, [this] { cmdOkCancel_Click(0); }, [this] { cmdOkCancel_Click(1); },
            [this] { cmdHelp_Click(); });
}

void frmSM_DATAPATH2::cmdOkCancel_Click(int Index)
{
    if (Index == 1) {
        // A failed Accept leaves the typed values in the record: Cancel discards them.
        gDataPath = mLoaded;
        gDataPath.setCancelled(true);
        reject();
        QApplication::processEvents();
        return;
    }
    gDataPath.setStation(cboEdit->currentText());
    gDataPath.setStationPath(txtEdit[1]->text());
    gDataPath.setDataPath(txtEdit[1]->text());
    gDataPath.setNetwork(chkNetwork->isChecked());
    gDataPath.Validate(false);
    if (gDataPath.Valid()) {
        gDataPath.setTestPath(ckTest->isChecked() ? "Y" : "");
        if (gDataPath.StationPath().isEmpty())
            gDataPath.setStationPath(gDataPath.DataPath());
        gDataPath.Save();
        gDataPath.setCancelled(false);
        accept();
    } else if (gDataPath.FieldKey() == "STATION") {
        cboEdit->setFocus();
    } else if (gDataPath.FieldKey() == "DATAPATH") {
        txtEdit[1]->setFocus();
    }
}

void frmSM_DATAPATH2::ckTest_Click()
{
    if (!ckTest->isChecked())
        return;
    platform::MsgBox("Checking this box does not set up a traning directory or change your data "
                     "path \r\nIt is a manual switch that turns on or off the training flag on "
                     "the main screen ",
                     platform::vbInformation, "Caution");
}

void frmSM_DATAPATH2::cmdBrowsePath_Click(int Index)
{
    frmSMFILE_PATH browser(this);
    browser.Path = conv::RTrim(txtEdit[Index]->text());
    browser.Drive = browser.Path.left(2).toUpper();
    browser.Form_Load();
    platform::showModal(browser);
    if (browser.Canceled || browser.Path.isEmpty())
        return;
    QString path = browser.Path;
    // Only a drive letter is upper-cased: elsewhere a path's case is part of its name.
    static const QRegularExpression drive("^[A-Za-z]:");
    if (drive.match(path).hasMatch())
        path = path.left(3).toUpper() + path.mid(3);
    txtEdit[Index]->setText(path);
}

void frmSM_DATAPATH2::cmdHelp_Click()
{
    platform::MsgBox("A valid data path is necessary before an application can run.\r"
                     "A path is also sometimes refered to as a folder or a directory.\r\r"
                     "DATA PATH - The location of the ZEL database files, usually C:\\QR.\r"
                     "You can type in the path or use the Browser to select its folder.\r\r"
                     "STATION PATH - Location of the station's file, STA##.ZEL.\r"
                     "You can type in the path or use the Browser to select its folder.\r"
                     "* May be disabled, if not used by an application.\r\r"
                     "STATION - When running on a network, you can select the station\r"
                     "number being used to access the network.\r\r"
                     "BROWSER - Select an existing path by first, selecting the\r"
                     "Drive from the drop-down listbox. Then, Double-Click on the\r"
                     "folder to be selected as your path.\r\r"
                     "HELP - Shows this help box.\r\r"
                     "OK - Saves changes and exits.\r\r"
                     "CANCEL - Discards changes and exits.",
                     platform::vbInformation, "Station and Data Path Help");
}

bool frmSM_DATAPATH2::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (watched == cboEdit) {
            cmdBrowse->setEnabled(false);
        } else if (auto *box = qobject_cast<QLineEdit *>(watched)) {
            cmdBrowse->setEnabled(true);
            iCurrentPath = box == txtEdit[0] ? 0 : 1;
            QMetaObject::invokeMethod(box, &QLineEdit::selectAll, Qt::QueuedConnection);
        }
    } else if (event->type() == QEvent::KeyPress &&
               static_cast<QKeyEvent *>(event)->key() == Qt::Key_Return &&
               qobject_cast<QLineEdit *>(watched)) {
        cmdBrowse->setEnabled(true);
    }
    return KeyPreviewForm::eventFilter(watched, event);
}
