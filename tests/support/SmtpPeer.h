#pragma once
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace testing_support {

// A real SMTP server on a free loopback port: Debian's aiosmtpd, writing what
// arrives into a maildir. Secure: AUTH and STARTTLS required; Implicit: AUTH
// over TLS from the first byte (smtps). Both with a certificate made for the test,
// and both refuse every recipient "nobody@...".
class SmtpPeer {
public:
    enum Kind { Plain, Secure, Implicit };
    static constexpr const char *kUser = "clerk";
    static constexpr const char *kPassword = "s3cret-Pw";

    explicit SmtpPeer(Kind kind);
    ~SmtpPeer();
    bool running() const { return m_ready; }
    QString failure() const { return m_failure; }
    int port() const { return m_port; }
    // The certificate a client must trust to talk to the secure server.
    QString certificate() const { return m_dir.filePath("cert.pem"); }

    // Each message received since the last call, parsed by Python's email
    // package: "mailfrom", "rcpttos", "headers" [[name, decoded value]...],
    // "body", "attachments" [{"filename", "type", "data" (base64)}].
    QList<QJsonObject> take();

    // A loopback port nobody listens on.
    static int freePort();

private:
    bool makeCertificate();
    bool start(const QStringList &arguments);

    QTemporaryDir m_dir;
    QProcess m_server;
    int m_port = 0;
    bool m_ready = false;
    QString m_failure;
};

} // namespace testing_support
