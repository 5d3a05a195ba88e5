#pragma once
// A throwaway database for the benchmarks, in its own folder with its own
// settings store, so nothing of the user's is touched: an embedded one, or one
// on a PostgreSQL cluster that the benchmark starts in that folder.
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "platform/AppInfo.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "support/PgCluster.h"
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>

using testing_support::PgCluster;

// The engines of a run: "--engine NAME" once or more, both when none is given.
inline QStringList benchEngines(QStringList &args)
{
    QStringList engines;
    for (int i = args.indexOf("--engine"); i >= 0 && i + 1 < args.size();
         i = args.indexOf("--engine")) {
        engines << args[i + 1];
        args.remove(i, 2);
    }
    return engines.isEmpty() ? QStringList{"SQLite", "PostgreSQL"} : engines;
}

// Points the settings at a fresh database of `engine`; the cluster, when one
// was started, runs until the returned object is destroyed. False when none can run.
inline bool useBenchDatabase(const QTemporaryDir &dir, const QString &engine,
                             std::unique_ptr<PgCluster, void (*)(PgCluster *)> &cluster)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir.filePath("settings"));
    platform::setApplicationFolder(dir.path());
    gDataPath.setDataPath(dir.path());
    gpDBSM_RegisterDataFolder([] { return gDataPath.DataPath(); });
    for (const auto &[k, v] :
         {std::pair{"Engine", "SQLite"}, {"DBName", "Bench"}, {"Server", "BENCH\\ZEL"}})
        platform::SaveSetting("ZEL Settings", "DATABASE", k, v);
    if (engine != "PostgreSQL")
        return SqliteEngine::create(dir.filePath("Bench.db"), nullptr);
    cluster = {new PgCluster, [](PgCluster *c) {
                   c->stop();
                   delete c;
               }};
    QString error;
    if (!cluster->start(dir.filePath("cluster"), &error) ||
        !PostgresEngine::create(cluster->server(), PgCluster::kUser, PgCluster::kPassword, "bench",
                                &error)) {
        std::fprintf(stderr, "no PostgreSQL cluster: %s\n", qPrintable(error));
        return false;
    }
    for (const auto &[k, v] : {std::pair{"Engine", QString("PostgreSQL")},
                               {"DBName", QString("bench")},
                               {"Server", cluster->server()},
                               {"UserName", PgCluster::kUser},
                               {"Password", PgCluster::kPassword}})
        platform::SaveSetting("ZEL Settings", "DATABASE", k, v);
    return true;
}
