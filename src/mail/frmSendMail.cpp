#include "mail/frmSendMail.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Mouse.h"
#include "mail/zelSendMail.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/Modal.h"
#include "platform/ui/Twips.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <cmath>

namespace {

// Keys a finger can hit: about a centimetre square.
constexpr int kKeyHeightTwips = 600;
constexpr int kFormWidthTwips = 12600;
constexpr int kFormHeightTwips = 10950; // with its title bar within a 1024 x 768 screen

const char *const kTargetProperty = "mailTarget";

QString keyCaption(int index)
{
    if (index <= 9)
        return QString::number(index);
    if (index >= 12 && index <= 37)
        return QString(QChar('A' + index - 12));
    switch (index) {
    case 10:
        return ".";
    case 11:
        return "-";
    case 38:
        return "@";
    case 39:
        return "Space";
    default:
        return "_";
    }
}

int letterKey(char letter)
{
    return 12 + letter - 'A';
}

// The typewriter rows, by key index.
QList<QList<int>> keyRows()
{
    QList<QList<int>> rows{{1, 2, 3, 4, 5, 6, 7, 8, 9, 0}, {}, {}, {}};
    for (char c : QByteArray("QWERTYUIOP")) rows[1] << letterKey(c);
    for (char c : QByteArray("ASDFGHJKL")) rows[2] << letterKey(c);
    rows[2] << 40;
    for (char c : QByteArray("ZXCVBNM")) rows[3] << letterKey(c);
    rows[3] << 11 << 10 << 38;
    return rows;
}

QPushButton *fingerButton(const QString &caption, const QString &name, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    button->setMinimumHeight(platform::twipsToPixels(kKeyHeightTwips));
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return button;
}

QString boxText(QWidget *box)
{
    if (auto *line = qobject_cast<QLineEdit *>(box))
        return line->text();
    return static_cast<QPlainTextEdit *>(box)->toPlainText();
}

} // namespace

frmSendMail::frmSendMail(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Send");
    QFont bigger = font();
    bigger.setPointSize(12);
    setFont(bigger);

    auto *form = new QVBoxLayout(this);
    form->addLayout(mpFields(), 2);
    form->addLayout(mpButtons());
    form->addWidget(mpKeyboard(), 1);
    resize(platform::twipsToPixels(kFormWidthTwips), platform::twipsToPixels(kFormHeightTwips));
}

QLayout *frmSendMail::mpFields()
{
    txtTo = new QLineEdit(this);
    TxtCC = new QLineEdit(this);
    txtFrom = new QLineEdit(this);
    TxtSubject = new QLineEdit(this);
    TxtBody = new QPlainTextEdit(this);
    txtAttach = new QLineEdit(this);
    const QList<QPair<QString, QWidget *>> boxes{{"To", txtTo},        {"Bcc", TxtCC},
                                                 {"From", txtFrom},    {"Subject", TxtSubject},
                                                 {"Message", TxtBody}, {"Attachment", txtAttach}};
    const QStringList names{"txtTo", "TxtCC", "txtFrom", "TxtSubject", "TxtBody", "txtAttach"};
    const QStringList targets{"To", "", "From", "Subject", "Message", "Attach"};
    auto *fields = new QGridLayout;
    for (int i = 0; i < boxes.size(); ++i) {
        QWidget *box = boxes[i].second;
        box->setObjectName(names[i]);
        fields->addWidget(new QLabel(boxes[i].first, this), i, 0,
                          box == TxtBody ? Qt::AlignTop : Qt::AlignVCenter);
        fields->addWidget(box, i, 1, 1, i == 5 ? 1 : 2);
        // The Bcc box takes no keys from the keyboard.
        if (!targets[i].isEmpty()) {
            box->setProperty(kTargetProperty, targets[i]);
            (box == TxtBody ? TxtBody->viewport() : box)->installEventFilter(this);
        }
    }
    fields->setRowStretch(4, 1);
    Command1 = fingerButton(QString(), "Command1", this);
    Command1->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
    Command1->setIconSize(QSize(28, 28));
    Command1->setToolTip("Choose an attachment");
    Command1->setFixedSize(Command1->minimumHeight(), Command1->minimumHeight());
    fields->addWidget(Command1, 5, 2);
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    return fields;
}

