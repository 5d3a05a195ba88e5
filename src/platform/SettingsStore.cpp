#include "platform/SettingsStore.h"
#include <QSettings>

namespace platform {

namespace {
QString path(const QString &section, const QString &key)
{
    return section + '/' + key;
}
} // namespace

QString QSettingsStore::read(const QString &app, const QString &section, const QString &key,
                             const QString &defaultValue)
{
    QSettings s(QSettings::NativeFormat, QSettings::UserScope, app);
    // INI files keep no types: convert explicitly so a value reads the same in every process.
    return s.value(path(section, key), defaultValue).toString();
}

void QSettingsStore::write(const QString &app, const QString &section, const QString &key,
                           const QString &value)
{
    QSettings s(QSettings::NativeFormat, QSettings::UserScope, app);
    s.setValue(path(section, key), value);
}

void QSettingsStore::remove(const QString &app, const QString &section, const QString &key)
{
    QSettings s(QSettings::NativeFormat, QSettings::UserScope, app);
    s.remove(path(section, key));
}

QString GetSetting(const QString &app, const QString &section, const QString &key,
                   const QString &defaultValue)
{
    return Settings::get().read(app, section, key, defaultValue);
}

void SaveSetting(const QString &app, const QString &section, const QString &key,
                 const QString &value)
{
    Settings::get().write(app, section, key, value);
}

void DeleteSetting(const QString &app, const QString &section, const QString &key)
{
    Settings::get().remove(app, section, key);
}

} // namespace platform
