#pragma once
#include "platform/Port.h"
#include <QString>

namespace platform {

// The per-user settings store: application, section, key, text value.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual QString read(const QString &app, const QString &section, const QString &key,
                         const QString &defaultValue) = 0;
    virtual void write(const QString &app, const QString &section, const QString &key,
                       const QString &value) = 0;
    virtual void remove(const QString &app, const QString &section, const QString &key) = 0;
};

// Native store: the registry on Windows, an INI file under the user's config folder elsewhere.
class QSettingsStore : public SettingsStore {
public:
    QString read(const QString &app, const QString &section, const QString &key,
                 const QString &defaultValue) override;
    void write(const QString &app, const QString &section, const QString &key,
               const QString &value) override;
    void remove(const QString &app, const QString &section, const QString &key) override;
};

using Settings = Port<SettingsStore, QSettingsStore>;

QString GetSetting(const QString &app, const QString &section, const QString &key,
                   const QString &defaultValue = QString());
void SaveSetting(const QString &app, const QString &section, const QString &key,
                 const QString &value);
void DeleteSetting(const QString &app, const QString &section, const QString &key);

} // namespace platform

// The suite's settings: application and section of the data path record, which the
// database's keys share.
inline constexpr const char *kSettingsApp = "ZEL Settings";
inline constexpr const char *kDatabaseSection = "DATABASE";
