#pragma once
#include <QByteArray>
#include <QString>

namespace platform {

// Replaces a file whole, so that another station reading it meanwhile sees the
// whole old file or the whole new one, never a missing or a short one: the bytes
// go to a temporary file in the same folder, are flushed to the disk, and the
// temporary file is renamed over `path` in one step. On failure `path` is as it
// was, the temporary file is gone, and `reason` says why in the user's words.
bool replaceFile(const QString &path, const QByteArray &bytes, QString *reason = nullptr);

// The temporary name for `path`: "~hk-", its base name, the process id, a random
// part, ".tmp". No pattern of the suite's files (HKSET*.SDF, *.BDF) can match it,
// nor its short 8.3 form on Windows, which keeps the leading "~" and the TMP.
QString temporaryNameFor(const QString &path);

// What an error code of the platform (errno, or GetLastError on Windows) means to
// a user: "Disk full: ..." for a full disk or quota, read-only, permission and so on.
QString fileErrorText(int code);

} // namespace platform
