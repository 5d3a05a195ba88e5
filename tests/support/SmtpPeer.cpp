#include "support/SmtpPeer.h"
#include <QFile>
#include <QJsonDocument>
#include <QTcpServer>

namespace testing_support {

SmtpPeer::SmtpPeer(Kind kind) : m_port(freePort())
{
    const QString key = m_dir.filePath("key.pem");
    if (QProcess::execute("openssl",
                          {"req", "-x509", "-newkey", "ec", "-pkeyopt",
                           "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj",
                           "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout",
                           key, "-out", certificate()}) != 0) {
        m_failure = "openssl could not make a certificate";
        return;
    }
    const char *const modes[] = {"plain", "starttls", "smtps"};
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Debian's interpreter: other ones lack the aiosmtpd module.
    m_server.start("/usr/bin/python3",
                   {HK_SMTP_SERVER, QString::number(m_port), m_dir.filePath("mail.json"),
                    certificate(), key, kUser, kPassword, modes[kind]});
    if (!m_server.waitForReadyRead(15000))
        m_failure = "the SMTP server did not start (python3-aiosmtpd missing?)";
}

SmtpPeer::~SmtpPeer()
{
    m_server.kill();
    m_server.waitForFinished(5000);
}

QList<QJsonObject> SmtpPeer::take()
{
    QFile file(m_dir.filePath("mail.json"));
    QList<QJsonObject> messages;
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray &line : file.readAll().split('\n'))
            if (!line.isEmpty())
                messages << QJsonDocument::fromJson(line).object();
    file.remove();
    return messages;
}

int SmtpPeer::freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

} // namespace testing_support
