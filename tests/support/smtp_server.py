# The SMTP server of the mail tests (tests/support/SmtpPeer.h): aiosmtpd's command
# line has no AUTH and no TLS, so it is a few lines of its own, which also keep each
# message as one line of JSON.
#   smtp_server.py PORT OUT CERT KEY USER PASSWORD plain|starttls|smtps
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
