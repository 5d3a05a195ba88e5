#include "database/zelDBSM_Common.h"
#include "mail/MailFixture.h"
#include "mail/frmSendMail.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "shell/frmMain.h"
#include "shell/hkeyMain.h"
#include <QAction>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTcpServer>
#include <QTest>
#include <QTimer>

using namespace testing_support;

namespace {

// A touch on the box (none: on none), which makes it the keyboard's target, then
// the text typed on the on-screen keyboard.
void type(frmSendMail &f, QWidget *box, const QString &text)
{
    if (auto *body = qobject_cast<QPlainTextEdit *>(box))
        box = body->viewport();
    if (box)
        QTest::mouseClick(box, Qt::LeftButton);
    for (QChar c : text) {
        QPushButton *key = nullptr;
        for (QPushButton *k : f.cmdKeyPad)
            if (k->property("Tag").toString() == c.toUpper() || (c == ' ' && k->text() == "Space"))
                key = k;
        ASSERT_TRUE(key) << "no key for " << QString(c).toStdString();
        QTest::mouseClick(key, Qt::LeftButton);
    }
}

class MailScreenTest : public MailTest {
protected:
    void SetUp() override
    {
        MailTest::SetUp();
        f->Form_Load();
        f->show();
    }
    void click(QWidget *button) { QTest::mouseClick(button, Qt::LeftButton); }
    std::unique_ptr<frmSendMail> f = std::make_unique<frmSendMail>();
};

} // namespace

TEST_F(MailScreenTest, KeysSitInTypewriterRowsLargeEnoughForAFingerAndHide)
{
    EXPECT_EQ(f->windowTitle(), "Send");
    QStringList labels;
    for (QLabel *l : f->findChildren<QLabel *>()) labels << l->text();
    EXPECT_EQ(labels, (QStringList{"To", "Bcc", "From", "Subject", "Message", "Attachment"}));
    // Read the rows off the screen, top to bottom and left to right.
    QMap<int, QMap<int, QString>> rows;
    for (QPushButton *key : f->FraKeyBoard->findChildren<QPushButton *>()) {
        rows[key->y()][key->x()] = key->text();
        EXPECT_GE(std::min(key->height(), key->width()), 38) << key->text().toStdString();
    }
    QStringList seen;
    for (const auto &row : rows) seen << QStringList(row.values()).join(' ');
    EXPECT_EQ(seen,
              (QStringList{"1 2 3 4 5 6 7 8 9 0", "Q W E R T Y U I O P", "A S D F G H J K L _",
                           "Z X C V B N M - . @", "Upper Case Space Back Space Clear"}));

    // Hidden and shown again, the keyboard gives back the height it took.
    const int full = f->height();
    click(f->CmdShowKB);
    EXPECT_TRUE(f->FraKeyBoard->isHidden());
    EXPECT_EQ(f->CmdShowKB->text(), "Show Keyboard");
    EXPECT_NEAR(f->height(), full * 2.0 / 3.0, 1);
    click(f->CmdShowKB);
    EXPECT_EQ(f->CmdShowKB->text(), "Hide Keyboard");
    EXPECT_NEAR(f->height(), full, 2);
}

TEST_F(MailScreenTest, KeyboardTypesIntoTheBoxLastTouched)
{
    type(*f, nullptr, "HI");
    EXPECT_TRUE(f->txtTo->text().isEmpty()) << "no box touched yet: nothing happens";
    type(*f, f->TxtBody, "HI");
    EXPECT_EQ(f->FraKeyBoard->title(), "Message");
    click(f->cmdEdit[2]);
    EXPECT_EQ(f->cmdEdit[2]->text(), "Lower Case");
    type(*f, nullptr, "HI");
    EXPECT_EQ(f->TxtBody->toPlainText(), "hiHI");
    click(f->cmdEdit[2]);
    click(f->cmdEdit[0]);
    type(*f, nullptr, "A");
    EXPECT_EQ(f->TxtBody->toPlainText(), " a") << "Clear leaves one blank";
    for (int i = 0; i < 3; ++i) click(f->cmdEdit[1]);
    EXPECT_EQ(f->TxtBody->toPlainText(), "") << "an empty box stays empty";

    const QList<QPair<QLineEdit *, QString>> targets{{f->txtTo, "To"},
                                                     {f->txtFrom, "From"},
                                                     {f->TxtSubject, "Subject"},
                                                     {f->txtAttach, "Attach"}};
    for (const auto &[box, caption] : targets) {
        type(*f, box, "7 Q");
        EXPECT_EQ(f->FraKeyBoard->title(), caption);
        EXPECT_EQ(box->text(), "7 q");
    }
    EXPECT_EQ(f->txtAttach->cursorPosition(), 3) << "the cursor stays behind the text";
    type(*f, f->TxtCC, "X");
    EXPECT_EQ(f->FraKeyBoard->title(), "Attach") << "Bcc is no target of the keyboard";
    EXPECT_TRUE(f->TxtCC->text().isEmpty());
    EXPECT_EQ(f->txtAttach->text(), "7 qx");
}

