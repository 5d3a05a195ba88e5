#include "shell/frmFirstRun.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

const char *const kTitle = "Set Up the Database";

QLineEdit *field(const QString &name, QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

void addRow(QFormLayout *form, const QString &label, QWidget *control)
{
    auto *l = new QLabel(label, control->parentWidget());
    l->setBuddy(control);
    form->addRow(l, control);
}

} // namespace

frmFirstRun::frmFirstRun(QWidget *parent) : KeyPreviewForm(parent)
{
    lblIntro = new QLabel("This workstation does not know yet where the store's database is. "
                          "The hot key sets need it to find the items for their keys.\n"
                          "Choose where the database is:",
                          this);
    lblIntro->setWordWrap(true);

    optOwn = new QRadioButton("&Own database in the data folder (one store, no server)", this);
    optOwn->setObjectName("optOwn");
    fraOwn = new QGroupBox(this);
    lblOwnFile = new QLabel(fraOwn);
    lblOwnFile->setWordWrap(true);
    txtStoreNumber = field("txtStoreNumber", fraOwn);
    txtStoreNumber->setMaxLength(6);
    txtStoreNumber->setMaximumWidth(90);
    txtStoreNumber->setToolTip("The store's number, from 1 to 32767");
    txtStoreName = field("txtStoreName", fraOwn);
    txtStoreName->setMaxLength(40); // the width of the name in the COMMON table
    auto *own = new QFormLayout(fraOwn);
    own->addRow(lblOwnFile);
    addRow(own, "Store &number", txtStoreNumber);
    addRow(own, "Store n&ame", txtStoreName);

    optServer = new QRadioButton("The store's database &server", this);
    optServer->setObjectName("optServer");
    fraServer = new QGroupBox(this);
    cboEngine = new QComboBox(fraServer);
    cboEngine->setObjectName("cboEngine");
    txtServer = field("txtServer", fraServer);
    connect(cboEngine, &QComboBox::currentIndexChanged, this,
            [this] { txtServer->setPlaceholderText(mpServerForm()); });
    txtDatabase = field("txtDatabase", fraServer);
    txtUser = field("txtUser", fraServer);
    txtPassword = field("txtPassword", fraServer);
    txtPassword->setEchoMode(QLineEdit::Password);
    auto *server = new QFormLayout(fraServer);
    addRow(server, "&Engine", cboEngine);
    addRow(server, "Se&rver", txtServer);
    addRow(server, "&Database", txtDatabase);
    addRow(server, "&User", txtUser);
    addRow(server, "&Password", txtPassword);

    cmdOkCancel[0] = new QPushButton("F10 Accept", this);
    cmdOkCancel[0]->setToolTip("Save the choice and start");
    cmdOkCancel[1] = new QPushButton("Esc Cancel", this);
    cmdOkCancel[1]->setToolTip("End the program without saving anything");
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (int i = 0; i < 2; ++i) {
        cmdOkCancel[i]->setObjectName("cmdOkCancel");
        cmdOkCancel[i]->setAutoDefault(false);
        buttons->addWidget(cmdOkCancel[i]);
        connect(cmdOkCancel[i], &QPushButton::clicked, this, [this, i] { cmdOkCancel_Click(i); });
    }
    auto *outer = new QVBoxLayout(this);
    outer->addWidget(lblIntro);
    outer->addSpacing(8);
    outer->addWidget(optOwn);
    outer->addWidget(fraOwn);
    outer->addWidget(optServer);
    outer->addWidget(fraServer);
    outer->addLayout(buttons);
    resize(560, sizeHint().height());

    for (QRadioButton *choice : {optOwn, optServer})
        connect(choice, &QRadioButton::toggled, this, [this] { mpChoice_show(); });
}

