#include "support/SmtpPeer.h"
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

namespace testing_support {

namespace {

// Debian's interpreter: other ones lack the aiosmtpd module.
const char *const kPython = "/usr/bin/python3";

// The command line has no AUTH, so the secure servers are a few lines of their own.
const char *const kSecureServer = R"(
import logging, ssl, sys, threading, warnings
warnings.simplefilter('ignore')
logging.disable(logging.CRITICAL)
from aiosmtpd.controller import Controller
from aiosmtpd.handlers import Mailbox
from aiosmtpd.smtp import AuthResult, LoginPassword
port, maildir, cert, key, user, password, mode = sys.argv[1:8]
# A context that can also be a client: the controller greets its own server.
context = ssl.SSLContext(ssl.PROTOCOL_TLS)
context.load_cert_chain(cert, key)
def check(server, session, envelope, mechanism, data):
    ok = (isinstance(data, LoginPassword) and data.login.decode() == user
          and data.password.decode() == password)
    return AuthResult(success=ok, handled=False)
# Over smtps the whole connection is secure, but the server only counts STARTTLS.
class Refusing(Mailbox):
    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.startswith('nobody@'):
            return '550 5.1.1 No such user here'
        envelope.rcpt_tos.append(address)
        return '250 OK'
tls = ({'ssl_context': context, 'auth_require_tls': False} if mode == 'smtps'
       else {'tls_context': context, 'require_starttls': True})
Controller(Refusing(maildir), hostname='127.0.0.1', port=int(port), auth_required=True,
           authenticator=check, **tls).start()
threading.Event().wait()
)";

// Reads and removes what the maildir holds, as JSON.
const char *const kReader = R"(
import base64, email, json, mailbox, sys
from email import policy
box, found = mailbox.Maildir(sys.argv[1]), []
for key in sorted(box.keys()):
    m = email.message_from_bytes(box.get_bytes(key), policy=policy.default)
    box.remove(key)
    body, files = None, []
    for part in m.walk():
        if part.is_multipart():
            continue
        if body is None and part.get_filename() is None and part.get_content_type() == 'text/plain':
            body = part.get_content()
        else:
            files.append({'filename': part.get_filename() or '', 'type': part.get_content_type(),
                          'data': base64.b64encode(part.get_payload(decode=True) or b'').decode()})
    found.append({'mailfrom': m.get('X-MailFrom', ''),
                  'rcpttos': [a.strip() for a in m.get('X-RcptTo', '').split(',') if a.strip()],
                  'headers': [[k, str(v)] for k, v in m.items()],
                  'body': body or '', 'attachments': files})
print(json.dumps(found))
)";

} // namespace

SmtpPeer::SmtpPeer(Kind kind)
{
    m_port = freePort();
    const QString maildir = m_dir.filePath("mail");
    if (kind == Plain) {
        start({"-m", "aiosmtpd", "-n", "-l", "127.0.0.1:" + QString::number(m_port), "-c",
               "aiosmtpd.handlers.Mailbox", maildir});
    } else if (makeCertificate()) {
        start({"-c", kSecureServer, QString::number(m_port), maildir, certificate(),
               m_dir.filePath("key.pem"), kUser, kPassword,
               kind == Implicit ? "smtps" : "starttls"});
    }
}

SmtpPeer::~SmtpPeer()
{
    m_server.kill();
    m_server.waitForFinished(5000);
}

bool SmtpPeer::makeCertificate()
{
    if (QProcess::execute("openssl",
                          {"req", "-x509", "-newkey", "ec", "-pkeyopt",
                           "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj",
                           "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout",
                           m_dir.filePath("key.pem"), "-out", certificate()}) == 0)
        return true;
    m_failure = "openssl could not make a certificate";
    return false;
}

bool SmtpPeer::start(const QStringList &arguments)
{
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server.start(kPython, arguments);
    QDeadlineTimer deadline(15000);
    while (!deadline.hasExpired() && m_server.state() != QProcess::NotRunning) {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", static_cast<quint16>(m_port));
        if (socket.waitForConnected(200))
            return m_ready = true;
        QThread::msleep(50);
    }
    m_failure = "the SMTP server did not start (python3-aiosmtpd missing?)";
    return false;
}

QList<QJsonObject> SmtpPeer::take()
{
    QProcess reader;
    reader.start(kPython, {"-c", kReader, m_dir.filePath("mail")});
    QList<QJsonObject> messages;
    if (!reader.waitForFinished(30000) || reader.exitStatus() != QProcess::NormalExit ||
        reader.exitCode() != 0)
        return messages;
    const QByteArray json = reader.readAllStandardOutput();
    for (const QJsonValue &v : QJsonDocument::fromJson(json).array()) messages << v.toObject();
    return messages;
}

int SmtpPeer::freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

} // namespace testing_support
