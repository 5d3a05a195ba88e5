#include "mail/MailFixture.h"
#include "support/OneBox.h"
#include <curl/curl.h>

using namespace testing_support;

TEST_F(MailTest, SettingsComeFromTheSuitesKeysMisspellingsIncluded)
{
    settings("mail.example.com", "587", "Yes", "pw", "No");
    EXPECT_TRUE(gfbMailSettings_read());
    EXPECT_EQ(mail::settingsServer().port, 587);
    EXPECT_TRUE(mail::settingsServer().startTls);
    for (const char *port : {"abc", "70000", "0"}) {
        platform::SaveSetting(kSettingsApp, "EMAIL", "SMPTPort", port);
        gfbMailSettings_read();
        EXPECT_EQ(mail::settingsServer().port, 25) << port;
    }

    for (const char *key : {"SMTPServer", "UserID", "UserPasssword", "Use TLS"}) {
        settings("mail.example.com", "587", "Yes", "pw", "No");
        platform::SaveSetting(kSettingsApp, "EMAIL", key, "");
        EXPECT_FALSE(gfbMailSettings_read()) << key;
    }
    gpSendMail("s", "b", "to@example.com", "", "me@example.com", "");
    EXPECT_TRUE(oneBox(boxes(),
                       "Your email settings are incomplete.\r\nPlease complete settings in "
                       "Configuration(Station Settings)",
                       platform::vbOKOnly));
    settings("mail.example.com", "", "No", "pw", "");
    EXPECT_TRUE(gfbMailSettings_read()) << "port and SSL may be empty";
}

TEST_F(MailTest, BadAddressesAndLineBreaksAreRefusedBeforeAnythingIsSent)
{
    SmtpPeer *p = server(SmtpPeer::Plain);
    const struct {
        QString to;
        long number;
        QString mentions, subject = "Hi", bcc = "", from = "me@x.biz";
    } cases[] = {
        {"to@x.biz", mail::LineBreak, "line break", "Hi\r\nBcc: evil@x.biz"},
        {"to@x.biz", mail::LineBreak, "line break", "Hi\u2029there"},
        {"to@x.biz", mail::LineBreak, "line break", "Hi\n"},
        {"to@x.biz\r\nBcc: evil@x.biz", mail::BadAddress,
         "\"to@x.biz  Bcc: evil@x.biz\" holds a line break"},
        {"a@x.biz;b c@x.biz;", mail::BadAddress, "b c"},
        {"a@x.biz", mail::BadAddress, "line break", "Hi", "b@x.biz\r;"},
        {"to@x.biz", mail::BadAddress, "line break", "Hi", "", "me@x.biz\u2028"},
        {"to@x.biz", mail::BadAddress, "me@", "Hi", "", "me@x.biz\nX-Evil: 1"},
        {QString(250, 'a') + "@x.biz", mail::BadAddress, "aaa"},
        {"", mail::NoRecipient, "To"},
        {"a@x.biz;", mail::NoSender, "From", "Hi", "", "  "},
    };
    for (const auto &c : cases) {
        const MailResult result = gpSendMail(c.subject, "b", c.to, c.bcc, c.from, "");
        EXPECT_EQ(result.Error.Number, c.number) << c.to.toStdString();
        EXPECT_TRUE(result.Error.Description.contains(c.mentions))
            << result.Error.Description.toStdString();
    }
    EXPECT_TRUE(p->take().isEmpty());
}

TEST_F(MailTest, LongSubjectsAreFoldedAndArriveWhole)
{
    SmtpPeer *p = server(SmtpPeer::Plain);
    QString words;
    for (int i = 0; words.size() < 2000; ++i) words += QString("word%1 ").arg(i);
    const QString subjects[] = {
        words.trimmed(),                                            // folded at its blanks
        "Lunch " + QString(2000, 'x') + " end",                     // a word no line can hold
        QString(700, QChar(0x20ac)) + " Preise f\u00fcr M\u00e4rz", // encoded words
        QString(100, ' ') + "   spaced    out   " + QString(100, ' '),
    };
    for (const QString &subject : subjects) {
        const QByteArray field = mail::headerField("Subject", subject);
        for (const QByteArray &line : field.split('\n'))
            EXPECT_LE(line.size(), 79) << "with its CR: " << line.toStdString();
        EXPECT_FALSE(field.contains("\r\n\r\n") || field.endsWith("\r\n"));
        EXPECT_TRUE(gpSendMail(subject, "b", "to@example.com", "", "me@example.com", "").Sent);
        EXPECT_EQ(header(onlyMessage(p), "Subject").toStdString(), subject.toStdString());
    }
}

