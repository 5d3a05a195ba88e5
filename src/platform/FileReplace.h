#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

// Replaces a file whole, so that another station reading it meanwhile sees the
// whole old file or the whole new one, never a missing or a short one: the bytes
// go to a temporary file in the same folder, are flushed to the disk, and the
// temporary file is renamed over `path` in one step, after which the folder is
// flushed too. On failure `path` is as it was, the temporary file is gone, and
// `reason` says why in the user's words. Temporary files of `path` that saves
// killed midway left behind are removed first (see removeAbandonedTemporaries).
bool replaceFile(const QString &path, const QByteArray &bytes, QString *reason = nullptr);

struct Replacement {
    QString path;
    QByteArray bytes;
    bool replaced = false;
    QString reason; // why not, when the replacement failed
};

// Replaces several files of one folder as replaceFile replaces one, with the waits
// for the disk shared: every temporary file is written and flushed, then each is
// renamed over its file, then the folder is flushed once. `stillWanted`, asked just
// before each rename, may leave a file out (another station changed it meanwhile):
// it is then neither replaced nor failed, and its temporary file is gone.
void replaceFiles(QList<Replacement> &files,
                  const std::function<bool(const Replacement &)> &stillWanted = {});

// The first half of a change to many files, of one folder or several, that must
// land whole or not at all: each file's bytes go to a new temporary file beside
// it (named in `temps`, in the files' order), flushed to the disk with the waits shared, while the
// file itself is not touched. The caller renames them into place, then syncs their folders. False
// when one could not be written: its `reason` says why, and no temporary file is left.
bool stageFiles(QList<Replacement> &files, QStringList &temps);
// Flushes the names of a folder to the disk, after renames into it.
void syncFolder(const QString &folder);

// Writes a file that does not exist yet, whole or not at all (through a temporary
// file renamed to its name), without waiting for the disk: for copies that a power
// cut may take, never for the data folder's files.
bool writeNewFile(const QString &path, const QByteArray &bytes, QString *reason = nullptr);

// The temporary name for `path`: "~hk-", its base name, a tag of this computer, the
// process id, a random part, ".tmp". No pattern of the suite's files (HKSET*.SDF,
// *.BDF) can match it, nor its short 8.3 form on Windows, which keeps the leading
// "~" and the TMP.
QString temporaryNameFor(const QString &path);

// Removes from `folder` the temporary files that saves killed midway left, of the
// files whose base names are given (of every file when none is): those of this
// computer whose process is no longer running, and any older than an hour, which no
// save takes. Another station's save in progress is never touched.
void removeAbandonedTemporaries(const QString &folder, const QStringList &baseNames = {});

// The names of the files in `folder`, read without looking at each file.
QStringList fileNamesIn(const QString &folder);
// A value that changes whenever a name is added to or taken from `folder`; 0 when
// the folder cannot be read.
qint64 folderStamp(const QString &folder);

// What an error code of the platform (errno, or GetLastError on Windows) means to
// a user: "Disk full: ..." for a full disk or quota, read-only, permission and so on.
QString fileErrorText(int code);

} // namespace platform
