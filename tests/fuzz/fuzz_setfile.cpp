// Any bytes as a set file. The reader must not crash, and what it read must
// survive writes and reads: once the colours have settled (a first write keeps
// "*Default", which reads as silver), a write gives the bytes it read. The input
// is read from the data folder once; after that the bytes a save would write are
// read back in memory: the save's own faults (a full disk, a process killed
// midway, a second station) are the tests' part, and its waits for the disk would
// slow the fuzzing a hundredfold.
#include "FuzzSupport.h"
#include "common/TextFile.h"
#include "hotkeys/hkeyServices.h"

namespace {

QByteArray readAndWrite(const QByteArray *written = nullptr)
{
    gpHotKeySet_clear();
    const QString title = written ? hotKeySetParse(textfile::fromCp1252(*written), gHotKeyGroups)
                                  : gfsHotKeySet_read("1");
    if (fuzzing::takeBoxes() != 0)
        fuzzing::fail("a box while reading a set that is there");
    return hotKeySetBytes(title);
}

// The first line in which two files differ, for the report.
QString firstDifference(const QByteArray &a, const QByteArray &b)
{
    const QList<QByteArray> la = a.split('\n'), lb = b.split('\n');
    for (qsizetype i = 0; i < std::min(la.size(), lb.size()); ++i) {
        if (la[i] != lb[i])
            return QString::fromLatin1(la[i].toPercentEncoding(" []") + " / " +
                                       lb[i].toPercentEncoding(" []"));
    }
    return "line count";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzzing::writeDataFile("HKSET01.SDF", fuzzing::bytesOf(data, size));
    gfsHotKeySet_label("1");
    const QByteArray first = readAndWrite();
    const QByteArray settled = readAndWrite(&first);
    const QByteArray again = readAndWrite(&settled);
    if (settled != again)
        fuzzing::fail("a written set reads back differently", firstDifference(settled, again));
    return 0;
}