QLayout *frmSendMail::mpButtons()
{
    CmdShowKB = fingerButton("Hide Keyboard", "CmdShowKB", this);
    cmdSend = fingerButton("Send", "cmdSend", this);
    cmdCancel = fingerButton("Esc Cancel", "cmdCancel", this);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(CmdShowKB);
    buttons->addStretch(1);
    buttons->addWidget(cmdSend);
    buttons->addWidget(cmdCancel);
    for (QPushButton *b : {CmdShowKB, cmdSend, cmdCancel})
        b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(CmdShowKB, &QPushButton::clicked, this, [this] { CmdShowKB_Click(); });
    connect(cmdSend, &QPushButton::clicked, this, [this] { cmdSend_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    return buttons;
}

QWidget *frmSendMail::mpKeyboard()
{
    FraKeyBoard = new QGroupBox(this);
    FraKeyBoard->setObjectName("FraKeyBoard");
    auto *grid = new QGridLayout(FraKeyBoard);
    for (int i = 0; i < 41; ++i) {
        cmdKeyPad[i] = fingerButton(keyCaption(i), "cmdKeyPad", FraKeyBoard);
        if (i != 39)
            cmdKeyPad[i]->setProperty("Tag", keyCaption(i));
        connect(cmdKeyPad[i], &QPushButton::clicked, this, [this, i] { cmdKeyPad_Click(i); });
    }
    const QStringList edits{"Clear", "Back Space", "Upper Case"};
    for (int i = 0; i < 3; ++i) {
        cmdEdit[i] = fingerButton(edits[i], "cmdEdit", FraKeyBoard);
        connect(cmdEdit[i], &QPushButton::clicked, this, [this, i] { cmdEdit_Click(i); });
    }
    const QList<QList<int>> rows = keyRows();
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < rows[r].size(); ++c) grid->addWidget(cmdKeyPad[rows[r][c]], r, c);
    grid->addWidget(cmdEdit[2], 4, 0, 1, 2);
    grid->addWidget(cmdKeyPad[39], 4, 2, 1, 4);
    grid->addWidget(cmdEdit[1], 4, 6, 1, 2);
    grid->addWidget(cmdEdit[0], 4, 8, 1, 2);
    // Touching a key leaves the cursor in the box it types into.
    for (QPushButton *key : FraKeyBoard->findChildren<QPushButton *>())
        key->setFocusPolicy(Qt::NoFocus);
    return FraKeyBoard;
}

void frmSendMail::Form_Load()
{
    gpForm_initControls(this);
}

bool frmSendMail::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        QObject *box = watched == TxtBody->viewport() ? TxtBody : watched;
        FraKeyBoard->setTitle(box->property(kTargetProperty).toString());
    }
    return KeyPreviewForm::eventFilter(watched, event);
}

QWidget *frmSendMail::mpTarget() const
{
    const QString target = FraKeyBoard->title();
    for (QWidget *box : {static_cast<QWidget *>(txtTo), static_cast<QWidget *>(txtFrom),
                         static_cast<QWidget *>(TxtSubject), static_cast<QWidget *>(TxtBody),
                         static_cast<QWidget *>(txtAttach)})
        if (!target.isEmpty() && box->property(kTargetProperty).toString() == target)
            return box;
    return nullptr;
}

void frmSendMail::mpSetTargetText(QWidget *box, const QString &text)
{
    if (auto *line = qobject_cast<QLineEdit *>(box)) {
        line->setText(text);
        line->end(false);
        return;
    }
    TxtBody->setPlainText(text);
    TxtBody->moveCursor(QTextCursor::End);
}

