// Times Export Sets and Import Sets on a big store: hk_package_benchmark DEMO_FOLDER [SETS]
// DEMO_FOLDER is a data folder made by `hk_demo_seed DEMO_FOLDER --items 1000000`; its
// database is copied into a folder of the benchmark's own, beside SETS sets (999 by
// default) of 32 keys that each sell another item, half by S/L and half by Item ID,
// and 200 pictures of 20 KB. The package is then read and written into an empty
// second data folder over the same inventory.
#include "BenchBigStore.h"
#include "hotkeys/hkeyPackage.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QFileInfo>
#include <cstdio>

namespace {

constexpr int kPictures = 200;

void writeSets(int sets, const QList<BenchItem> &items)
{
    writeBigStoreSets(sets, items, [sets](int n, int g, int k, HotKeyButton &b) {
        if (k == 1)
            b.Icon = QString("pic%1.jpg").arg((n * 4 + g) % kPictures);
        if (g == 4 && k == 8)
            b.LinkSet = QString::number(n % sets + 1);
    });
    for (int p = 0; p < kPictures; ++p) {
        QFile picture(gsHotKeyPicturePath + QString("pic%1.jpg").arg(p));
        picture.open(QIODevice::WriteOnly);
        picture.write(QByteArray(20 * 1024, static_cast<char>(p)));
    }
}

void useDataFolder(const QString &folder)
{
    gDataPath.setDataPath(folder);
    QDir(folder).mkpath("pictures/HotKeys");
    gsHotKeyPicturePath = folder + "/pictures/HotKeys/";
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: hk_package_benchmark DEMO_FOLDER [SETS]\n");
        return 2;
    }
    const int sets = argc > 2 ? std::atoi(argv[2]) : 999;
    QTemporaryDir dir;
    if (!openBigStore(dir, argv[1]))
        return 1;
    const qint32 rows = bigStoreRows();
    writeSets(sets, bigStoreItems(sets * 32));
    std::printf("%d sets of 32 keys, %d pictures, inventory of %d rows\n", sets, kPictures, rows);
    QStringList numbers;
    for (int n = 1; n <= sets; ++n) numbers << QString::number(n);

    const QString package = dir.filePath("package.zip");
    setpackage::ExportResult out;
    const BenchTime exported = timed([&] { out = setpackage::exportSets(package, {numbers}); });
    std::printf("export: %.0f ms (processor %.0f ms), %d sets, %d pictures, %d item keys, %lld KB "
                "(%s)\n",
                exported.wallMs, exported.cpuMs, out.sets, out.pictures, out.itemKeys,
                QFileInfo(package).size() / 1024, out.ok ? "ok" : qPrintable(out.error));
    std::printf("peak memory after export: %ld MB\n", peakMegabytes());

    useDataFolder(dir.filePath("second"));
    std::optional<setpackage::Plan> plan;
    QString error;
    const BenchTime read = timed([&] { plan = setpackage::readPackage(package, &error); });
    bool written = false;
    const BenchTime write = timed([&] { written = plan && setpackage::writePlan(*plan, &error); });
    int found = 0;
    for (const setpackage::ItemKey &k : plan ? plan->items : QList<setpackage::ItemKey>())
        found += k.match != setpackage::Match::None;
    std::printf("import: read and match %.0f ms, write %.0f ms, %.0f ms in all (processor %.0f "
                "ms); %d of %d item keys found (%s)\n",
                read.wallMs, write.wallMs, read.wallMs + write.wallMs, read.cpuMs + write.cpuMs,
                found, plan ? static_cast<int>(plan->items.size()) : 0,
                written ? "ok" : qPrintable(error));
    std::printf("peak memory: %ld MB\n", peakMegabytes());
    gpDBSM_Disconnect();
    return written && out.ok ? 0 : 1;
}
