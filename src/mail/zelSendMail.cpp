#include "mail/zelSendMail.h"
#include "common/Conversions.h"
#include "common/sm_Files.h"
#include "platform/Dialogs.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include <QFile>
#include <QRegularExpression>
#include <cmath>

QString gsMailServer;
QString gsMailPort;
QString gsMailUser;
QString gsMailPassword;
QString gsMailSSL;
QString gsMailTLS;

namespace {

QString mailSetting(const QString &key)
{
    return platform::GetSetting(kSettingsApp, "EMAIL", key, QString());
}

int mailPort()
{
    const double port = conv::Val(gsMailPort);
    return port >= 1 && port <= 65535 && port == std::floor(port) ? static_cast<int>(port) : 25;
}

// Every character that ends a line somewhere, not only CR and LF.
bool hasLineBreak(const QString &text)
{
    static const QRegularExpression breaks(R"([\r\n\x{0b}\x{0c}\x{85}\x{2028}\x{2029}])");
    return text.contains(breaks);
}

// Plain addresses only: nothing a header or the envelope could be split at. The
// whole text must match: "$" alone would let a last line feed through.
bool validAddress(const QString &address)
{
    static const QRegularExpression plain(QRegularExpression::anchoredPattern(
        R"([A-Za-z0-9!#$%&'*+/=?^_`{|}~.-]+@([A-Za-z0-9.-]+|\[[0-9.]+\]))"));
    return address.size() <= 254 && plain.match(address).hasMatch();
}

mail::Outcome badAddress(const QString &address)
{
    if (hasLineBreak(address))
        return {mail::BadAddress,
                "The address \"" +
                    conv::Trim(QString(address).replace(QRegularExpression(R"(\s)"), " ")) +
                    "\" holds a line break (perhaps it was pasted with one). Type the address "
                    "on one line; nothing was sent."};
    return {mail::BadAddress, "The address \"" + address +
                                  "\" is not valid. Type each address as name@example.com, "
                                  "with no blanks, and separate several with \";\"."};
}

mail::Outcome checkAddresses(const mail::Message &message, const QStringList &blind)
{
    if (message.from.isEmpty())
        return {mail::NoSender, "There is no sender. Please type your address in From."};
    if (message.to.isEmpty())
        return {mail::NoRecipient, "There is no recipient. Please type an address in To."};
    for (const QString &address : QStringList{message.from, message.to} + blind)
        if (!validAddress(address))
            return badAddress(address);
    return {};
}

// A list in To replaces the blind copies; with blind copies the sender is the
// addressee. Empty parts of a list (";;") are left out; a last part without
// ";" counts.
mail::Outcome mpAddress(mail::Message &message, const QString &sTo, QString sBcc,
                        const QString &sFrom)
{
    if (sTo.contains(';'))
        sBcc = sTo;
    message.from = conv::Trim(sFrom);
    QStringList blind;
    if (!conv::Trim(sBcc).isEmpty()) {
        message.to = message.from;
        for (const QString &part : sBcc.split(';'))
            if (!conv::Trim(part).isEmpty())
                blind << conv::Trim(part);
    } else {
        message.to = conv::Trim(sTo);
    }
    const mail::Outcome bad = checkAddresses(message, blind);
    if (!bad.ok())
        return bad;
    for (const QString &address : QStringList{message.to} + blind)
        if (!message.recipients.contains(address, Qt::CaseInsensitive))
            message.recipients << address;
    return {};
}

// Parts that are blank or name no readable file are left out without a word.
QList<mail::Attachment> mpAttachments(const QString &sAttach)
{
    QList<mail::Attachment> files;
    if (sAttach.isEmpty())
        return files;
    for (const QString &part : sAttach.split(',')) {
        const QString path = conv::Trim(part);
        QFile file(path);
        if (gfbFile_exists(path) && file.open(QIODevice::ReadOnly))
            files << mail::Attachment{gfsFile_name(path), file.readAll()};
    }
    return files;
}

} // namespace

bool gfbMailSettings_read()
{
    gsMailServer = mailSetting("SMTPServer");
    gsMailPort = mailSetting("SMPTPort");
    gsMailUser = mailSetting("UserID");
    gsMailPassword = mailSetting("UserPasssword");
    gsMailSSL = mailSetting("Use SSL");
    gsMailTLS = mailSetting("Use TLS");
    return !gsMailServer.isEmpty() && !gsMailUser.isEmpty() && !gsMailPassword.isEmpty() &&
           !gsMailTLS.isEmpty();
}

namespace mail {

Server settingsServer()
{
    Server server;
    server.host = conv::Trim(gsMailServer);
    server.port = mailPort();
    server.implicitTls = gsMailSSL == "Yes";
    server.startTls = gsMailTLS == "Yes";
    server.user = gsMailUser;
    server.password = gsMailPassword;
    return server;
}

} // namespace mail

MailResult gpSendMail(const QString &sSubject, const QString &sBody, const QString &sTo,
                      const QString &sBcc, const QString &sFrom, const QString &sAttach)
{
    if (!gfbMailSettings_read()) {
        platform::MsgBox("Your email settings are incomplete.\r\nPlease complete settings in "
                         "Configuration(Station Settings)");
        return {};
    }
    mail::Message message;
    const mail::Outcome bad = mpAddress(message, sTo, sBcc, sFrom);
    if (!bad.ok())
        return {false, bad};
    if (hasLineBreak(sSubject))
        return {false,
                {mail::LineBreak, "The subject holds a line break. Please type it on one line."}};
    message.subject = sSubject;
    message.body = sBody;
    message.attachments = mpAttachments(sAttach);
    const mail::Outcome outcome = mail::sendResponsive(mail::settingsServer(), message);
    return {outcome.ok(), outcome};
}