void frmFirstRun::Form_Load()
{
    setWindowTitle(kTitle);
    gpForm_initControls(this);
    Canceled = true;
    const QString file = QDir::toNativeSeparators(gfsDBSM_OwnFile());
    // Another workstation may have made it already: it is then used as it is.
    lblOwnFile->setText(QFileInfo::exists(gfsDBSM_OwnFile())
                            ? "The data folder already holds the database " + file +
                                  ", which this workstation will use as it is. The store "
                                  "number and name are stored only if it holds no store yet:"
                            : "The database is made in the data folder, as the file " + file +
                                  ", with the tables for one store:");
    cboEngine->clear();
    for (const DbEngineKind &kind : dbEngineKinds()) {
        if (!kind.embedded)
            cboEngine->addItem(kind.label, kind.setting);
    }
    txtServer->setPlaceholderText(mpServerForm());
    // Whatever the suite already keeps is offered again.
    const DBSM_Settings settings = gfDBSM_Settings();
    txtDatabase->setText(settings.sDBName);
    txtUser->setText(settings.sUser);
    txtPassword->setText(settings.sPassword);
    optOwn->setChecked(true);
    mpChoice_show();
}

void frmFirstRun::mpChoice_show()
{
    fraOwn->setEnabled(optOwn->isChecked());
    fraServer->setEnabled(optServer->isChecked());
    (optOwn->isChecked() ? txtStoreNumber : txtServer)->setFocus();
}

void frmFirstRun::Form_KeyDown(int &KeyCode, int Shift)
{
    if (Shift == 0)
        mpStandardKeys(
            KeyCode, [this] { cmdOkCancel_Click(0); }, [this] { cmdOkCancel_Click(1); });
}

void frmFirstRun::cmdOkCancel_Click(int Index)
{
    if (Index == 1) {
        Canceled = true;
        reject();
        return;
    }
    if (optOwn->isChecked() ? mpOwn_accept() : mpServer_accept()) {
        Canceled = false;
        accept();
    }
}

void frmFirstRun::mpRefuse(QLineEdit *field, const QString &text)
{
    platform::MsgBox(text, platform::vbExclamation, kTitle);
    field->setFocus();
    field->selectAll();
}

bool frmFirstRun::mpOwn_accept()
{
    bool number = false;
    const int store = txtStoreNumber->text().trimmed().toInt(&number);
    if (!number || store < 1 || store > 32767) {
        mpRefuse(txtStoreNumber, "The store number must be a whole number from 1 to 32767.");
        return false;
    }
    const QString name = txtStoreName->text().trimmed();
    if (name.isEmpty()) {
        mpRefuse(txtStoreName, "Type the store's name.");
        return false;
    }
    QString message;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const OwnDatabase made = gfDBSM_CreateOwn(store, name, message);
    QApplication::restoreOverrideCursor();
    if (made == OwnDatabase::Failed) {
        platform::MsgBox(message, platform::vbCritical, kTitle);
        return false;
    }
    if (made == OwnDatabase::Existing)
        platform::MsgBox(message, platform::vbInformation, kTitle);
    return true;
}

// How the chosen engine names its server, with an example.
QString frmFirstRun::mpServerForm() const
{
    if (cboEngine->currentData().toString() == "PostgreSQL")
        return "host or host:port (for example STOREPC:5432)";
    return "machine\\instance (for example STOREPC\\ZEL)";
}

bool frmFirstRun::mpServer_accept()
{
    const DBSM_Settings settings{cboEngine->currentData().toString(), txtDatabase->text().trimmed(),
                                 txtServer->text().trimmed(), txtUser->text().trimmed(),
                                 txtPassword->text().trimmed()}; // the start trims it too
    if (settings.sServer.isEmpty()) {
        mpRefuse(txtServer,
                 "Type the name of the store's database server, as " + mpServerForm() + ".");
        return false;
    }
    if (settings.sDBName.isEmpty()) {
        mpRefuse(txtDatabase, "Type the name of the store's database on the server.");
        return false;
    }
    if (settings.sUser.isEmpty()) {
        mpRefuse(txtUser, "Type the user name for the database server.");
        return false;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const QString problem = gfsDBSM_CheckServer(settings);
    QApplication::restoreOverrideCursor();
    if (!problem.isEmpty()) {
        mpRefuse(txtServer, problem);
        return false;
    }
    gpDBSM_SaveSettings(settings);
    return true;
}
