#include "common/zelFormats.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"

namespace {

QString textCode(QString s)
{
    s.replace('.', ' ');
    const int blank = s.indexOf(' ');
    if (blank > 0)
        s = s.left(blank);
    return conv::LTrim(s + QString(9, ' ')).left(7) + ". ";
}

// The runtime's text of a value: 15 significant digits, no sign blank, no
// trailing zeros or point, an exponent only for very large or small values.
QString numberText(double v)
{
    return QString::number(v, 'g', 15).toUpper();
}

QString numberCode(QString s)
{
    const QString trimmed = conv::Trim(s);
    if (trimmed.startsWith('0')) {
        if (trimmed.endsWith('.'))
            s.remove('.');
    } else {
        s = numberText(conv::Val(s));
    }
    const int point = s.indexOf('.');
    if (point >= 0)
        s = s.left(point + 2);
    else if (s.size() > 7)
        s = s.left(7) + '.' + s.mid(7, 1);
    else
        s += ". ";
    return s.size() > 9 ? s.left(9) : s.rightJustified(9, ' ');
}

} // namespace

QString gfsSL_normalize(const QString &sText)
{
    if (!conv::AboveBlank(conv::Trim(sText)))
        return QString();
    const QString clean = gfsText_keep(sText, ".0123456789 ");
    return clean != sText ? textCode(sText) : numberCode(clean);
}

QString gfsSL_toStored(const QString &sSL)
{
    return sSL.left(7) + sSL.right(1);
}

QString gfsSL_toDisplay(const QString &sStored)
{
    if (conv::Trim(sStored).startsWith('~'))
        return sStored;
    return sStored.left(7) + '.' + sStored.right(1);
}

QString gfsItemID_key(const QString &sText, bool bLeft)
{
    if (bLeft || gfsText_keep(sText, ".0123456789 ") != sText)
        return conv::LTrim(sText + QString(25, ' ')).left(25);
    return conv::RTrim(sText).rightJustified(25, ' ');
}
