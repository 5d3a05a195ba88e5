#include "mail/MailScreen.h"
#include "mail/frmSendMail.h"
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>
#include <QTimer>

using namespace testing_support;

namespace {

class MailScreenTest : public MailTest {
protected:
    std::unique_ptr<frmSendMail> open()
    {
        auto form = std::make_unique<frmSendMail>();
        form->Form_Load();
        form->show();
        return form;
    }
};

} // namespace

TEST_F(MailScreenTest, KeysSitInTypewriterRowsLargeEnoughForAFinger)
{
    auto f = open();
    EXPECT_EQ(f->windowTitle(), "Send");
    QStringList labels;
    for (QLabel *l : f->findChildren<QLabel *>()) labels << l->text();
    EXPECT_EQ(labels, (QStringList{"To", "Bcc", "From", "Subject", "Message", "Attachment"}));
    EXPECT_EQ(f->cmdSend->text(), "Send");
    EXPECT_EQ(f->cmdCancel->text(), "Esc Cancel");
    EXPECT_EQ(f->CmdShowKB->text(), "Hide Keyboard");
    // Read the rows off the screen, top to bottom and left to right.
    QMap<int, QMap<int, QString>> rows;
    for (QPushButton *key : f->FraKeyBoard->findChildren<QPushButton *>()) {
        rows[key->y()][key->x()] = key->text();
        EXPECT_GE(key->height(), 38) << key->text().toStdString();
        EXPECT_GE(key->width(), 38) << key->text().toStdString();
    }
    QStringList seen;
    for (const auto &row : rows) seen << QStringList(row.values()).join(' ');
    EXPECT_EQ(seen,
              (QStringList{"1 2 3 4 5 6 7 8 9 0", "Q W E R T Y U I O P", "A S D F G H J K L _",
                           "Z X C V B N M - . @", "Upper Case Space Back Space Clear"}));
    for (int i = 0; i < 41; ++i)
        EXPECT_EQ(f->cmdKeyPad[i]->property("Tag").toString(),
                  i == 39 ? "" : f->cmdKeyPad[i]->text());
}

TEST_F(MailScreenTest, KeyboardTypesIntoTheBoxLastTouched)
{
    auto f = open();
    keys(*f, "HI");
    EXPECT_TRUE(f->txtTo->text().isEmpty()) << "no box touched yet: nothing happens";

    touch(f->TxtBody);
    keys(*f, "HI");
    EXPECT_EQ(f->TxtBody->toPlainText(), "hi");
    EXPECT_EQ(f->FraKeyBoard->title(), "Message");

    QTest::mouseClick(f->cmdEdit[2], Qt::LeftButton);
    EXPECT_EQ(f->cmdEdit[2]->text(), "Lower Case");
    keys(*f, "HI");
    EXPECT_EQ(f->TxtBody->toPlainText(), "hiHI");
    QTest::mouseClick(f->cmdEdit[2], Qt::LeftButton);
    EXPECT_EQ(f->cmdEdit[2]->text(), "Upper Case");

    QTest::mouseClick(f->cmdEdit[0], Qt::LeftButton);
    EXPECT_EQ(f->TxtBody->toPlainText(), " ");
    keys(*f, "A");
    EXPECT_EQ(f->TxtBody->toPlainText(), " a") << "Clear leaves one blank";
    QTest::mouseClick(f->cmdEdit[1], Qt::LeftButton);
    QTest::mouseClick(f->cmdEdit[1], Qt::LeftButton);
    QTest::mouseClick(f->cmdEdit[1], Qt::LeftButton);
    EXPECT_EQ(f->TxtBody->toPlainText(), "") << "an empty box stays empty";

    const QList<QPair<QWidget *, QString>> targets{{f->txtTo, "To"},
                                                   {f->txtFrom, "From"},
                                                   {f->TxtSubject, "Subject"},
                                                   {f->txtAttach, "Attach"}};
    for (const auto &[box, caption] : targets) {
        touch(box);
        EXPECT_EQ(f->FraKeyBoard->title(), caption);
        keys(*f, "7 Q");
    }
    EXPECT_EQ(f->txtTo->text(), "7 q");
    EXPECT_EQ(f->txtAttach->text(), "7 q");
    EXPECT_EQ(f->txtAttach->cursorPosition(), 3) << "the cursor stays behind the text";

    touch(f->TxtCC);
    EXPECT_EQ(f->FraKeyBoard->title(), "Attach") << "Bcc is no target of the keyboard";
    keys(*f, "X");
    EXPECT_TRUE(f->TxtCC->text().isEmpty());
    EXPECT_EQ(f->txtAttach->text(), "7 qx");
}