// One address is the addressee; a list goes out as blind copies to the sender.
TEST_F(MailTest, EachServerTakesAMimeMessageWithItsAttachmentsAndListsGoOutAsBlindCopies)
{
    const QString me = "me@example.com";
    QByteArray binary = "%PDF-1.4\n";
    for (int i = 0; i < 256 * 40; ++i) binary += static_cast<char>(i % 256);
    // The missing file and the blank part are left out.
    const QString files = file("Doc1.pdf", binary) + "," + QDir(dataPath()).filePath("gone.pdf") +
                          ", ," + file("Prices list.txt", "a,b\r\n");
    const struct {
        SmtpPeer::Kind kind;
        QString to, bcc;
        QStringList recipients;
    } sends[] = {
        {SmtpPeer::Plain, " to@example.com ", "", {"to@example.com"}},
        {SmtpPeer::Secure, "to@example.com", "", {"to@example.com"}},
        {SmtpPeer::Implicit, "to@example.com", "", {"to@example.com"}},
        // A list in To replaces what was typed in Bcc.
        {SmtpPeer::Plain, "a@x.biz;b@x.biz;", "t@x.biz;", {me, "a@x.biz", "b@x.biz"}},
        // Blind copies make the address in To unused; empty parts are left out; a last
        // part without ";" counts.
        {SmtpPeer::Plain, "a@x.biz", " b@x.biz ;; c@x.biz", {me, "b@x.biz", "c@x.biz"}},
    };
    for (const auto &s : sends) {
        SmtpPeer *p = server(s.kind);
        const MailResult result = gpSendMail("s", "Line one, caf\u00e9\nLine two\r\n.\nnot the end",
                                             s.to, s.bcc, me, files);
        ASSERT_TRUE(result.Sent) << s.kind << result.Error.Description.toStdString();
        const QJsonObject m = onlyMessage(p);
        EXPECT_EQ(rcpt(m), s.recipients) << s.to.toStdString();
        EXPECT_EQ(header(m, "To"), s.recipients[0]);
        for (const QString &hidden : s.recipients.mid(1))
            for (const QJsonValue &value : m["headers"].toObject())
                EXPECT_FALSE(value.toString().contains(hidden)) << "a blind copy shows";
        EXPECT_EQ(m["from"].toString(), me);
        EXPECT_EQ(header(m, "From"), me);
        EXPECT_FALSE(header(m, "Date").isEmpty());
        EXPECT_TRUE(header(m, "Message-ID").endsWith("@example.com>"));
        EXPECT_EQ(m["body"].toString().toStdString(),
                  QString("Line one, caf\u00e9\nLine two\n.\nnot the end").toStdString());
        const QJsonArray sent = m["attachments"].toArray();
        ASSERT_EQ(sent.size(), 2);
        EXPECT_EQ(sent[0]["filename"].toString(), "Doc1.pdf");
        EXPECT_EQ(sent[0]["type"].toString(), "application/pdf");
        EXPECT_EQ(QByteArray::fromBase64(sent[0]["data"].toString().toLatin1()), binary);
        EXPECT_EQ(sent[1]["filename"].toString(), "Prices list.txt");
        EXPECT_EQ(QByteArray::fromBase64(sent[1]["data"].toString().toLatin1()), "a,b\r\n");
    }
}

TEST_F(MailTest, TransferFailuresComeBackWithNumberAndAdvice)
{
    const struct {
        SmtpPeer::Kind kind;
        long number;
        QString mentions, tls = "Yes", password = SmtpPeer::kPassword, port = "", to = "to@x.biz";
    } cases[] = {
        {SmtpPeer::Secure, CURLE_LOGIN_DENIED, "user or the password", "Yes", "wrong-Pw"},
        {SmtpPeer::Secure, CURLE_SEND_ERROR, "\"Use TLS\"", "No"},
        {SmtpPeer::Plain, CURLE_USE_SSL_FAILED, "\"Use TLS\""},
        {SmtpPeer::Plain, CURLE_COULDNT_CONNECT, "running", "No", SmtpPeer::kPassword,
         QString::number(SmtpPeer::freePort())},
        {SmtpPeer::Secure, CURLE_SEND_ERROR,
         "refused a recipient. Check the addresses; nothing was sent. The server said: 550 5.1.1 "
         "No such user here",
         "Yes", SmtpPeer::kPassword, "", "nobody@x.biz"},
        // A certificate nobody vouches for.
        {SmtpPeer::Secure, CURLE_PEER_FAILED_VERIFICATION, "secure connection"},
    };
    for (const auto &c : cases) {
        SmtpPeer *p = server(c.kind);
        settings("127.0.0.1", c.port.isEmpty() ? QString::number(p->port()) : c.port, c.tls,
                 c.password);
        if (c.number == CURLE_PEER_FAILED_VERIFICATION)
            mail::transferTuning().caFile.clear();
        const MailResult result = gpSendMail("s", "b", c.to, "", "me@example.com", "");
        EXPECT_EQ(result.Error.Number, c.number) << result.Error.Description.toStdString();
        EXPECT_TRUE(result.Error.Description.contains(c.mentions))
            << result.Error.Description.toStdString();
        EXPECT_FALSE(result.Error.Description.contains(c.password));
        EXPECT_TRUE(p->take().isEmpty());
    }
}
