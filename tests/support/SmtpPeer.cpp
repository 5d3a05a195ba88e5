#include "support/SmtpPeer.h"
#include <QFile>
#include <QJsonDocument>
#include <QTcpServer>

namespace testing_support {

namespace {

// aiosmtpd's command line has no AUTH and no TLS, so the server is a few lines of
// its own, which also keeps each message as one line of JSON.
const char *const kServer = R"(
import base64, email, json, logging, ssl, sys, threading, warnings
warnings.simplefilter('ignore')
logging.disable(logging.CRITICAL)
from email import policy
from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult, LoginPassword
port, out, cert, key, user, password, mode = sys.argv[1:8]
def check(server, session, envelope, mechanism, data):
    return AuthResult(success=isinstance(data, LoginPassword) and data.login.decode() == user
                      and data.password.decode() == password, handled=False)
class Keeper:
    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.startswith('nobody@'):
            return '550 5.1.1 No such user here'
        envelope.rcpt_tos.append(address)
        return '250 OK'
    async def handle_DATA(self, server, session, envelope):
        content = envelope.content.replace(b'\r\n', b'\n')
        m = email.message_from_bytes(content, policy=policy.default)
        parts = [p for p in m.walk() if not p.is_multipart()]
        body = next((p for p in parts if p.get_filename() is None
                     and p.get_content_type() == 'text/plain'), None)
        files = [{'filename': p.get_filename() or '', 'type': p.get_content_type(),
                  'data': base64.b64encode(p.get_payload(decode=True) or b'').decode()}
                 for p in parts if p is not body]
        with open(out, 'a') as f:
            print(json.dumps({'from': envelope.mail_from, 'to': envelope.rcpt_tos,
                              'headers': {k.lower(): str(v) for k, v in m.items()},
                              'body': body.get_content() if body else '',
                              'attachments': files}), file=f)
        return '250 OK'
# A context that can also be a client: the controller greets its own server.
context = ssl.SSLContext(ssl.PROTOCOL_TLS)
context.load_cert_chain(cert, key)
# Over smtps the whole connection is secure, but the server only counts STARTTLS.
secure = {'plain': None, 'smtps': {'ssl_context': context, 'auth_require_tls': False},
          'starttls': {'tls_context': context, 'require_starttls': True}}[mode]
Controller(Keeper(), hostname='127.0.0.1', port=int(port),
           **(dict(secure, auth_required=True, authenticator=check) if secure else {})).start()
print('ready', flush=True)
threading.Event().wait()
)";

} // namespace

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
                   {"-c", kServer, QString::number(m_port), m_dir.filePath("mail.json"),
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