TEST_F(MailScreenTest, HidingAndShowingTheKeyboardReturnsTheHeight)
{
    auto f = open();
    const int full = f->height();
    QTest::mouseClick(f->CmdShowKB, Qt::LeftButton);
    EXPECT_TRUE(f->FraKeyBoard->isHidden());
    EXPECT_EQ(f->CmdShowKB->text(), "Show Keyboard");
    EXPECT_NEAR(f->height(), full * 2.0 / 3.0, 1);
    QTest::mouseClick(f->CmdShowKB, Qt::LeftButton);
    EXPECT_TRUE(f->FraKeyBoard->isVisible());
    EXPECT_EQ(f->CmdShowKB->text(), "Hide Keyboard");
    EXPECT_NEAR(f->height(), full, 2);
}

TEST_F(MailScreenTest, AttachmentsChosenTwiceAreJoinedByAComma)
{
    auto f = open();
    const QString first = file("first.txt", "1");
    const QString second = file("second.bat", "2");
    dialogs.answerText(first);
    dialogs.answerText(second);
    dialogs.answerText(QString());
    for (int i = 0; i < 3; ++i) QTest::mouseClick(f->Command1, Qt::LeftButton);
    EXPECT_EQ(f->txtAttach->text(), first + "," + second) << "a cancelled choice adds nothing";
    const QList<Box> shown = boxes();
    ASSERT_EQ(shown.size(), 3);
    EXPECT_EQ(shown[0].kind, "open");
    EXPECT_EQ(shown[0].text,
              dataPath() + "|All Files (*.*)|*.*|PDF and Text Files (*.pdf *.txt)|*.pdf;*.txt|"
                           "Batch Files (*.bat)|*.bat");
    EXPECT_EQ(shown[0].selectedFilter, 2);
}

TEST_F(MailScreenTest, WhileSendingTheScreenPaintsButCannotBeLeft)
{
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    settings("127.0.0.1", QString::number(silent.serverPort()), "No");
    mail::transferTuning().timeoutSeconds = 1;
    auto f = open();
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
    QTest::mouseClick(f->cmdSend, Qt::LeftButton);
    EXPECT_TRUE(triedToLeave);
    EXPECT_TRUE(f->isVisible());
    const QList<Box> shown = boxes();
    ASSERT_EQ(shown.size(), 1) << "one send, one box";
    EXPECT_TRUE(shown[0].text.startsWith("28 ")) << shown[0].text.toStdString();
    EXPECT_TRUE(shown[0].text.contains("did not answer")) << "the server timed out";
    EXPECT_EQ(shown[0].title, "Error sending Email");
    EXPECT_TRUE(shown[0].text.endsWith(
        "\r\nServer: 127.0.0.1\r\nPort:" + QString::number(silent.serverPort()) +
        "\r\nUser:" + SmtpPeer::kUser));
    EXPECT_FALSE(shown[0].text.contains(SmtpPeer::kPassword));
    EXPECT_TRUE(f->isEnabled());
    EXPECT_EQ(f->TxtBody->toPlainText(), "kept") << "nothing typed is lost";

    QTest::keyClick(f->txtTo, Qt::Key_Escape);
    EXPECT_FALSE(f->isVisible());
    EXPECT_EQ(f->result(), QDialog::Rejected);
}
