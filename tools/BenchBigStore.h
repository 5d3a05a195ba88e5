#pragma once
// A big store for the benchmarks of work over every set: the database of a demo
// folder made by `hk_demo_seed DEMO_FOLDER --items 1000000`, copied into a folder
// of the benchmark's own, and sets whose keys each sell another of its items.
#include "BenchDatabase.h"
#include "common/Conversions.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSqlQuery>
#include <ctime>
#include <functional>
#include <sys/resource.h>

// The S/L in its stored form, which a key may hold as it is: the demo's generated
// S/Ls, shown with a point, would read as other S/Ls.
struct BenchItem {
    QString sl, id;
};

// Opens a copy of the demo folder's database in `dir`; false, said why, when it cannot.
inline bool openBigStore(const QTemporaryDir &dir, const char *demoFolder)
{
    std::unique_ptr<PgCluster, void (*)(PgCluster *)> noCluster{nullptr, nullptr};
    useBenchDatabase(dir, "SQLite", noCluster);
    platform::SaveSetting("ZEL Settings", "DATABASE", "DBName", "ZELDATA");
    const QString source = QDir(QString::fromLocal8Bit(demoFolder)).filePath("ZELDATA.db");
    if (!QFile::copy(source, dir.filePath("ZELDATA.db"))) {
        std::fprintf(stderr, "%s: no demo database there\n", qPrintable(source));
        return false;
    }
    QDir(dir.path()).mkpath("pictures/HotKeys");
    gsHotKeyPicturePath = dir.filePath("pictures/HotKeys/");
    return gfbDBSM_Setup() && gfbDBSM_Open();
}

inline qint32 bigStoreRows()
{
    QString table = gTables[tblInventory].sTableName;
    return glDBSM_Count(tblInventory, table);
}

// The newest `count` items of the inventory.
inline QList<BenchItem> bigStoreItems(int count)
{
    QList<BenchItem> items;
    QSqlQuery q(gpDBSM_Engine()->db());
    q.exec(QString("SELECT SL, ItemID FROM %1 ORDER BY RecordNum DESC LIMIT %2")
               .arg(gTables[tblInventory].sTableName)
               .arg(count));
    while (q.next()) items << BenchItem{q.value(0).toString(), conv::Trim(q.value(1).toString())};
    return items;
}

// `sets` sets of 32 keys, each selling another item, half by S/L and half by Item
// ID; `finish` may change each key after (set number, column, key).
inline void writeBigStoreSets(int sets, const QList<BenchItem> &items,
                              const std::function<void(int, int, int, HotKeyButton &)> &finish)
{
    for (int n = 1; n <= sets; ++n) {
        gpHotKeySet_clear();
        for (int g = 1; g <= 4; ++g) {
            gHotKeyGroups[g].Caption = QString("Column %1").arg(g);
            for (int k = 1; k <= 8; ++k) {
                const BenchItem &item = items[((n - 1) * 32 + (g - 1) * 8 + k - 1) % items.size()];
                const bool byId = k % 2 == 0;
                HotKeyButton &b = gHotKeyGroups[g].Buttons[k];
                b = {QString("Key %1-%2").arg(g).arg(k),
                     byId ? item.id : item.sl,
                     "",
                     "",
                     byId ? "Yes" : "No",
                     ""};
                finish(n, g, k, b);
            }
        }
        gpHotKeySet_write(QString("%1").arg(n, 2, 10, QChar('0')), QString("Set %1").arg(n));
    }
}

inline long peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

// The time `f` takes: on the clock, and of the processor (this process's, so the
// load of others on a shared machine does not count).
struct BenchTime {
    double wallMs = 0, cpuMs = 0;
};

inline BenchTime timed(const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    const std::clock_t cpu = std::clock();
    f();
    return {t.nsecsElapsed() / 1e6, (std::clock() - cpu) * 1000.0 / CLOCKS_PER_SEC};
}
