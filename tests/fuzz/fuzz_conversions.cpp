// The text conversions on any input: the numeric value, the 16-bit conversion,
// the format masks, the S/L and Item ID forms, tag values, and the code page,
// whose bytes must come back unchanged through a read and a write.
#include "FuzzSupport.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "common/zelFormats.h"
#include <QRegularExpression>
#include <cmath>
#include <cstring>

namespace {

const char *const kMasks[] = {"#0#", "#.00", "##.00"};

// A number in a mask is digits, one point at most and a leading minus, whatever its size.
void format(double value)
{
    static const QRegularExpression number("^-?[0-9]*(\\.[0-9]+)?$");
    for (const char *mask : kMasks) {
        const QString text = conv::Format(value, mask);
        if (std::isfinite(value) && !number.match(text).hasMatch())
            fuzzing::fail("a number that its mask does not show", text);
    }
}

void convert(const QString &text)
{
    const double v = conv::Val(text);
    if (!std::isfinite(v))
        fuzzing::fail("a numeric value that is not finite", text);
    conv::CInt(v);
    format(v);
    conv::FormatText(text, "@@@");
    conv::CBool(text);
    conv::Trim(text);
    gfsSL_toDisplay(gfsSL_toStored(gfsSL_normalize(text)));
    gfsItemID_key(text, false);
    gfsItemID_key(text, true);
    gfsText_pad(1, 2, text, "0");
    gfsTagValue(text, "[BUTTON]", "[");
}

// Every character the code page has comes back, every other one becomes "?".
void roundTripText(const QString &text)
{
    const QByteArray bytes = textfile::toCp1252(text);
    const QString back = textfile::fromCp1252(bytes);
    if (back.size() != text.size())
        fuzzing::fail("the code page changed the length of a text", text);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (back[i] != text[i] && back[i] != '?')
            fuzzing::fail("the code page changed a character", text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = fuzzing::bytesOf(data, size);
    const QString text = textfile::fromCp1252(bytes);
    if (textfile::toCp1252(text) != bytes)
        fuzzing::fail("bytes of the code page did not come back unchanged");
    convert(text);
    QString utf16(static_cast<qsizetype>(size / 2), Qt::Uninitialized);
    std::memcpy(utf16.data(), data, size / 2 * 2);
    convert(utf16);
    roundTripText(utf16);
    if (size >= sizeof(double)) {
        double raw;
        std::memcpy(&raw, data, sizeof raw);
        conv::CInt(raw);
        format(raw);
    }
    return 0;
}
