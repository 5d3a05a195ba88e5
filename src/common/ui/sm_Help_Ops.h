#pragma once
#include <QString>

// The suite's guides page; every help command opens it.
extern const char *const kGuidesPage;

// Opens the guides page; when it cannot be opened (no browser, no network), shows
// the program's own help page for the help context instead.
void gpHelp_open(const QString &sTopic);
// What a Help button does: open the guides page, then wait while a help viewer answers.
void gpHelp_press(const QString &sTopic);
