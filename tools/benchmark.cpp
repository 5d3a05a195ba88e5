// Measures the set catalogue on a large data folder: hk_benchmark [SETS]
// Fills the list of 999 sets against reading the same files raw, times one save
// with its version and a restore, and removes a set that every other set links to.
// The versions go to the run's own folder, never the user's.
#include "BenchSets.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/ui/KeyPreviewForm.h"
#include "settings/clsDataPath.h"
#include "shell/frmMain.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double rawRead()
{
    QElapsedTimer t;
    t.start();
    qint64 bytes = 0;
    for (const QString &name : QDir(gDataPath.DataPath()).entryList({"HKSET*.SDF"}, QDir::Files)) {
        QFile f(gDataPath.DataPath() + '/' + name);
        if (f.open(QIODevice::ReadOnly))
            bytes += f.readAll().size();
    }
    return t.nsecsElapsed() / 1e6 + (bytes < 0 ? 1 : 0);
}

template <class F> double best(int runs, F f)
{
    double ms = 1e30;
    for (int i = 0; i < runs; ++i) ms = std::min(ms, f());
    return ms;
}

template <class F> double median(int runs, F f)
{
    std::vector<double> ms;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        f(i);
        ms.push_back(t.nsecsElapsed() / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // each figure as soon as it is known
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    const int sets = argc > 1 ? std::atoi(argv[1]) : 999;
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("data");
    gDataPath.setDataPath(dir.filePath("data"));
    versions::setRoot(dir.filePath("versions"));
    seedBenchSets(sets);

    const double raw = best(5, rawRead);
    frmMain form;
    const double fill = best(5, [&form] {
        QElapsedTimer t;
        t.start();
        form.mpSetList_fill();
        return t.nsecsElapsed() / 1e6;
    });
    const double parse = best(5, [] {
        QElapsedTimer t;
        t.start();
        for (const QString &name : hotKeySetFiles()) {
            gpHotKeySet_clear();
            gfsHotKeySet_read(hotKeySetDigits(name));
        }
        return t.nsecsElapsed() / 1e6;
    });
    std::printf("list of %d sets: raw read %.1f ms, set reads %.1f ms, list fill %.1f ms, "
                "ratio of fill to raw read %.2f\n",
                sets, raw, parse, fill, fill / raw);

    // Each save changes the set, so each keeps a version; past 50 the oldest goes.
    gpHotKeySet_clear();
    gfsHotKeySet_read("02");
    const double save = median(200, [](int i) {
        gHotKeyGroups[1].Caption = QString("Column %1").arg(i);
        gpHotKeySet_write("02", "Set 2");
    });
    const QList<versions::Version> kept = versions::list("HKSET02.SDF");
    const double restore = median(40, [&kept](int i) { versions::restore(kept[i % 5], nullptr); });
    std::printf("one save of a set with its version: %.2f ms (median of 200); a restore: %.2f ms "
                "(median of 40); %lld versions kept\n",
                save, restore, static_cast<long long>(versions::list("HKSET02.SDF").size()));

    QElapsedTimer t;
    t.start();
    const SetRemoval removal = gpHotKeySet_remove("01");
    const double remove = t.nsecsElapsed() / 1e6;
    const QStringList left = hotKeySetFiles();
    const bool linksLeft = std::any_of(left.cbegin(), left.cend(), [](const QString &name) {
        QFile f(gDataPath.DataPath() + '/' + name);
        return f.open(QIODevice::ReadOnly) && f.readAll().contains("[LINKSET]1[");
    });
    std::printf("remove a set that %d sets link to: %.1f ms (%s, %s)\n", sets - 1, remove,
                removal.removed ? "removed" : "NOT removed",
                linksLeft ? "LINKS LEFT" : "no links left");
    return removal.removed && !linksLeft ? 0 : 1;
}
