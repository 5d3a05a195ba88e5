// Times Check Sets, Where Used and Replace Item on a big store:
// hk_check_benchmark DEMO_FOLDER [SETS]
// DEMO_FOLDER is a data folder made by `hk_demo_seed DEMO_FOLDER --items 1000000`; its
// database is copied into a folder of the benchmark's own, beside SETS sets (999 by
// default) of 32 keys that each sell another item of the inventory, half by S/L and
// half by Item ID, so every key costs the inventory a question, and each has a label
// of its own, so every label is measured.
#include "BenchBigStore.h"
#include "database/zelDBSM_InventoryKey.h"
#include "hotkeys/hkeyReplace.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/ui/KeyPreviewForm.h"
#include "platform/ui/MSFlexGrid.h"
#include "screens/frmSetCheck.h"
#include "screens/hkeyLayoutPanel.h"
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>
#include <cstdio>

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
    if (!openBigStore(dir, argv[1]))
        return 1;
    versions::setRoot(dir.filePath("versions")); // never the user's own
    QFile(gsHotKeyPicturePath + "coffee.jpg").open(QIODevice::WriteOnly);
    const qint32 rows = bigStoreRows();
    const QList<BenchItem> items = bigStoreItems(sets * 32);
    // With `shared`, key 8 of column 4 sells one item in every set, for Replace Item.
    const auto writeSets = [&](bool shared) {
        writeBigStoreSets(sets, items, [&](int n, int g, int k, HotKeyButton &b) {
            b.Caption += QString(" %1").arg(n);
            if (k == 1)
                b.Icon = "coffee.jpg";
            if (shared && g == 4 && k == 8)
                b = {"Shared", items.first().sl, "", "", "No", ""};
        });
    };
    writeSets(false);
    std::printf("%d sets of 32 keys, %d distinct items, inventory of %d rows\n", sets,
                static_cast<int>(items.size()), rows);
    const long before = peakMegabytes();
    for (const bool byId : {false, true}) {
        const int n = std::min<int>(2000, static_cast<int>(items.size()));
        const double ms =
            timed([&] {
                for (int i = 0; i < n; ++i)
                    gfbInventory_ByHotKey(byId ? items[i].id : items[i].sl, byId ? "Yes" : "No");
            }).wallMs;
        std::printf("one item asked by %s: %.0f us\n", byId ? "Item ID" : "S/L", ms * 1000 / n);
    }

    double fastest = 1e30;
    for (int run = 1; run <= 3; ++run) {
        frmSetCheck check(frmSetCheck::Mode::Check);
        const double ms = timed([&] { check.Form_Load(); }).wallMs;
        fastest = std::min(fastest, ms);
        std::printf("Check Sets, run %d: %.0f ms, %d lines\n", run, ms,
                    check.fgrdItems->Rows() - 1);
    }
    std::printf("peak memory: %ld MB (%ld MB before the checks)\n", peakMegabytes(), before);

    // The part of the check that draws: every label measured on a trial key, every column's
    // contrast.
    const double drawnMs =
        timed([&] {
            const setcheck::Drawing drawing = gfLayout_drawing();
            for (int n = 1; n <= sets; ++n) {
                gpHotKeySet_clear();
                gfsHotKeySet_read(QString("%1").arg(n, 2, 10, QChar('0')));
                for (int g = 1; g <= 4; ++g) {
                    drawing.contrast(gHotKeyGroups[g].Color);
                    for (int k = 1; k <= 8; ++k)
                        drawing.labelProblem(gHotKeyGroups[g].Buttons[k], g, k);
                }
            }
        }).wallMs;
    std::printf("of which the labels and colours alone (sets read again): %.0f ms\n", drawnMs);

    // Cancel halfway through, as a press on the progress display's button does.
    frmSetCheck canceled(frmSetCheck::Mode::Check);
    QElapsedTimer sinceCancel;
    QTimer::singleShot(static_cast<int>(fastest / 2), &canceled, [&] {
        if (canceled.Progress) {
            sinceCancel.start();
            canceled.Progress->cancel();
        }
    });
    const double cancelMs = timed([&] { canceled.Form_Load(); }).wallMs;
    std::printf("Cancel after %.0f ms: the check ended %.1f ms after it, %.0f ms in all (%s)\n",
                fastest / 2, sinceCancel.isValid() ? sinceCancel.nsecsElapsed() / 1e6 : -1.0,
                cancelMs, qPrintable(canceled.lblStatus->text()));

    for (int run = 1; run <= 3; ++run) {
        frmSetCheck used(frmSetCheck::Mode::Item);
        used.Form_Load();
        used.txtItem->setText(items[run * 100].sl);
        const double ms = timed([&] { used.cmdSearch_Click(); }).wallMs;
        std::printf("Where Used for S/L %s, run %d: %.1f ms, %d keys\n",
                    qPrintable(items[run * 100].sl), run, ms, used.fgrdItems->Rows() - 1);
    }

    // Replace Item: the shared key of every set changed to sell another item, and back.
    writeSets(true);
    const setcheck::Result used = setcheck::whereItemUsed({items.first().sl, QString()});
    const replace::Target to{items[1].sl, "No", "Replaced"};
    for (int run = 1; run <= 3; ++run) {
        replace::Outcome done;
        const double ms = timed([&] { done = replace::apply(used.findings, to); }).wallMs;
        QStringList problems;
        const double undoMs = timed([&] { replace::undo(done.written, &problems); }).wallMs;
        std::printf(
            "Replace Item, run %d: %.0f ms for %d keys in %d sets; Undo Replace %.0f ms%s\n", run,
            ms, done.keys, static_cast<int>(done.written.size()), undoMs,
            problems.isEmpty() ? "" : " (failed)");
    }
    gpDBSM_Disconnect();
    return 0;
}
