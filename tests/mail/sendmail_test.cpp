#include "mail/MailFixture.h"
#include <curl/curl.h>

using namespace testing_support;

TEST_F(MailTest, SettingsComeFromTheSuitesKeysMisspellingsIncluded)
{
    settings("mail.example.com", "587", "Yes", "pw", "No");
    EXPECT_TRUE(gfbMailSettings_read());
    EXPECT_EQ(gsMailServer, "mail.example.com");
    EXPECT_EQ(gsMailPort, "587");
    EXPECT_EQ(gsMailUser, SmtpPeer::kUser);
    EXPECT_EQ(gsMailPassword, "pw");
    EXPECT_EQ(gsMailSSL, "No");
    EXPECT_EQ(gsMailTLS, "Yes");
    EXPECT_EQ(mail::settingsServer().port, 587);
    EXPECT_TRUE(mail::settingsServer().startTls);

    for (const char *port : {"", "abc", "70000", "0"}) {
        platform::SaveSetting(kSettingsApp, "EMAIL", "SMPTPort", port);
        gfbMailSettings_read();
        EXPECT_EQ(mail::settingsServer().port, 25) << port;
    }
    platform::SaveSetting(kSettingsApp, "EMAIL", "Use TLS", "yes");
    gfbMailSettings_read();
    EXPECT_FALSE(mail::settingsServer().startTls) << "only \"Yes\" exactly turns TLS on";

    for (const char *key : {"SMTPServer", "UserID", "UserPasssword", "Use TLS"}) {
        settings("mail.example.com", "587", "Yes", "pw", "No");
        platform::SaveSetting(kSettingsApp, "EMAIL", key, "");
        EXPECT_FALSE(gfbMailSettings_read()) << key;
    }
    // Incomplete settings say what to do and send nothing.
    const MailResult result = gpSendMail("s", "b", "to@example.com", "", "me@example.com", "");
    EXPECT_FALSE(result.Sent);
    EXPECT_EQ(result.Error.Number, 0);
    const QList<Box> shown = boxes();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0].text, "Your email settings are incomplete.\r\nPlease complete settings in "
                             "Configuration(Station Settings)");
    EXPECT_EQ(shown[0].style, platform::vbOKOnly);
    settings("mail.example.com", "", "No", "pw", "");
    EXPECT_TRUE(gfbMailSettings_read()) << "port and SSL may be empty";
}

TEST_F(MailTest, OneAddressGetsAPlainMimeMessageWithItsAttachments)
{
    SmtpPeer *p = server(SmtpPeer::Plain);
    QByteArray binary;
    for (int i = 0; i < 256 * 40; ++i) binary += static_cast<char>(i % 256);
    const QString pdf = file("Doc1.pdf", "%PDF-1.4\n" + binary);
    const QString text = file("Prices list.txt", "a,b\r\n");
    const QString missing = QDir(dataPath()).filePath("gone.pdf");
    // Long enough for several encoded words, which must not split a character.
    const QString subject = "Preise f\u00fcr M\u00e4rz " + QString(40, QChar(0x20ac));
    const QString body = "Line one, caf\u00e9\nLine two\r\n.\nnot the end";
    const MailResult result = gpSendMail(subject, body, " to@example.com ", "", "me@example.com",
                                         pdf + "," + missing + ", ," + text);
    ASSERT_TRUE(result.Sent) << result.Error.Description.toStdString();

    const QJsonObject m = onlyMessage(p);
    EXPECT_EQ(m["from"].toString(), "me@example.com");
    EXPECT_EQ(rcpt(m), QStringList{"to@example.com"});
    EXPECT_EQ(header(m, "From"), "me@example.com");
    EXPECT_EQ(header(m, "To"), "to@example.com");
    EXPECT_EQ(header(m, "Subject").toStdString(), subject.toStdString());
    EXPECT_FALSE(header(m, "Date").isEmpty());
    EXPECT_TRUE(header(m, "Message-ID").endsWith("@example.com>"));
    EXPECT_FALSE(m["headers"].toObject().contains("bcc"));
    EXPECT_EQ(m["body"].toString().toStdString(),
              QString("Line one, caf\u00e9\nLine two\n.\nnot the end").toStdString());

    const QJsonArray files = m["attachments"].toArray();
    ASSERT_EQ(files.size(), 2) << "the missing file and the blank part are left out";
    EXPECT_EQ(files[0]["filename"].toString(), "Doc1.pdf");
    EXPECT_EQ(files[0]["type"].toString(), "application/pdf");
    EXPECT_EQ(QByteArray::fromBase64(files[0]["data"].toString().toLatin1()),
              "%PDF-1.4\n" + binary);
    EXPECT_EQ(files[1]["filename"].toString(), "Prices list.txt");
    EXPECT_EQ(QByteArray::fromBase64(files[1]["data"].toString().toLatin1()), "a,b\r\n");
}

