#pragma once
#include <QString>

// "YYYYMMDD" as "MM/DD/YYYY", or "DD/MM/YYYY" when `sUSEurope` is "E".
QString gfsDate_display(const QString &sDate, const QString &sUSEurope);