TEST_F(MailScreenTest, AttachmentsChosenTwiceAreJoinedByAComma)
{
    const QString first = file("first.txt", "1");
    const QString second = file("second.bat", "2");
    for (const QString &chosen : {first, second, QString()}) {
        dialogs.answerText(chosen);
        click(f->Command1);
    }
    EXPECT_EQ(f->txtAttach->text(), first + "," + second) << "a cancelled choice adds nothing";
    const Box open = boxes().value(0);
    EXPECT_EQ(open.text, dataPath() + "|All Files (*.*)|*.*|PDF and Text Files (*.pdf *.txt)|"
                                      "*.pdf;*.txt|Batch Files (*.bat)|*.bat");
    EXPECT_EQ(open.selectedFilter, 2);
}

TEST_F(MailScreenTest, WhileSendingTheScreenPaintsButCannotBeLeft)
{
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    settings("127.0.0.1", QString::number(silent.serverPort()), "No");
    mail::transferTuning().timeoutSeconds = 1;
    QTest::keyClicks(f->txtTo, "boss@example.com");
    QTest::keyClicks(f->txtFrom, "shop@example.com");
    QTest::keyClicks(f->TxtBody, "kept");
    bool triedToLeave = false;
    QTimer::singleShot(0, [&] {
        EXPECT_FALSE(f->isEnabled());
        f->repaint();
        QTest::keyClick(f.get(), Qt::Key_Escape);
        f->cmdCancel_Click();
        f->cmdSend_Click();
        triedToLeave = true;
    });
    click(f->cmdSend);
    EXPECT_TRUE(triedToLeave && f->isVisible() && f->isEnabled());
    const QList<Box> shown = boxes();
    ASSERT_EQ(shown.size(), 1) << "one send, one box";
    EXPECT_EQ(shown[0].title, "Error sending Email");
    EXPECT_TRUE(shown[0].text.startsWith(
        "28 The mail server did not answer in time. Please try again later."));
    EXPECT_TRUE(shown[0].text.endsWith(
        "\r\nServer: 127.0.0.1\r\nPort:" + QString::number(silent.serverPort()) + "\r\nUser:clerk"))
        << shown[0].text.toStdString();
    EXPECT_EQ(f->TxtBody->toPlainText(), "kept") << "nothing typed is lost";
    QTest::keyClick(f->txtTo, Qt::Key_Escape);
    EXPECT_FALSE(f->isVisible());
}

TEST_F(MailTest, AReportGoesFromThePreviewToAMailboxWithItsPdf)
{
    const auto noMailFromLaterPreviews = qScopeGuard([] { setPreviewMailOpener(nullptr); });
    SmtpPeer *p = server(SmtpPeer::Secure);
    shell.printers = {"Office"};
    gCommonRecord.clear();
    gCommonRecord.setText("Cname", "Corner Shop");
    gpPreviewMail_register();
    writeDataFile("HKSET03.SDF", "[SET]Lunch Menu\r\n[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n");
    const QString doc = QDir(dataPath()).filePath("Doc1.pdf");
    modal.drive("frmSMPRNT_PREVIEW", [](QDialog &preview) {
        QApplication::setActiveWindow(&preview);
        QTest::keyClick(preview.focusWidget() ? preview.focusWidget() : &preview, Qt::Key_F8);
        static_cast<frmSMPRNT_PREVIEW &>(preview).cmdClose_Click();
    });
    modal.on<frmSendMail>([&](frmSendMail &f) {
        EXPECT_EQ(f.txtAttach->text(), QDir::toNativeSeparators(doc)) << "the report, attached";
        type(f, f.txtTo, "OFFICE@EXAMPLE.COM");
        type(f, f.txtFrom, "SHOP@EXAMPLE.COM");
        QTest::mouseClick(f.cmdSend, Qt::LeftButton);
        EXPECT_EQ(f.result(), QDialog::Accepted) << "the screen closes once the message went";
    });
    frmMain list;
    list.Form_Load();
    list.mnuPrintType[1]->trigger(); // the Detail report
    EXPECT_EQ(modal.shown, (QStringList{"frmSMPRNT_PREVIEW", "frmSendMail"}));
    EXPECT_FALSE(QFile::exists(doc)) << "the preview deletes its work file";

    const QJsonObject m = onlyMessage(p);
    EXPECT_EQ(rcpt(m), QStringList{"office@example.com"});
    const QJsonArray files = m["attachments"].toArray();
    ASSERT_EQ(files.size(), 1);
    const QByteArray pdf = QByteArray::fromBase64(files[0]["data"].toString().toLatin1());
    EXPECT_TRUE(pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF"));
}
