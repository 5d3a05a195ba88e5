#include "common/Conversions.h"
#include <cmath>

namespace conv {

namespace {

QString withoutBlanks(const QString &text)
{
    QString s;
    s.reserve(text.size());
    for (QChar c : text) {
        if (c != ' ' && c != '\t' && c != '\n')
            s += c;
    }
    return s;
}

double radixValue(const QString &s, int from, int radix)
{
    qint64 v = 0;
    int digits = 0;
    for (int i = from; i < s.size() && digits < 16; ++i) {
        const int d = QStringLiteral("0123456789ABCDEF").indexOf(s[i].toUpper());
        if (d < 0 || d >= radix)
            break;
        v = v * radix + d;
        ++digits;
    }
    // Short literals are 16-bit and longer ones 32-bit, with the sign bit as the platform has it.
    if (v <= 0xFFFF && digits <= (radix == 16 ? 4 : 6))
        return static_cast<qint16>(static_cast<quint16>(v));
    return static_cast<qint32>(static_cast<quint32>(v));
}

} // namespace

double Val(const QString &text)
{
    const QString s = withoutBlanks(text);
    if (s.startsWith(QLatin1String("&H"), Qt::CaseInsensitive))
        return radixValue(s, 2, 16);
    if (s.startsWith(QLatin1String("&O"), Qt::CaseInsensitive))
        return radixValue(s, 2, 8);
    if (s.startsWith('&'))
        return radixValue(s, 1, 8);

    int i = 0;
    QString number;
    if (i < s.size() && (s[i] == '-' || s[i] == '+'))
        number += s[i++];
    bool digits = false;
    while (i < s.size() && s[i].isDigit() && s[i].unicode() < 128) number += s[i++], digits = true;
    if (i < s.size() && s[i] == '.') {
        number += s[i++];
        while (i < s.size() && s[i].isDigit() && s[i].unicode() < 128)
            number += s[i++], digits = true;
    }
    if (!digits)
        return 0;
    if (i < s.size() && QString("eEdD").contains(s[i])) {
        QString exponent = "e";
        int j = i + 1;
        if (j < s.size() && (s[j] == '-' || s[j] == '+'))
            exponent += s[j++];
        bool expDigits = false;
        while (j < s.size() && s[j].isDigit() && s[j].unicode() < 128)
            exponent += s[j++], expDigits = true;
        if (expDigits)
            number += exponent;
    }
    bool ok = false;
    const double v = number.toDouble(&ok);
    return ok && std::isfinite(v) ? v : 0;
}

std::optional<qint16> CInt(double value)
{
    if (!std::isfinite(value))
        return std::nullopt;
    const double r = std::nearbyint(value); // the default rounding mode is half to even
    if (r < -32768 || r > 32767)
        return std::nullopt;
    return static_cast<qint16>(r);
}

QString Format(double value, const QString &mask)
{
    const int point = mask.indexOf('.');
    const QString intPart = point < 0 ? mask : mask.left(point);
    const int decimals = point < 0 ? 0 : mask.size() - point - 1;
    const int firstZero = intPart.indexOf('0');
    const int minDigits = firstZero < 0 ? 0 : intPart.size() - firstZero;

    // Half away from zero on the decimal value, as the runtime's formatter does.
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::round(std::fabs(value) * scale * (1 + 1e-13));
    const QString digits = QString::number(scaled, 'f', 0);
    QString whole = digits.size() > decimals ? digits.left(digits.size() - decimals) : QString();
    QString fraction = digits.right(decimals).rightJustified(decimals, '0');
    if (whole == "0")
        whole.clear();
    whole = whole.rightJustified(minDigits, '0');
    const bool negative = value < 0 && scaled != 0;
    return (negative ? "-" : "") + whole + (point < 0 ? QString() : '.' + fraction);
}

std::optional<bool> CBool(const QString &text)
{
    const QString t = text.trimmed();
    if (!t.compare("True", Qt::CaseInsensitive))
        return true;
    if (!t.compare("False", Qt::CaseInsensitive))
        return false;
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (ok)
        return v != 0;
    return std::nullopt;
}

QString FormatText(const QString &text, const QString &mask)
{
    return text.rightJustified(mask.count('@'), ' ');
}

QString LTrim(const QString &s)
{
    int i = 0;
    while (i < s.size() && s[i] == ' ') ++i;
    return s.mid(i);
}

QString RTrim(const QString &s)
{
    int n = s.size();
    while (n > 0 && s[n - 1] == ' ') --n;
    return s.left(n);
}

QString Trim(const QString &s)
{
    return LTrim(RTrim(s));
}

} // namespace conv
