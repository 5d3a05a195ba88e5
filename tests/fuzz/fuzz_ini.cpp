// Any bytes as ZEL.INI, with a section, a key and a value taken from the input.
// Reading and writing must not crash, and a plain value written reads back.
#include "FuzzSupport.h"
#include "common/TextFile.h"
#include "settings/clsINI_Services.h"
#include <fuzzer/FuzzedDataProvider.h>

namespace {

QString textOf(FuzzedDataProvider &input, size_t most)
{
    return textfile::fromCp1252(QByteArray::fromStdString(input.ConsumeRandomLengthString(most)));
}

bool printableAscii(QChar c)
{
    return c.unicode() > ' ' && c.unicode() < 0x7F;
}

// A name the file can hold as it is: printable, blanks only inside, no character
// that the file's syntax uses.
bool plainName(const QString &s)
{
    if (s.isEmpty() || !printableAscii(s.front()) || !printableAscii(s.back()))
        return false;
    for (QChar c : s) {
        if ((!printableAscii(c) && c != ' ') || QStringLiteral("[]=;\"'").contains(c))
            return false;
    }
    return true;
}

// A value of the code page without line ends or controls, printable at both ends.
bool plainValue(const QString &s)
{
    if (s.isEmpty())
        return true;
    if (!printableAscii(s.front()) || !printableAscii(s.back()) || s.front() == '"' ||
        s.front() == '\'')
        return false;
    for (QChar c : s) {
        if (c.unicode() < ' ' || c.unicode() == 0x7F)
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const QString section = textOf(input, 40);
    const QString key = textOf(input, 40);
    const QString value = textOf(input, 300);
    const std::vector<char> file = input.ConsumeRemainingBytes<char>();
    const QString path = fuzzing::writeDataFile(
        "ZEL.INI", QByteArray(file.data(), static_cast<qsizetype>(file.size())));

    gIni.setFile_Name(path);
    if (gIni.File() != path)
        fuzzing::fail("an existing INI file counts as unusable");
    gIni.GetValue(section, key);
    gIni.GetValue("Primary Search Fields", "Search for Inventory by:", "0");
    if (!gIni.WriteData(section, key, value))
        fuzzing::fail("a value could not be written");
    if (plainName(section) && plainName(key) && plainValue(value)) {
        const QString back = gIni.GetValue(section, key, "default");
        if (back != value.left(254))
            fuzzing::fail("a written value reads back differently", value + " / " + back);
    }
    if (fuzzing::takeBoxes() != 0)
        fuzzing::fail("a box while reading or writing the INI file");
    return 0;
}
