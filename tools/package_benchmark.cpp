// Times Export Sets and Import Sets on a big store: hk_package_benchmark DEMO_FOLDER [SETS]
// DEMO_FOLDER is a data folder made by `hk_demo_seed DEMO_FOLDER --items 1000000`; its
// database is copied into a folder of the benchmark's own, beside SETS sets (999 by
// default) of 32 keys that each sell another item, half by S/L and half by Item ID,
// and 200 pictures of 20 KB. The package is then read and written into an empty
// second data folder over the same inventory.
#include "BenchDatabase.h"
#include "common/Conversions.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage.h"
#include "hotkeys/hkeyServices.h"
#include "platform/KeyPreviewForm.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <cstdio>
#include <sys/resource.h>

namespace {

constexpr int kPictures = 200;

struct Item {
    QString sl, id;
};

QList<Item> inventoryItems(int count)
{
    QList<Item> items;
    QSqlQuery q(gpDBSM_Engine()->db());
    q.exec(QString("SELECT SL, ItemID FROM invt1 ORDER BY RecordNum DESC LIMIT %1").arg(count));
    while (q.next()) items << Item{q.value(0).toString(), conv::Trim(q.value(1).toString())};
    return items;
}

void writeSets(int sets, const QList<Item> &items)
{
    for (int n = 1; n <= sets; ++n) {
        gpHotKeySet_clear();
        for (int g = 1; g <= 4; ++g) {
            gHotKeyGroups[g].Caption = QString("Column %1").arg(g);
            for (int k = 1; k <= 8; ++k) {
                const Item &item = items[((n - 1) * 32 + (g - 1) * 8 + k - 1) % items.size()];
                const bool byId = k % 2 == 0;
                const QString icon =
                    k == 1 ? QString("pic%1.jpg").arg((n * 4 + g) % kPictures) : QString();
                gHotKeyGroups[g].Buttons[k] = {QString("Key %1-%2").arg(g).arg(k),
                                               byId ? item.id : item.sl,
                                               g == 4 && k == 8 ? QString::number(n % sets + 1)
                                                                : QString(),
                                               "",
                                               byId ? "Yes" : "No",
                                               icon};
            }
        }
        gpHotKeySet_write(QString("%1").arg(n, 2, 10, QChar('0')), QString("Set %1").arg(n));
    }
    for (int p = 0; p < kPictures; ++p) {
        QFile picture(gsHotKeyPicturePath + QString("pic%1.jpg").arg(p));
        picture.open(QIODevice::WriteOnly);
        picture.write(QByteArray(20 * 1024, static_cast<char>(p)));
    }
}

long peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

double timed(const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    f();
    return t.nsecsElapsed() / 1e6;
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
    std::unique_ptr<PgCluster, void (*)(PgCluster *)> noCluster{nullptr, nullptr};
    useBenchDatabase(dir, "SQLite", noCluster);
    platform::SaveSetting("ZEL Settings", "DATABASE", "DBName", "ZELDATA");
    const QString source = QDir(QString::fromLocal8Bit(argv[1])).filePath("ZELDATA.db");
    if (!QFile::copy(source, dir.filePath("ZELDATA.db"))) {
        std::fprintf(stderr, "%s: no demo database there\n", qPrintable(source));
        return 1;
    }
    useDataFolder(dir.path());
    if (!gfbDBSM_Setup() || !gfbDBSM_Open())
        return 1;
    QString table = "invt1";
    const qint32 rows = glDBSM_Count(tblInventory, table);
    writeSets(sets, inventoryItems(sets * 32));
    std::printf("%d sets of 32 keys, %d pictures, inventory of %d rows\n", sets, kPictures, rows);
    QStringList numbers;
    for (int n = 1; n <= sets; ++n) numbers << QString::number(n);

    const QString package = dir.filePath("package.zip");
    setpackage::ExportResult out;
    const double exportMs = timed([&] { out = setpackage::exportSets(package, {numbers}); });
    std::printf("export: %.0f ms, %d sets, %d pictures, %d item keys, %lld KB (%s)\n", exportMs,
                out.sets, out.pictures, out.itemKeys, QFileInfo(package).size() / 1024,
                out.ok ? "ok" : qPrintable(out.error));
    std::printf("peak memory after export: %ld MB\n", peakMegabytes());

    useDataFolder(dir.filePath("second"));
    std::optional<setpackage::Plan> plan;
    QString error;
    const double readMs = timed([&] { plan = setpackage::readPackage(package, &error); });
    bool written = false;
    const double writeMs = timed([&] { written = plan && setpackage::writePlan(*plan, &error); });
    int found = 0;
    for (const setpackage::ItemKey &k : plan ? plan->items : QList<setpackage::ItemKey>())
        found += k.match != setpackage::Match::None;
    std::printf("import: read and match %.0f ms, write %.0f ms, %.0f ms in all; %d of %d item "
                "keys found (%s)\n",
                readMs, writeMs, readMs + writeMs, found,
                plan ? static_cast<int>(plan->items.size()) : 0,
                written ? "ok" : qPrintable(error));
    std::printf("peak memory: %ld MB\n", peakMegabytes());
    gpDBSM_Disconnect();
    return written && out.ok ? 0 : 1;
}
