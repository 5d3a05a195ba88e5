#pragma once
// A throwaway embedded database for the benchmarks, in its own folder with its
// own settings store, so nothing of the user's is touched.
#include "database/DbEngine.h"
#include "platform/AppInfo.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include <QSettings>
#include <QTemporaryDir>

inline void useBenchDatabase(const QTemporaryDir &dir)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir.filePath("settings"));
    platform::setApplicationFolder(dir.path());
    gDataPath.setDataPath(dir.path());
    for (const auto &[k, v] :
         {std::pair{"Engine", "SQLite"}, {"DBName", "Bench"}, {"Server", "BENCH\\ZEL"}})
        platform::SaveSetting("ZEL Settings", "DATABASE", k, v);
    SqliteEngine::create(dir.filePath("Bench.db"), nullptr);
}