TEST_F(MailTest, BadAddressesAndLineBreaksAreRefusedBeforeAnythingIsSent)
{
    SmtpPeer *p = server(SmtpPeer::Plain);
    struct Case {
        QString subject, to, bcc, from;
        long number;
        QString mentions;
    };
    const QList<Case> cases{
        {"Hi\r\nBcc: evil@example.com", "to@example.com", "", "me@example.com", mail::LineBreak,
         "line break"},
        {"Hi", "to@example.com\r\nBcc: evil@example.com", "", "me@example.com", mail::BadAddress,
         "to@example.com"},
        {"Hi", "john doe@example.com", "", "me@example.com", mail::BadAddress, "john doe"},
        {"Hi", "a@example.com;b c@example.com;", "", "me@example.com", mail::BadAddress, "b c"},
        {"Hi", "a@example.com", "", "me@example.com\nX-Evil: 1", mail::BadAddress, "me@"},
        // Pasted with a line end, or any other character that ends a line.
        {"Hi", "to@example.com\n", "", "me@example.com", mail::BadAddress, "line break"},
        {"Hi", "a@example.com", "b@example.com\r;", "me@example.com", mail::BadAddress,
         "line break"},
        {"Hi", "a@example.com;b@example.com\u2028;", "", "me@example.com", mail::BadAddress,
         "b@example.com"},
        {"Hi", "to@example.com", "", "me@example.com\n", mail::BadAddress, "line break"},
        {"Hi\n", "to@example.com", "", "me@example.com", mail::LineBreak, "line break"},
        {"Hi\u2029there", "to@example.com", "", "me@example.com", mail::LineBreak, "line break"},
        {"Hi", QString(250, 'a') + "@example.com", "", "me@example.com", mail::BadAddress, "aaa"},
        {"Hi", "", "", "me@example.com", mail::NoRecipient, "To"},
        {"Hi", "a@example.com;", "", "  ", mail::NoSender, "From"},
    };
    for (const Case &c : cases) {
        const MailResult result = gpSendMail(c.subject, "b", c.to, c.bcc, c.from, "");
        EXPECT_FALSE(result.Sent);
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
    const QStringList subjects{
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
        const MailResult result =
            gpSendMail(subject, "b", "to@example.com", "", "me@example.com", "");
        ASSERT_TRUE(result.Sent) << result.Error.Description.toStdString();
        EXPECT_EQ(header(onlyMessage(p), "Subject").toStdString(), subject.toStdString());
    }
}

// One address is the addressee; a list goes out as blind copies to the sender.
TEST_F(MailTest, EachServerTakesTheMessageAndListsGoOutAsBlindCopies)
{
    const struct {
        SmtpPeer::Kind kind;
        QString to, bcc;
        QStringList recipients;
    } sends[] = {
        {SmtpPeer::Secure, "to@example.com", "", {"to@example.com"}},
        {SmtpPeer::Implicit, "to@example.com", "", {"to@example.com"}},
        // A list in To replaces what was typed in Bcc.
        {SmtpPeer::Plain,
         "a@example.com;b@example.com;",
         "typed@example.com;",
         {"me@example.com", "a@example.com", "b@example.com"}},
        // Blind copies make the address in To unused.
        {SmtpPeer::Plain, "a@example.com", "b@example.com;", {"me@example.com", "b@example.com"}},
        // Empty parts are left out; a last part without ";" counts.
        {SmtpPeer::Plain,
         "",
         " b@example.com ;; c@example.com",
         {"me@example.com", "b@example.com", "c@example.com"}},
    };
    for (const auto &s : sends) {
        SmtpPeer *p = server(s.kind);
        const MailResult result = gpSendMail("s", "b", s.to, s.bcc, "me@example.com", "");
        ASSERT_TRUE(result.Sent) << s.kind << result.Error.Description.toStdString();
        const QJsonObject m = onlyMessage(p);
        EXPECT_EQ(rcpt(m), s.recipients) << s.to.toStdString();
        EXPECT_EQ(header(m, "To"), s.recipients[0]);
        EXPECT_FALSE(m["headers"].toObject().contains("bcc"));
        for (const char *name : {"From", "To", "Subject", "Cc"})
            for (const QString &hidden : s.recipients.mid(1))
                EXPECT_FALSE(header(m, name).contains(hidden)) << "a blind copy shows in " << name;
    }
}

TEST_F(MailTest, TransferFailuresComeBackWithNumberAndAdvice)
{
    struct Case {
        SmtpPeer::Kind kind;
        QString tls, password, port;
        long number;
        QString mentions;
        QString to = "to@example.com";
    };
    const QString down = QString::number(SmtpPeer::freePort());
    const QList<Case> cases{
        {SmtpPeer::Secure, "Yes", "wrong-Pw", "", CURLE_LOGIN_DENIED, "user or the password"},
        {SmtpPeer::Secure, "No", SmtpPeer::kPassword, "", CURLE_SEND_ERROR, "\"Use TLS\""},
        {SmtpPeer::Plain, "Yes", SmtpPeer::kPassword, "", CURLE_USE_SSL_FAILED, "\"Use TLS\""},
        {SmtpPeer::Plain, "No", SmtpPeer::kPassword, down, CURLE_COULDNT_CONNECT, "running"},
        {SmtpPeer::Secure, "Yes", SmtpPeer::kPassword, "", CURLE_SEND_ERROR,
         "refused a recipient. Check the addresses; nothing was sent. The server said: 550 5.1.1 "
         "No such user here",
         "nobody@example.com"},
        // A certificate nobody vouches for.
        {SmtpPeer::Secure, "Yes", SmtpPeer::kPassword, "", CURLE_PEER_FAILED_VERIFICATION,
         "secure connection"},
    };
    for (const Case &c : cases) {
        SmtpPeer *p = server(c.kind);
        settings("127.0.0.1", c.port.isEmpty() ? QString::number(p->port()) : c.port, c.tls,
                 c.password);
        if (c.number == CURLE_PEER_FAILED_VERIFICATION)
            mail::transferTuning().caFile.clear();
        const MailResult result = gpSendMail("s", "b", c.to, "", "me@example.com", "");
        EXPECT_FALSE(result.Sent);
        EXPECT_EQ(result.Error.Number, c.number) << result.Error.Description.toStdString();
        EXPECT_TRUE(result.Error.Description.contains(c.mentions))
            << result.Error.Description.toStdString();
        EXPECT_FALSE(result.Error.Description.contains(c.password));
        EXPECT_TRUE(p->take().isEmpty());
    }
}
