#include "mail/SmtpTransfer.h"
#include <QDateTime>
#include <QEventLoop>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QSysInfo>
#include <QThread>
#include <QUuid>
#include <curl/curl.h>
#include <memory>
#include <mutex>

namespace mail {

namespace {

using Easy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using Mime = std::unique_ptr<curl_mime, decltype(&curl_mime_free)>;
using List = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

// What a transfer keeps beyond the curl handle: the server's last refusal.
struct Transcript {
    QByteArray lastRefusal;
    char errorText[CURL_ERROR_SIZE] = {};
};

void initialiseOnce()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void append(List &list, const QByteArray &line)
{
    list.reset(curl_slist_append(list.release(), line.constData()));
}

bool isAscii(const QByteArray &bytes)
{
    for (char c : bytes)
        if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7e)
            return false;
    return true;
}

// Only replies read from the server are kept: what we send holds the password.
int onDebug(CURL *, curl_infotype type, char *data, size_t size, void *user)
{
    if (type != CURLINFO_HEADER_IN)
        return 0;
    static const QRegularExpression refusal("^[45][0-9][0-9][ -]");
    const QByteArray text(data, static_cast<qsizetype>(size));
    for (const QByteArray &line : text.split('\n'))
        if (refusal.match(QString::fromLatin1(line)).hasMatch())
            static_cast<Transcript *>(user)->lastRefusal = line.trimmed();
    return 0;
}

QByteArray crlfLines(const QString &text)
{
    QString s = text;
    s.replace("\r\n", "\n").replace('\r', '\n').replace('\n', "\r\n");
    return s.toUtf8();
}

// The name this machine greets the server with; a plain host name or "localhost".
QString helloName()
{
    static const QRegularExpression plain("^[A-Za-z0-9.-]+$");
    const QString name = QSysInfo::machineHostName();
    return plain.match(name).hasMatch() ? name : QStringLiteral("localhost");
}

QByteArray serverUrl(const Server &server)
{
    QString host = server.host.trimmed();
    if (host.contains(':') && !host.startsWith('['))
        host = '[' + host + ']';
    const QString scheme = server.implicitTls ? "smtps://" : "smtp://";
    return (scheme + host + ':' + QString::number(server.port) + '/' + helloName()).toUtf8();
}

QByteArray messageId(const QString &from)
{
    const QString domain = from.section('@', -1);
    return '<' + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1() + '@' +
           domain.toLatin1() + '>';
}

List headers(const Message &message)
{
    List list(nullptr, curl_slist_free_all);
    append(list, "Date: " + QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1());
    append(list, "From: " + message.from.toLatin1());
    append(list, "To: " + message.to.toLatin1());
    append(list, headerField("Subject", message.subject));
    append(list, "Message-ID: " + messageId(message.from));
    return list;
}

void addAttachment(curl_mime *mime, const Attachment &file)
{
    static const QMimeDatabase types;
    curl_mimepart *part = curl_mime_addpart(mime);
    curl_mime_data(part, file.bytes.constData(), static_cast<size_t>(file.bytes.size()));
    curl_mime_filename(part, headerText(file.name).constData());
    curl_mime_type(part, types.mimeTypeForFile(file.name, QMimeDatabase::MatchExtension)
                             .name()
                             .toLatin1()
                             .constData());
    curl_mime_encoder(part, "base64");
}

Mime content(CURL *curl, const Message &message)
{
    Mime mime(curl_mime_init(curl), curl_mime_free);
    curl_mimepart *text = curl_mime_addpart(mime.get());
    const QByteArray body = crlfLines(message.body);
    curl_mime_data(text, body.constData(), static_cast<size_t>(body.size()));
    curl_mime_type(text, "text/plain; charset=UTF-8");
    curl_mime_encoder(text, "quoted-printable");
    for (const Attachment &file : message.attachments) addAttachment(mime.get(), file);
    return mime;
}

void setServer(CURL *curl, const Server &server)
{
    curl_easy_setopt(curl, CURLOPT_URL, serverUrl(server).constData());
    if (!server.user.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, server.user.toUtf8().constData());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, server.password.toUtf8().constData());
    }
    if (server.startTls || server.implicitTls)
        curl_easy_setopt(curl, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    const TransferTuning &tuning = transferTuning();
    if (!tuning.caFile.isEmpty())
        curl_easy_setopt(curl, CURLOPT_CAINFO, tuning.caFile.toLocal8Bit().constData());
    const long seconds = tuning.timeoutSeconds;
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, seconds);
    curl_easy_setopt(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, seconds);
    // A large attachment may take longer than that; a stalled one may not.
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, seconds);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
}

