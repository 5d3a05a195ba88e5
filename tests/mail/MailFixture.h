#pragma once
#include "mail/zelSendMail.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "support/HkTest.h"
#include "support/SmtpPeer.h"
#include <QDir>
#include <QJsonArray>

namespace testing_support {

inline QStringList rcpt(const QJsonObject &m)
{
    return m["to"].toVariant().toStringList();
}
inline QString header(const QJsonObject &m, const QString &name)
{
    return m["headers"][name.toLower()].toString();
}

class MailTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        mail::transferTuning() = {};
    }
    void settings(const QString &server, const QString &port, const QString &tls,
                  const QString &password = SmtpPeer::kPassword, const QString &ssl = "No")
    {
        const QString keys[] = {"SMTPServer",    "SMPTPort", "UserID",
                                "UserPasssword", "Use SSL",  "Use TLS"};
        const QString values[] = {server, port, SmtpPeer::kUser, password, ssl, tls};
        for (int i = 0; i < 6; ++i)
            platform::SaveSetting(kSettingsApp, "EMAIL", keys[i], values[i]);
    }
    // One server of each kind for the whole program: they take a moment to start.
    SmtpPeer *server(SmtpPeer::Kind kind)
    {
        static std::map<SmtpPeer::Kind, std::unique_ptr<SmtpPeer>> peers;
        std::unique_ptr<SmtpPeer> &p = peers[kind];
        if (!p)
            p = std::make_unique<SmtpPeer>(kind);
        EXPECT_EQ(p->failure().toStdString(), "");
        p->take();
        settings("127.0.0.1", QString::number(p->port()), kind == SmtpPeer::Secure ? "Yes" : "No",
                 SmtpPeer::kPassword, kind == SmtpPeer::Implicit ? "Yes" : "No");
        mail::transferTuning().caFile = p->certificate();
        return p.get();
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
