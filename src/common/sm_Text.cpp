#include "common/sm_Text.h"
#include "common/Conversions.h"
#include <cmath>

QString gfsTagValue(const QString &sLine, const QString &sTag, const QString &sEnd)
{
    const int at = sLine.indexOf(sTag, 0, Qt::CaseSensitive);
    if (at < 0)
        return QString();
    const int start = at + sTag.size();
    // Only a one-character end can equal a character of the line.
    int stop = sEnd.size() == 1 ? sLine.indexOf(sEnd[0], start) : -1;
    if (stop < 0)
        stop = sLine.size();
    if (stop <= start)
        return QString();
    return conv::RTrim(sLine.mid(start, stop - start));
}

QString gfsText_keep(const QString &sText, const QString &sAllowed)
{
    QString kept;
    for (QChar c : sText) {
        if (sAllowed.contains(c, Qt::CaseSensitive))
            kept += c;
    }
    return kept;
}

QString gfsText_digits(const QString &sText)
{
    return gfsText_keep(sText, "0123456789");
}

QString gfsText_pad(int iMode, int iWidth, const QString &sText, const QString &sPad)
{
    if (sText.size() >= iWidth)
        return sText;
    const QChar pad = sPad.isEmpty() ? QChar(' ') : sPad[0];
    const int missing = iWidth - sText.size();
    switch (iMode) {
    case 1:
        return (QString(iWidth, pad) + sText).right(iWidth);
    case 2:
        return (sText + QString(iWidth, pad)).left(iWidth);
    case 3: {
        const QString half((missing + 1) / 2, pad);
        return (half + sText + half).left(iWidth);
    }
    default:
        return sText;
    }
}

double gfdNumber_round(double dValue, int iDecimals)
{
    const double scale = std::pow(10.0, iDecimals);
    double v = std::fabs(dValue) * scale;
    const float f = static_cast<float>(v - std::floor(v));
    v = f >= 0.5f ? std::floor(v) + 1 : std::floor(v);
    v /= scale;
    return dValue < 0 ? -v : v;
}
