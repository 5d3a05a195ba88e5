#include "screens/frmVersions.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "hotkeys/hkeyServices.h"
#include "platform/Dialogs.h"
#include "platform/ui/Modal.h"
#include "screens/frmHotKeys.h"
#include "screens/frmVersionCompare.h"
#include "screens/posButtons.h"
#include "settings/clsDataPath.h"
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// The date as the store's system writes it; seconds tell two saves of a minute apart.
QString timeText(const QDateTime &time)
{
    return QLocale::system().toString(time.date(), QLocale::ShortFormat) + "  " +
           time.toString("HH:mm:ss");
}

QString setCaption(const QString &fileName)
{
    const QString number = hotKeySetShownDigits(fileName);
    if (!QFile::exists(gDataPath.DataPath() + '/' + fileName))
        return number + "  (removed)";
    return gfsHotKeySet_label(number);
}

} // namespace

frmVersions::frmVersions(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Versions");
    cboSet = new QComboBox(this);
    cboSet->setObjectName("cboSet");
    lstVersions = new QListWidget(this);
    lstVersions->setObjectName("lstVersions");
    lstVersions->setMinimumWidth(200);
    lstVersions->setStyleSheet("QListWidget::item { padding: 8px; }"); // a finger's height
    cmdRestore = new QPushButton("Restore This Version", this);
    cmdRestore->setObjectName("cmdRestore");
    cmdCompare = new QPushButton("Compare...", this);
    cmdCompare->setObjectName("cmdCompare");
    cmdClose = new QPushButton("Close", this);
    cmdClose->setObjectName("cmdClose");
    for (QPushButton *b : {cmdRestore, cmdCompare, cmdClose}) {
        b->setAutoDefault(false);
        b->setMinimumHeight(40);
    }
    auto *left = new QVBoxLayout;
    left->addWidget(new QLabel("Set", this));
    left->addWidget(cboSet);
    left->addWidget(new QLabel("Kept before it was changed or removed", this));
    left->addWidget(lstVersions, 1);
    left->addWidget(cmdRestore);
    left->addWidget(cmdCompare);
    left->addWidget(cmdClose);

    lblSetTitle = new QLabel(this);
    lblSetTitle->setObjectName("lblSetTitle");
    QFont bold = lblSetTitle->font();
    bold.setBold(true);
    lblSetTitle->setFont(bold);
    auto *panel = new QGridLayout;
    panel->setSpacing(6);
    for (int n = 0; n < 4; ++n) {
        lblColumn[n] = new QLabel(this);
        lblColumn[n]->setAlignment(Qt::AlignCenter);
        lblColumn[n]->setFont(bold);
        panel->addWidget(lblColumn[n], 0, n);
        for (int j = 0; j < 8; ++j) {
            auto *key = new MyButton(QString(), this);
            key->setCaptionalignment(7);
            key->captionposition = 3;
            key->picturealignment = 1;
            key->setFocusPolicy(Qt::NoFocus);
            key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            key->setMinimumSize(130, 48);
            cmdKey[n][j] = key;
            panel->addWidget(key, j + 1, n);
        }
    }
    lblStatus = new QLabel(this);
    lblStatus->setObjectName("lblStatus");
    auto *right = new QVBoxLayout;
    right->addWidget(lblSetTitle);
    right->addLayout(panel, 1);
    right->addWidget(lblStatus);

    auto *outer = new QHBoxLayout(this);
    outer->addLayout(left);
    outer->addLayout(right, 1);

    resize(1100, 720);

    connect(cboSet, &QComboBox::currentIndexChanged, this, [this] { mpVersions_fill(); });
    connect(lstVersions, &QListWidget::currentRowChanged, this, [this] { mpVersion_draw(); });
    connect(cmdRestore, &QPushButton::clicked, this, [this] { cmdRestore_Click(); });
    connect(cmdCompare, &QPushButton::clicked, this, [this] { cmdCompare_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void frmVersions::cmdCompare_Click()
{
    const int row = lstVersions->currentRow();
    if (row < 0)
        return;
    frmVersionCompare compare(this);
    compare.Kept = Shown;
    compare.Left = row;
    compare.Form_Load();
    platform::showModal(compare);
}

void frmVersions::Form_Load()
{
    gpForm_initControls(this);
    Restored = false;
    mpSets_fill();
}

void frmVersions::mpSets_fill()
{
    QStringList files;
    for (const QString &name : versions::keptFiles()) {
        if (!hotKeySetNumber(name).isEmpty())
            files << name;
    }
    if (!fileName.isEmpty() && !files.contains(fileName))
        files << fileName;
    files.sort();
    const QSignalBlocker quiet(cboSet);
    cboSet->clear();
    for (const QString &name : files) cboSet->addItem(setCaption(name), name);
    cboSet->setCurrentIndex(qMax(0, files.indexOf(fileName)));
    mpVersions_fill();
}

void frmVersions::mpVersions_fill()
{
    Shown = versions::list(cboSet->currentData().toString());
    const QSignalBlocker quiet(lstVersions);
    lstVersions->clear();
    for (const versions::Version &v : Shown) lstVersions->addItem(timeText(v.time));
    lstVersions->setCurrentRow(Shown.isEmpty() ? -1 : 0);
    mpVersion_draw();
}

void frmVersions::mpVersion_draw()
{
    const int row = lstVersions->currentRow();
    cmdRestore->setEnabled(row >= 0);
    cmdCompare->setEnabled(row >= 0);
    HotKeySet groups;
    hotKeySetClear(groups);
    QString title;
    if (row >= 0) {
        title = hotKeySetParse(textfile::fromCp1252(versions::bytesOf(Shown[row])), groups);
        lblSetTitle->setText(title);
    } else {
        lblSetTitle->setText(cboSet->count() ? "No version of this set has been kept yet."
                                             : "No set has been changed or removed yet.");
    }
    for (int n = 0; n < 4; ++n) {
        lblColumn[n]->setText(groups[n + 1].Caption);
        for (int j = 0; j < 8; ++j)
            frmHotKeys::DrawKey(cmdKey[n][j], groups[n + 1].Buttons[j + 1], true);
    }
}

void frmVersions::cmdRestore_Click()
{
    const int row = lstVersions->currentRow();
    if (row < 0)
        return;
    const versions::Version version = Shown[row];
    const QString number = hotKeySetShownDigits(version.fileName);
    const QString when = timeText(version.time);
    if (platform::MsgBox("Set " + number + " will be put back as it was before " + when +
                             ".\r\rThe set as it is now is kept in Versions first.\r\r"
                             "Restore it?",
                         platform::vbYesNo + platform::vbQuestion,
                         "Restore Version") != platform::vbYes)
        return;
    const bool wasRemoved = !QFile::exists(gDataPath.DataPath() + '/' + version.fileName);
    const QList<ClearedKey> cleared =
        wasRemoved ? hotKeySetClearedKeys(version.fileName) : QList<ClearedKey>();
    QString error;
    if (!versions::restore(version, &error)) {
        platform::MsgBox(QDir::toNativeSeparators(gDataPath.DataPath() + '/' + version.fileName) +
                             "\r\rThe version could not be restored:\r" + error +
                             "\rThe set in the data folder was left as it was.",
                         platform::vbCritical, "Restore Version");
        return;
    }
    Restored = true;
    fileName = version.fileName;
    mpSets_fill();
    lblStatus->setText("Set " + number + " was restored as it was before " + when + "." +
                       mpClearedKeys_offer(cleared, number));
}

QString frmVersions::mpClearedKeys_offer(const QList<ClearedKey> &cleared, const QString &number)
{
    if (cleared.isEmpty())
        return QString();
    QList<LinkingKeys> linking;
    for (const ClearedKey &key : cleared) {
        if (linking.isEmpty() || linking.last().fileName != key.fileName)
            linking << LinkingKeys{key.fileName, 0};
        ++linking.last().keys;
    }
    if (platform::MsgBox("Removing set " + number + " cleared " + hotKeySetLinkingText(linking) +
                             " that opened it, and their places are still empty.\r\rPut "
                             "those keys back as they were before the removal?",
                         platform::vbYesNo + platform::vbQuestion,
                         "Restore Version") != platform::vbYes)
        return QString();
    QStringList problems;
    const int restored = hotKeySetClearedKeys_restore(cleared, &problems);
    if (!problems.isEmpty())
        platform::MsgBox("These sets could not be changed, so their keys were not put back:\r" +
                             problems.join('\r') +
                             "\r\rMake sure the data folder can be written to and restore "
                             "again.",
                         platform::vbExclamation, "Restore Version");
    return QString(" %1 key%2 that open%3 it %4 put back.")
        .arg(restored)
        .arg(restored == 1 ? "" : "s")
        .arg(restored == 1 ? "s" : "")
        .arg(restored == 1 ? "was" : "were");
}

void frmVersions::Form_KeyDown(int &KeyCode, int)
{
    mpStandardKeys(KeyCode, {}, [this] { reject(); });
}
