#pragma once
#include <QString>

namespace platform {

// A path as the suite writes it ("C:\QR") as a path of this machine. On
// Windows it stays as written. Elsewhere a drive root "C:\" is the folder named
// by the environment variable HOTKEYS_DRIVE_C (the user's home folder when it
// is not set), and backslashes become slashes.
QString nativePath(const QString &suitePath);

// True when the path ends in a separator, "\" or this platform's own.
bool endsWithSeparator(const QString &path);

} // namespace platform
