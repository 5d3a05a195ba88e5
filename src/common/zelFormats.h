#pragma once
#include <QString>

// Stock locater forms: normal (9 characters), stored (8), display (9 with a point).
QString gfsSL_normalize(const QString &sText);
QString gfsSL_toStored(const QString &sSL);
QString gfsSL_toDisplay(const QString &sStored);
// The 25-character key of an Item ID: numbers right-justified, text left-justified.
QString gfsItemID_key(const QString &sText, bool bLeft);
