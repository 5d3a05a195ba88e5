// Times Check Sets and Where Used on a big store: hk_check_benchmark DEMO_FOLDER [SETS]
// DEMO_FOLDER is a data folder made by `hk_demo_seed DEMO_FOLDER --items 1000000`; its
// database is copied into a folder of the benchmark's own, beside SETS sets (999 by
// default) of 32 keys that each sell another item of the inventory, half by S/L and
// half by Item ID, so every key costs the inventory a question.
#include "BenchDatabase.h"
#include "common/Conversions.h"
#include "common/zelFormats.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_InventoryKey.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "platform/KeyPreviewForm.h"
#include "platform/MSFlexGrid.h"
#include "screens/frmSetCheck.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QSqlQuery>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>

namespace {

// The S/L in its stored form, which a key may hold as it is: the demo's generated
// S/Ls, shown with a point, would read as other S/Ls.
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
                gHotKeyGroups[g].Buttons[k] = {QString("Key %1-%2").arg(g).arg(k),
                                               byId ? item.id : item.sl,
                                               "",
                                               "",
                                               byId ? "Yes" : "No",
                                               k == 1 ? "coffee.jpg" : ""};
            }
        }
        gpHotKeySet_write(QString("%1").arg(n, 2, 10, QChar('0')), QString("Set %1").arg(n));
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

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: hk_check_benchmark DEMO_FOLDER [SETS]\n");
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
    QDir(dir.path()).mkpath("pictures/HotKeys");
    gsHotKeyPicturePath = dir.filePath("pictures/HotKeys/");
    QFile(gsHotKeyPicturePath + "coffee.jpg").open(QIODevice::WriteOnly);
    if (!gfbDBSM_Setup() || !gfbDBSM_Open())
        return 1;
    QString table = "invt1";
    const qint32 rows = glDBSM_Count(tblInventory, table);
    const QList<Item> items = inventoryItems(sets * 32);
    writeSets(sets, items);
    std::printf("%d sets of 32 keys, %d distinct items, inventory of %d rows\n", sets,
                static_cast<int>(items.size()), rows);
    const long before = peakMegabytes();
    for (const bool byId : {false, true}) {
        const int n = std::min<int>(2000, static_cast<int>(items.size()));
        const double ms = timed([&] {
            for (int i = 0; i < n; ++i)
                gfbInventory_ByHotKey(byId ? items[i].id : items[i].sl, byId ? "Yes" : "No");
        });
        std::printf("one item asked by %s: %.0f us\n", byId ? "Item ID" : "S/L", ms * 1000 / n);
    }

    double fastest = 1e30;
    for (int run = 1; run <= 3; ++run) {
        frmSetCheck check(frmSetCheck::Mode::Check);
        const double ms = timed([&] { check.Form_Load(); });
        fastest = std::min(fastest, ms);
        std::printf("Check Sets, run %d: %.0f ms, %d lines\n", run, ms,
                    check.fgrdItems->Rows() - 1);
    }
    std::printf("peak memory: %ld MB (%ld MB before the checks)\n", peakMegabytes(), before);

    // Cancel halfway through, as a press on the progress display's button does.
    frmSetCheck canceled(frmSetCheck::Mode::Check);
    QElapsedTimer sinceCancel;
    QTimer::singleShot(static_cast<int>(fastest / 2), &canceled, [&] {
        if (canceled.Progress) {
            sinceCancel.start();
            canceled.Progress->cancel();
        }
    });
    const double cancelMs = timed([&] { canceled.Form_Load(); });
    std::printf("Cancel after %.0f ms: the check ended %.1f ms after it, %.0f ms in all (%s)\n",
                fastest / 2, sinceCancel.isValid() ? sinceCancel.nsecsElapsed() / 1e6 : -1.0,
                cancelMs, qPrintable(canceled.lblStatus->text()));

    for (int run = 1; run <= 3; ++run) {
        frmSetCheck used(frmSetCheck::Mode::Item);
        used.Form_Load();
        used.txtItem->setText(items[run * 100].sl);
        const double ms = timed([&] { used.cmdSearch_Click(); });
        std::printf("Where Used for S/L %s, run %d: %.1f ms, %d keys\n",
                    qPrintable(items[run * 100].sl), run, ms, used.fgrdItems->Rows() - 1);
    }
    gpDBSM_Disconnect();
    return 0;
}
