#pragma once
#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

// Earlier states of the set, special and coupon files, kept outside the data folder
// (one folder per data folder, so two stores never mix) before every rewrite or removal.
namespace versions {

inline constexpr int kMaxVersions = 50;

// The folder that holds the versions of every data folder; a test points it elsewhere.
QString root();
void setRoot(const QString &folder);
// The versions of the data folder in use: its folder name followed by a hash of its path.
QString dataFolderVersions();

struct Version {
    QString fileName; // "HKSET07.SDF"
    QString path;     // the kept copy
    QDateTime time;   // when it was replaced, local time
};

// Keeps the file as it is now; true when kept, when it does not exist, or when the
// newest version already holds the same bytes. `error` says why not.
bool keep(const QString &path, QString *error = nullptr);
// The same for a file whose bytes were just read.
bool keep(const QString &path, const QByteArray &bytes, QString *error = nullptr);
// Newest first.
QList<Version> list(const QString &fileName);
// The names of the data folder's files that have versions.
QStringList keptFiles();
QByteArray bytesOf(const Version &version);
// Puts the version back in the data folder, keeping first what it replaces.
bool restore(const Version &version, QString *error);

// A file's bytes when a screen read it, to tell later whether another station changed it.
struct FileStamp {
    bool exists = false;
    QByteArray bytes;
    static FileStamp of(const QString &path);
    bool operator==(const FileStamp &) const = default;
};

} // namespace versions

// Keeps a version before `path` is rewritten or removed; when that fails, asks the
// user whether to go on without it. True to go on.
bool gfbVersion_keep(const QString &path);

// Before a screen writes the file it read: when another station changed or removed it
// meanwhile, keeps the other station's file and asks whether to overwrite it. True to
// write, false to keep the screen open with nothing saved. `what` names the file for
// the user: "Hot keys set 07", "The special key file".
bool gfbOtherStation_check(const QString &path, const versions::FileStamp &read,
                           const QString &what);
