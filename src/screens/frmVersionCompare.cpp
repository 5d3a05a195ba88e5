#include "screens/frmVersionCompare.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "hotkeys/hkeyCompare.h"
#include "platform/ui/KeyCodes.h"
#include "screens/hkeyLayoutPanel.h"
#include "settings/clsDataPath.h"
#include <QComboBox>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPixmap>
#include <QPushButton>

namespace {

constexpr QSize kPanelSize(560, 380);

struct State {
    HotKeySet groups;
    QString title;
};

State stateOf(const QByteArray &bytes)
{
    State s;
    hotKeySetClear(s.groups);
    s.title = hotKeySetParse(textfile::fromCp1252(bytes), s.groups);
    return s;
}

QString whenText(const versions::Version &v)
{
    return "Before " + QLocale::system().toString(v.time.date(), QLocale::ShortFormat) + "  " +
           v.time.toString("HH:mm:ss");
}

} // namespace

frmVersionCompare::frmVersionCompare(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Compare Versions");
    lblLeft = new QLabel(this);
    cboRight = new QComboBox(this);
    cboRight->setObjectName("cboRight");
    picLeft = new QLabel(this);
    picRight = new QLabel(this);
    for (QLabel *pic : {picLeft, picRight}) pic->setFixedSize(kPanelSize);
    lstDifferences = new QListWidget(this);
    lstDifferences->setObjectName("lstDifferences");
    lblStatus = new QLabel(this);
    lblStatus->setObjectName("lblStatus");
    cmdClose = new QPushButton("Esc Close", this);
    cmdClose->setAutoDefault(false);
    cmdClose->setMinimumHeight(34);
    auto *grid = new QGridLayout(this);
    grid->addWidget(lblLeft, 0, 0);
    grid->addWidget(cboRight, 0, 1);
    grid->addWidget(picLeft, 1, 0);
    grid->addWidget(picRight, 1, 1);
    grid->addWidget(lstDifferences, 2, 0, 1, 2);
    grid->addWidget(lblStatus, 3, 0);
    grid->addWidget(cmdClose, 3, 1, Qt::AlignRight);
    connect(cboRight, &QComboBox::currentIndexChanged, this, [this] { mpCompare(); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void frmVersionCompare::Form_Load()
{
    gpForm_initControls(this);
    const QSignalBlocker quiet(cboRight);
    cboRight->clear();
    const QString file = Kept.isEmpty() ? QString() : Kept.first().fileName;
    if (QFile::exists(gDataPath.DataPath() + '/' + file))
        cboRight->addItem("The set as it is now", -1);
    for (int i = 0; i < Kept.size(); ++i) {
        if (i != Left)
            cboRight->addItem(whenText(Kept[i]), i);
    }
    // Next to the state that followed it: the newer version, or the file itself.
    const int newer = cboRight->findData(Left - 1);
    cboRight->setCurrentIndex(newer >= 0 ? newer : 0);
    mpCompare();
}

void frmVersionCompare::mpCompare()
{
    if (Left < 0 || Left >= Kept.size())
        return;
    if (cboRight->currentIndex() < 0) {
        lblStatus->setText("The set was removed and no other version of it is kept: there is "
                           "nothing to compare this version with.");
        return;
    }
    const int right = cboRight->currentData().toInt();
    QByteArray rightBytes;
    if (right < 0)
        textfile::readBytes(gDataPath.DataPath() + '/' + Kept[Left].fileName, rightBytes);
    else
        rightBytes = versions::bytesOf(Kept[right]);
    const State a = stateOf(versions::bytesOf(Kept[Left])), b = stateOf(rightBytes);
    const QList<SetDifference> differences =
        hotKeySetDifferences(a.groups, a.title, b.groups, b.title);
    QSet<int> marked;
    lstDifferences->clear();
    for (const SetDifference &d : differences) {
        if (d.group > 0)
            marked << d.group * 10 + d.key;
        lstDifferences->addItem(d.text);
    }
    lblLeft->setText(whenText(Kept[Left]) + ": " + a.title);
    picLeft->setPixmap(QPixmap::fromImage(gfLayout_panelImage(a.groups, kPanelSize, marked)));
    picRight->setPixmap(QPixmap::fromImage(gfLayout_panelImage(b.groups, kPanelSize, marked)));
    lblStatus->setText(differences.isEmpty()
                           ? QString("The two are the same.")
                           : QString("%1 difference%2, framed in red on both panels.")
                                 .arg(differences.size())
                                 .arg(differences.size() == 1 ? "" : "s"));
}

void frmVersionCompare::Form_KeyDown(int &KeyCode, int)
{
    if (KeyCode == platform::vbKeyEscape) {
        KeyCode = 0;
        cmdClose->click();
    }
}
