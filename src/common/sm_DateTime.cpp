#include "common/sm_DateTime.h"
#include "common/Conversions.h"

QString gfsDate_display(const QString &sDate, const QString &sUSEurope)
{
    if (conv::Trim(sDate).isEmpty())
        return sDate + "  ";
    const QString year = sDate.left(4), month = sDate.mid(4, 2), day = sDate.mid(6, 2);
    if (sUSEurope == "E")
        return day + '/' + month + '/' + year;
    return month + '/' + day + '/' + year;
}
