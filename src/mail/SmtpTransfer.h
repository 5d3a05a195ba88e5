#pragma once
#include <QList>
#include <QString>
#include <QStringList>

// One message to one SMTP server over libcurl. Knows nothing of settings or screens.
namespace mail {

struct Server {
    QString host;
    int port = 25;
    bool implicitTls = false; // smtps from the first byte
    bool startTls = false;    // STARTTLS, and no sending without it
    QString user;
    QString password;
};

struct Attachment {
    QString name;
    QByteArray bytes;
};

struct Message {
    QString from;
    QString to;             // the one visible addressee
    QStringList recipients; // every envelope recipient, blind copies included
    QString subject;
    QString body;
    QList<Attachment> attachments;
};

// Number 0 is success; otherwise libcurl's error number, or one of ours below.
struct Outcome {
    long Number = 0;
    QString Description;
    bool ok() const { return Number == 0; }
};

// Our numbers for what never leaves the machine.
enum InputError : long {
    NoRecipient = 1001,
    BadAddress = 1002,
    LineBreak = 1003,
    NoSender = 1004,
};

// How long one wait for the server may last, and an extra trusted certificate
// (a test server's own); production keeps the defaults.
struct TransferTuning {
    int timeoutSeconds = 30;
    QString caFile;
};
TransferTuning &transferTuning();

// A header text as it goes on the wire: as it is when ASCII, else RFC 2047 words.
QByteArray headerText(const QString &text);
// A whole header line, "Name: text", folded so that no line of it passes 78
// characters: at blanks when the text is ASCII and its words fit, otherwise as
// RFC 2047 words, which may be split between any two characters.
QByteArray headerField(const QByteArray &name, const QString &text);

// Sends and waits; safe on any thread.
Outcome send(const Server &server, const Message &message);
// Sends on a worker thread while the caller's events go on; returns when done.
Outcome sendResponsive(const Server &server, const Message &message);

} // namespace mail
