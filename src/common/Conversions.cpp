#include "common/Conversions.h"
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

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

double radixDigits(const QString &s, qsizetype from, int radix)
{
    // A literal too long for 32 bits keeps its low 32 bits, as a register would.
    quint32 v = 0;
    qsizetype digits = 0;
    for (qsizetype i = from; i < s.size(); ++i) {
        const int d = QStringLiteral("0123456789ABCDEF").indexOf(s[i].toUpper());
        if (d < 0 || d >= radix)
            break;
        v = v * radix + d;
        ++digits;
    }
    // Short literals are 16-bit and longer ones 32-bit, with the sign bit as the platform has it.
    if (v <= 0xFFFF && digits <= (radix == 16 ? 4 : 6))
        return static_cast<qint16>(static_cast<quint16>(v));
    return static_cast<qint32>(v);
}

// "&H1F", "&O17" or "&17", blanks already gone.
double radixValue(const QString &s)
{
    if (s.startsWith(QLatin1String("&H"), Qt::CaseInsensitive))
        return radixDigits(s, 2, 16);
    if (s.startsWith(QLatin1String("&O"), Qt::CaseInsensitive))
        return radixDigits(s, 2, 8);
    return radixDigits(s, 1, 8);
}

// The leading decimal number of an ASCII text: sign, digits, point, exponent.
double decimalValue(const std::string &s)
{
    size_t i = 0;
    const bool negative = i < s.size() && s[i] == '-';
    if (i < s.size() && (s[i] == '-' || s[i] == '+'))
        ++i;
    const size_t digitsFrom = i;
    qint64 whole = 0;
    bool simple = true;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
        if (i - digitsFrom < 17)
            whole = whole * 10 + (s[i] - '0');
        else
            simple = false;
        ++i;
    }
    bool digits = i > digitsFrom;
    size_t end = i;
    if (i < s.size() && s[i] == '.') {
        simple = false;
        ++i;
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) ++i, digits = true;
        end = i;
    }
    if (!digits)
        return 0;
    if (i < s.size() && std::strchr("eEdD", s[i])) {
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '-' || s[j] == '+'))
            ++j;
        const size_t expFrom = j;
        while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) ++j;
        if (j > expFrom)
            simple = false, end = j;
    }
    if (simple)
        return negative ? -static_cast<double>(whole) : static_cast<double>(whole);
    std::string plain = s.substr(0, end);
    for (char &c : plain) {
        if (c == 'd' || c == 'D')
            c = 'e';
    }
    double v = 0; // from_chars, unlike strtod, ignores the locale's decimal point
    std::from_chars(plain.data(), plain.data() + plain.size(), v);
    return std::isfinite(v) ? v : 0;
}

} // namespace

double Val(const QString &text)
{
    // Blanks, tabs and line feeds count nowhere, so they are skipped on the way.
    std::string number;
    number.reserve(24);
    bool started = false;
    for (QChar c : text) {
        if (c == ' ' || c == '\t' || c == '\n')
            continue;
        if (!started && c == '&')
            return radixValue(withoutBlanks(text));
        started = true;
        if (c.unicode() >= 128)
            break;
        number += static_cast<char>(c.unicode());
        if (number.size() > 400)
            break;
    }
    return decimalValue(number);
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
    if (!std::isfinite(value))
        return QString();
    const int point = mask.indexOf('.');
    const QString intPart = point < 0 ? mask : mask.left(point);
    const int decimals = point < 0 ? 0 : mask.size() - point - 1;
    const int firstZero = intPart.indexOf('0');
    const int minDigits = firstZero < 0 ? 0 : intPart.size() - firstZero;

    // Half away from zero on the decimal value, as the runtime's formatter does.
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::round(std::fabs(value) * scale * (1 + 1e-13));
    // A value too large to scale has no fraction to round.
    const QString digits = std::isfinite(scaled)
                               ? QString::number(scaled, 'f', 0)
                               : QString::number(std::fabs(value), 'f', decimals).remove('.');
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
