#pragma once
#include "mail/frmSendMail.h"
#include "mail/zelSendMail.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "support/HkTest.h"
#include "support/SmtpPeer.h"
#include <QDir>
#include <QJsonArray>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace testing_support {

// One server of each kind for the whole suite: they take a moment to start.
inline SmtpPeer *peer(SmtpPeer::Kind kind)
{
    static std::map<SmtpPeer::Kind, std::unique_ptr<SmtpPeer>> peers;
    auto &p = peers[kind];
    if (!p)
        p = std::make_unique<SmtpPeer>(kind);
    return p.get();
}

inline QStringList headerNames(const QJsonObject &message)
{
    QStringList names;
    for (const QJsonValue &h : message["headers"].toArray()) names << h.toArray()[0].toString();
    return names;
}

inline QString header(const QJsonObject &message, const QString &name)
{
    for (const QJsonValue &h : message["headers"].toArray())
        if (h.toArray()[0].toString().compare(name, Qt::CaseInsensitive) == 0)
            return h.toArray()[1].toString();
    return QString();
}

inline QStringList rcpt(const QJsonObject &message)
{
    QStringList list;
    for (const QJsonValue &v : message["rcpttos"].toArray()) list << v.toString();
    return list;
}

// A touch on a box of the mail screen, which makes it the keyboard's target.
inline void touch(QWidget *box)
{
    auto *body = qobject_cast<QPlainTextEdit *>(box);
    QTest::mouseClick(body ? body->viewport() : box, Qt::LeftButton);
}

// Keys of the mail screen's keyboard, by the characters they type.
inline void keys(frmSendMail &f, const QString &letters)
{
    for (QChar c : letters) {
        const int index = c == ' ' ? 39 : c.isDigit() ? c.digitValue() : 12 + c.unicode() - 'A';
        QTest::mouseClick(f.cmdKeyPad[index], Qt::LeftButton);
    }
}

// A touch on the box, then its text typed on the on-screen keyboard.
inline void type(frmSendMail &f, QWidget *box, const QString &text)
{
    touch(box);
    for (QChar c : text) {
        QPushButton *key = nullptr;
        for (QPushButton *k : f.cmdKeyPad)
            if (k->property("Tag").toString() == c.toUpper() || (c == ' ' && k->text() == "Space"))
                key = k;
        ASSERT_TRUE(key) << "no key for " << QString(c).toStdString();
        QTest::mouseClick(key, Qt::LeftButton);
    }
}

class MailTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        mail::transferTuning() = {};
    }
    void TearDown() override
    {
        mail::transferTuning() = {};
        HkTest::TearDown();
    }
    void settings(const QString &server, const QString &port, const QString &tls,
                  const QString &password = SmtpPeer::kPassword, const QString &ssl = "No")
    {
        const QList<QPair<QString, QString>> values{
            {"SMTPServer", server},      {"SMPTPort", port}, {"UserID", SmtpPeer::kUser},
            {"UserPasssword", password}, {"Use SSL", ssl},   {"Use TLS", tls}};
        for (const auto &[key, value] : values)
            platform::SaveSetting(kSettingsApp, "EMAIL", key, value);
    }
    SmtpPeer *server(SmtpPeer::Kind kind)
    {
        SmtpPeer *p = peer(kind);
        EXPECT_TRUE(p->running()) << p->failure().toStdString();
        p->take();
        if (kind == SmtpPeer::Plain)
            settings("127.0.0.1", QString::number(p->port()), "No");
        else
            settings("127.0.0.1", QString::number(p->port()),
                     kind == SmtpPeer::Secure ? "Yes" : "No", SmtpPeer::kPassword,
                     kind == SmtpPeer::Implicit ? "Yes" : "No");
        mail::transferTuning().caFile = p->certificate();
        return p;
    }
    QJsonObject onlyMessage(SmtpPeer *p)
    {
        const QList<QJsonObject> got = p->take();
        EXPECT_EQ(got.size(), 1);
        return got.value(0);
    }
    QString file(const QString &name, const QByteArray &bytes)
    {
        writeDataFile(name, bytes);
        return QDir(dataPath()).filePath(name);
    }
};

} // namespace testing_support