QString advice(CURLcode code, const QByteArray &refusal, const char *errorText)
{
    const QString settings = " in Configuration(Station Settings).";
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return "The mail server's name is not known. Check the SMTP server" + settings;
    case CURLE_COULDNT_CONNECT:
        return "The mail server could not be reached. Check that it is running, and the "
               "server and port" +
               settings;
    case CURLE_OPERATION_TIMEDOUT:
        return "The mail server did not answer in time. Please try again later.";
    case CURLE_LOGIN_DENIED:
        return "The mail server refused the user or the password. Check them" + settings;
    case CURLE_USE_SSL_FAILED:
        return "The mail server offers no TLS. Check \"Use TLS\"" + settings;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_RECV_ERROR:
        return "The secure connection to the mail server failed. Check \"Use SSL\", \"Use "
               "TLS\" and the port" +
               settings;
    default:
        break;
    }
    if (refusal.startsWith("530"))
        return "The mail server wants a secure connection or a login first. Check \"Use "
               "TLS\", the user and the password" +
               settings;
    if (qstrncmp(errorText, "RCPT", 4) == 0)
        return "The mail server refused a recipient. Check the addresses; nothing was sent.";
    if (qstrncmp(errorText, "MAIL", 4) == 0)
        return "The mail server refused the sender. Check the address in From; nothing was sent.";
    if (!refusal.isEmpty())
        return "The mail server refused the message. Nothing was sent.";
    return QString::fromLatin1(curl_easy_strerror(code)) + '.';
}

Outcome failure(CURLcode code, const Transcript &transcript)
{
    QString description = advice(code, transcript.lastRefusal, transcript.errorText);
    if (!transcript.lastRefusal.isEmpty())
        description += " The server said: " + QString::fromUtf8(transcript.lastRefusal);
    else if (transcript.errorText[0])
        description += " (" + QString::fromUtf8(transcript.errorText) + ')';
    return {code, description};
}

} // namespace

TransferTuning &transferTuning()
{
    static TransferTuning tuning;
    return tuning;
}

namespace {

constexpr qsizetype kLineLimit = 78; // RFC 5322's "should", far below its 998

// RFC 2047 words of at most 39 bytes each (52 in base64, 64 with their frame,
// so even the first line stays within 76), which never split a character.
QList<QByteArray> encodedWords(const QByteArray &utf8)
{
    QList<QByteArray> words;
    for (qsizetype start = 0; start < utf8.size();) {
        qsizetype end = std::min(start + 39, utf8.size());
        while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xc0) == 0x80) --end;
        words << "=?UTF-8?B?" + utf8.mid(start, end - start).toBase64() + "?=";
        start = end;
    }
    return words;
}

// Folds before the blanks between words; empty when a word does not fit a line.
QByteArray foldAtBlanks(const QByteArray &head, const QByteArray &text)
{
    static const QRegularExpression piece("[ \\t]*[^ \\t]+(?:[ \\t]+$)?");
    QByteArray out = head;
    qsizetype line = head.size();
    qsizetype taken = 0;
    bool lineHasText = false;
    auto it = piece.globalMatch(QString::fromLatin1(text));
    while (it.hasNext()) {
        const QByteArray p = it.next().captured().toLatin1();
        if (lineHasText && line + p.size() > kLineLimit) {
            out += "\r\n";
            line = 0;
        }
        if (line + p.size() > kLineLimit)
            return {};
        out += p;
        line += p.size();
        taken += p.size();
        lineHasText = true;
    }
    return taken == text.size() ? out : QByteArray();
}

} // namespace

QByteArray headerText(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    return isAscii(utf8) ? utf8 : encodedWords(utf8).join("\r\n ");
}

QByteArray headerField(const QByteArray &name, const QString &text)
{
    const QByteArray head = name + ": ";
    const QByteArray utf8 = text.toUtf8();
    if (isAscii(utf8)) {
        if (head.size() + utf8.size() <= kLineLimit)
            return head + utf8;
        const QByteArray folded = foldAtBlanks(head, utf8);
        if (!folded.isEmpty())
            return folded;
    }
    // Blanks between two encoded words are not part of the text, so every word
    // may go on a line of its own.
    return head + encodedWords(utf8).join("\r\n ");
}

Outcome send(const Server &server, const Message &message)
{
    initialiseOnce();
    Easy curl(curl_easy_init(), curl_easy_cleanup);
    if (!curl)
        return {CURLE_FAILED_INIT, "The mail library could not start."};
    Transcript transcript;
    setServer(curl.get(), server);
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_FROM,
                     ('<' + message.from + '>').toUtf8().constData());
    List recipients(nullptr, curl_slist_free_all);
    for (const QString &address : message.recipients)
        append(recipients, ('<' + address + '>').toUtf8());
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_RCPT, recipients.get());
    const List head = headers(message);
    curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, head.get());
    const Mime mime = content(curl.get(), message);
    curl_easy_setopt(curl.get(), CURLOPT_MIMEPOST, mime.get());
    curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, transcript.errorText);
    curl_easy_setopt(curl.get(), CURLOPT_VERBOSE, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_DEBUGFUNCTION, onDebug);
    curl_easy_setopt(curl.get(), CURLOPT_DEBUGDATA, &transcript);
    const CURLcode code = curl_easy_perform(curl.get());
    return code == CURLE_OK ? Outcome{} : failure(code, transcript);
}

Outcome sendResponsive(const Server &server, const Message &message)
{
    initialiseOnce();
    Outcome outcome;
    std::unique_ptr<QThread> worker(QThread::create([&] { outcome = send(server, message); }));
    QEventLoop loop;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    worker->start();
    loop.exec();
    worker->wait();
    return outcome;
}

} // namespace mail
