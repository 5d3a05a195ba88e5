#pragma once
#include "mail/zelSendMail.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "support/HkTest.h"
#include "support/SmtpPeer.h"
#include <QDir>
#include <QJsonArray>

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
        settings("127.0.0.1", QString::number(p->port()), kind == SmtpPeer::Secure ? "Yes" : "No",
                 SmtpPeer::kPassword, kind == SmtpPeer::Implicit ? "Yes" : "No");
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
