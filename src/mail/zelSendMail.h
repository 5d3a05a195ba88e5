#pragma once
#include "mail/SmtpTransfer.h"
#include <QString>

// The suite's mail settings, read by gfbMailSettings_read.
extern QString gsMailServer;
extern QString gsMailPort;
extern QString gsMailUser;
extern QString gsMailPassword;
extern QString gsMailSSL;
extern QString gsMailTLS;

// True when server, user, password and "Use TLS" are all set.
bool gfbMailSettings_read();

// What became of one gpSendMail.
struct MailResult {
    bool Sent = false;
    // Number 0 with Sent false: the settings were incomplete and a box said so.
    mail::Outcome Error;
};

// Sends one message; a list in To goes out as blind copies with the sender as
// the addressee. Attachments are split at ",", and a part that names no file is
// left out. The screen's events go on while the server is busy.
MailResult gpSendMail(const QString &sSubject, const QString &sBody, const QString &sTo,
                      const QString &sBcc, const QString &sFrom, const QString &sAttach);

namespace mail {
// The server, as the settings read last describe it.
Server settingsServer();
} // namespace mail
