#pragma once
#include <QString>

// The value of `sTag` in `sLine`: up to the next `sEnd` character, trailing blanks removed.
QString gfsTagValue(const QString &sLine, const QString &sTag, const QString &sEnd);
QString gfsText_keep(const QString &sText, const QString &sAllowed);
QString gfsText_digits(const QString &sText);
// Mode 1 right-justifies, 2 left-justifies, 3 centres; a long enough text is never cut.
QString gfsText_pad(int iMode, int iWidth, const QString &sText, const QString &sPad);
// Halves round away from zero.
double gfdNumber_round(double dValue, int iDecimals);
