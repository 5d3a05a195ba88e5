#pragma once
#include <QString>

namespace platform {

// The product name that titles every box without a title of its own.
inline constexpr const char *kProductName = "ZEL Hot Keys";

// The running application's title; a second instance renames itself so that a
// search by title cannot find it.
QString appTitle();
void setAppTitle(const QString &title);

// The folder of the program's own files; a test may point it elsewhere.
QString applicationFolder();
void setApplicationFolder(const QString &folder);

} // namespace platform
