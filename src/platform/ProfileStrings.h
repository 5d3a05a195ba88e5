#pragma once
#include <QString>

// The platform's INI file services. Sections and keys compare without regard
// to case; the first of duplicate sections or keys counts. A null key or value
// means what it means to the platform call: delete the section or the key.
// Sections, keys and values lose the white space around them (tab, line feed,
// vertical tab, form feed, carriage return, blank, no-break blank) on reading.
namespace platform {

// Copies the value (or the default when key or file is missing) into `buffer`,
// at most size - 1 characters, and returns how many were copied.
int GetPrivateProfileStringA(const QString &section, const QString &key,
                             const QString &defaultValue, QString &buffer, int size,
                             const QString &file);
// Writes one value, leaving every other line of the file as it was. Returns
// nonzero on success. An empty section with null key and value only tests
// whether the file can be used: it must exist and be readable and writable.
int WritePrivateProfileStringA(const QString &section, const QString &key, const QString &value,
                               const QString &file);

} // namespace platform