void frmSendMail::cmdKeyPad_Click(int Index)
{
    QWidget *box = mpTarget();
    if (!box)
        return;
    QString key = Index == 39 ? QString(' ') : cmdKeyPad[Index]->property("Tag").toString();
    key = bUpperCase ? key.toUpper() : key.toLower();
    mpSetTargetText(box, boxText(box) + key);
}

void frmSendMail::cmdEdit_Click(int Index)
{
    QWidget *box = mpTarget();
    if (Index == 2) {
        bUpperCase = cmdEdit[2]->text() == "Upper Case";
        cmdEdit[2]->setText(bUpperCase ? "Lower Case" : "Upper Case");
    }
    if (!box)
        return;
    if (Index == 0)
        mpSetTargetText(box, " ");
    else if (Index == 1)
        mpSetTargetText(box, boxText(box).chopped(boxText(box).isEmpty() ? 0 : 1));
    else
        mpSetTargetText(box, boxText(box));
}

void frmSendMail::CmdShowKB_Click()
{
    const int was = height();
    if (CmdShowKB->text() == "Show Keyboard") {
        FraKeyBoard->show();
        CmdShowKB->setText("Hide Keyboard");
        layout()->activate(); // the minimum height follows the keyboard now, not later
        resize(width(), static_cast<int>(std::lround(was * 1.5)));
    } else {
        FraKeyBoard->hide();
        CmdShowKB->setText("Show Keyboard");
        layout()->activate();
        resize(width(), static_cast<int>(std::lround(was * 2.0 / 3.0)));
    }
}

void frmSendMail::Command1_Click()
{
    const QString file = platform::DialogPort::get().openFileNameFilter(
        "Open", gDataPath.DataPath(),
        "All Files (*.*)|*.*|PDF and Text Files (*.pdf *.txt)|*.pdf;*.txt|Batch Files "
        "(*.bat)|*.bat",
        2);
    if (file.isEmpty())
        return;
    const QString path = QDir::toNativeSeparators(file);
    if (conv::Trim(txtAttach->text()).isEmpty())
        txtAttach->setText(path);
    else
        txtAttach->setText(txtAttach->text() + ',' + path);
}

void frmSendMail::cmdSend_Click()
{
    if (mbSending)
        return;
    // The screen keeps painting while the server works, but takes no input.
    mbSending = true;
    QWidget *focus = focusWidget();
    setEnabled(false);
    gpMouse_wait();
    const MailResult result = gpSendMail(TxtSubject->text(), TxtBody->toPlainText(), txtTo->text(),
                                         TxtCC->text(), txtFrom->text(), txtAttach->text());
    gpMouse_default();
    setEnabled(true);
    if (focus)
        focus->setFocus();
    mbSending = false;
    if (result.Sent)
        accept();
    else if (!result.Error.ok())
        mpShowError(result.Error.Number, result.Error.Description);
}

void frmSendMail::mpShowError(long number, const QString &description)
{
    platform::MsgBox(QString::number(number) + ' ' + description + "\r\nServer: " + gsMailServer +
                         "\r\nPort:" + gsMailPort + "\r\nUser:" + gsMailUser,
                     platform::vbOKOnly, "Error sending Email");
}

void frmSendMail::cmdCancel_Click()
{
    reject();
}

void frmSendMail::reject()
{
    if (!mbSending)
        KeyPreviewForm::reject();
}

void frmSendMail::Form_KeyDown(int &KeyCode, int)
{
    if (KeyCode == platform::vbKeyEscape) {
        KeyCode = 0;
        cmdCancel_Click();
    }
}

void gpSendMail_show(QWidget *parent, const QString &sAttach)
{
    frmSendMail form(parent);
    form.Form_Load();
    form.txtAttach->setText(sAttach);
    platform::showModal(form);
}
