#pragma once
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QTemporaryDir>

namespace testing_support {

// A real SMTP server on a free loopback port (Debian's aiosmtpd) that keeps what
// arrives. Secure: AUTH and STARTTLS required; Implicit: AUTH over TLS from the
// first byte (smtps); both with a certificate made for the test. Every kind
// refuses the recipients "nobody@...". The server is support/smtp_server.py.
class SmtpPeer {
public:
    enum Kind { Plain, Secure, Implicit };
    static constexpr const char *kUser = "clerk";
    static constexpr const char *kPassword = "s3cret-Pw";

    explicit SmtpPeer(Kind kind);
    ~SmtpPeer();
    // Why the server does not run; empty when it does.
    QString failure() const { return m_failure; }
    int port() const { return m_port; }
    // The certificate a client must trust to talk to the secure servers.
    QString certificate() const { return m_dir.filePath("cert.pem"); }
    // Each message received since the last call, as Python's email package reads
    // it: "from", "to" [...], "headers" {lower-case name: decoded value}, "body",
    // "attachments" [{"filename", "type", "data" (base64)}].
    QList<QJsonObject> take();
    // A loopback port nobody listens on.
    static int freePort();

private:
    QTemporaryDir m_dir;
    QProcess m_server;
    int m_port = 0;
    QString m_failure;
};

} // namespace testing_support
