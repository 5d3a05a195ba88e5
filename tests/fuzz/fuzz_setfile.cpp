// Any bytes as a set file. The reader must not crash, and what it read must
// survive a write and a second read: the second write gives the same bytes.
#include "FuzzSupport.h"
#include "hotkeys/hkeyServices.h"

namespace {

QByteArray readAndWrite()
{
    gpHotKeySet_clear();
    const QString title = gfsHotKeySet_read("1");
    if (fuzzing::takeBoxes() != 0)
        fuzzing::fail("a box while reading a set that is there");
    if (!gpHotKeySet_write("01", title))
        fuzzing::fail("the set read could not be written");
    return fuzzing::readDataFile("HKSET01.SDF");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzzing::writeDataFile("HKSET01.SDF", fuzzing::bytesOf(data, size));
    gfsHotKeySet_label("1");
    const QByteArray first = readAndWrite();
    const QByteArray second = readAndWrite();
    if (first != second)
        fuzzing::fail("a written set reads back differently",
                      QString::fromLatin1(first.toPercentEncoding(" []") + "\n---\n" +
                                          second.toPercentEncoding(" []")));
    return 0;
}
