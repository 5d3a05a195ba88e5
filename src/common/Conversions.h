#pragma once
#include <QString>
#include <optional>

// The conversions of the legacy runtime that files and screens rely on.
namespace conv {

// The leading number of a text: blanks, tabs and line feeds are ignored anywhere
// inside it ("1 2" is 12), "&H" and "&O" prefixes give hexadecimal and octal
// (a signed 16-bit value up to four hex digits, else the low 32 bits, signed),
// anything after the number is ignored, and a text without a number is 0.
double Val(const QString &text);

// A 16-bit integer, rounded half to even; empty when the value is out of range.
std::optional<qint16> CInt(double value);

// The masks the suite uses: "#0#", "#.00", "##.00" on numbers, "@@@" on text.
// A number every digit of, however large; nothing for infinity or not-a-number.
QString Format(double value, const QString &mask);
QString FormatText(const QString &text, const QString &mask);

// A text as a boolean: "True" or "False" in any case, or a number (not 0 is
// true); empty when the text is neither.
std::optional<bool> CBool(const QString &text);

inline QString BoolText(bool b)
{
    return b ? QStringLiteral("True") : QStringLiteral("False");
}

// Trim removes blanks only, never tabs or other white space.
QString Trim(const QString &s);
QString LTrim(const QString &s);
QString RTrim(const QString &s);

// "Sorts above a single blank": a binary compare of the text with " ".
inline bool AboveBlank(const QString &s)
{
    return QString::compare(s, QStringLiteral(" ")) > 0;
}

} // namespace conv
