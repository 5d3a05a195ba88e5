#include "hotkeys/hkeyVersions.h"
#include "platform/Dialogs.h"
#include "platform/FileReplace.h"
#include "settings/clsDataPath.h"
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>

namespace {

const char *const kStampFormat = "yyyyMMdd'T'HHmmsszzz";

// What is known of one file's folder of versions, kept while the folder is unchanged
// so that a save neither lists it nor reads its newest version again.
struct FolderIndex {
    qint64 stamp = 0;  // of the folder when read; 0 before
    QStringList names; // oldest first: the names start with the time they were kept
    QString newestName;
    QByteArray newestBytes;
};

struct VersionsState {
    QString root;             // set by a test; empty for the user's own
    QString dataPath, folder; // the data folder last asked about and its versions folder
    QHash<QString, FolderIndex> indexes;
};

VersionsState g_versions;

QString fileFolder(const QString &fileName)
{
    return versions::dataFolderVersions() + '/' + fileName;
}

bool isVersionName(const QString &name)
{
    // A save killed midway leaves a temporary file, which is no version.
    static const QRegularExpression stamped("^[0-9]{8}T[0-9]{9}Z(-[0-9]{3})?$");
    return stamped.match(name).hasMatch();
}

FolderIndex &indexOf(const QString &folder)
{
    FolderIndex &index = g_versions.indexes[folder];
    const qint64 stamp = platform::folderStamp(folder);
    if (stamp != 0 && stamp == index.stamp)
        return index;
    index = FolderIndex();
    if (stamp == 0) // no folder yet
        return index;
    // Read anew: another program changed the folder, or this one has not read it yet.
    platform::removeAbandonedTemporaries(folder);
    index.stamp = platform::folderStamp(folder);
    for (const QString &name : platform::fileNamesIn(folder)) {
        if (isVersionName(name))
            index.names << name;
    }
    index.names.sort();
    return index;
}

QByteArray newestBytes(FolderIndex &index, const QString &folder)
{
    if (index.names.isEmpty())
        return QByteArray();
    if (index.newestName != index.names.last()) {
        index.newestName = index.names.last();
        index.newestBytes = versions::bytesOf({QString(), folder + '/' + index.newestName, {}});
    }
    return index.newestBytes;
}

QString newVersionName(const FolderIndex &index)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(kStampFormat) + 'Z';
    QString name = stamp;
    for (int n = 2; index.names.contains(name); ++n)
        name = stamp + QString("-%1").arg(n, 3, 10, QChar('0'));
    return name;
}

} // namespace

namespace versions {

QString root()
{
    if (!g_versions.root.isEmpty())
        return g_versions.root;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           "/ZEL Hot Keys/versions";
}

void setRoot(const QString &folder)
{
    g_versions.root = folder;
}

QString dataFolderVersions()
{
    // The canonical path costs a look at every part of it; a removal asks for it per file.
    const QString dataPath = gDataPath.DataPath() + '|' + root();
    if (dataPath == g_versions.dataPath)
        return g_versions.folder;
    const QFileInfo data(gDataPath.DataPath());
    QString path = data.canonicalFilePath();
    if (path.isEmpty())
        path = data.absoluteFilePath();
#ifdef Q_OS_WIN
    path = path.toLower();
#endif
    static const QRegularExpression unsafe("[^A-Za-z0-9_-]");
    const QString readable = data.fileName().replace(unsafe, "_").left(32);
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1);
    const QString folder =
        root() + '/' + readable + '-' + QString::fromLatin1(hash.toHex().left(12));
    // Until the data folder exists its canonical path is not known yet.
    if (!data.canonicalFilePath().isEmpty()) {
        g_versions.dataPath = dataPath;
        g_versions.folder = folder;
    }
    return folder;
}

bool keep(const QString &path, QString *error)
{
    const FileStamp now = FileStamp::of(path);
    return !now.exists || keep(path, now.bytes, error);
}

bool keep(const QString &path, const QByteArray &bytes, QString *error)
{
    const QString folder = fileFolder(QFileInfo(path).fileName());
    FolderIndex &index = indexOf(folder);
    if (!index.names.isEmpty() && newestBytes(index, folder) == bytes)
        return true;
    if (index.stamp == 0 && !QDir().mkpath(folder)) {
        if (error)
            *error = "The folder " + QDir::toNativeSeparators(folder) + " could not be made.";
        return false;
    }
    // A copy that a power cut may take: the file it keeps is still whole in the data folder.
    const QString name = newVersionName(index);
    if (!platform::writeNewFile(folder + '/' + name, bytes, error))
        return false;
    index.names.insert(std::upper_bound(index.names.begin(), index.names.end(), name), name);
    index.newestName = name;
    index.newestBytes = bytes;
    while (index.names.size() > kMaxVersions) QFile::remove(folder + '/' + index.names.takeFirst());
    index.stamp = platform::folderStamp(folder);
    return true;
}

QList<Version> list(const QString &fileName)
{
    QList<Version> result;
    const QString folder = fileFolder(fileName);
    const QStringList names = indexOf(folder).names;
    for (auto name = names.crbegin(); name != names.crend(); ++name) {
        QDateTime time = QDateTime::fromString(name->left(18), kStampFormat);
        time.setTimeSpec(Qt::UTC);
        result.append({fileName, folder + '/' + *name, time.toLocalTime()});
    }
    return result;
}

QStringList keptFiles()
{
    return QDir(dataFolderVersions()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QByteArray bytesOf(const Version &version)
{
    QFile f(version.path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool restore(const Version &version, QString *error)
{
    QFile kept(version.path);
    if (!kept.open(QIODevice::ReadOnly)) {
        if (error)
            *error = kept.errorString();
        return false;
    }
    const QString target = gDataPath.DataPath() + '/' + version.fileName;
    return keep(target, error) && platform::replaceFile(target, kept.readAll(), error);
}

FileStamp FileStamp::of(const QString &path)
{
    FileStamp stamp;
    QFile f(path);
    stamp.exists = f.exists();
    if (f.open(QIODevice::ReadOnly))
        stamp.bytes = f.readAll();
    return stamp;
}

} // namespace versions

bool gfbVersion_keep(const QString &path)
{
    QString error;
    if (versions::keep(path, &error))
        return true;
    return platform::MsgBox(
               QDir::toNativeSeparators(path) +
                   "\r\rThe file as it is now could not be kept in Versions:\r" + error +
                   "\r\rYes: go on without keeping it.\rNo: leave the file "
                   "as it is.",
               platform::vbYesNo + platform::vbExclamation + platform::vbDefaultButton2,
               "Version Not Kept") == platform::vbYes;
}

bool gfbOtherStation_check(const QString &path, const versions::FileStamp &read,
                           const QString &what)
{
    const versions::FileStamp now = versions::FileStamp::of(path);
    if (now == read)
        return true;
    const bool kept = now.exists && versions::keep(path);
    const QString text =
        now.exists ? what + " was saved at another station since you opened it here.\r\r"
                            "Yes: save your changes over the other station's.\r"
                   : what + " was removed at another station since you opened it here.\r\r"
                            "Yes: save your changes, which brings it back.\r";
    return platform::MsgBox(
               text + "No: save nothing now; your changes stay on the screen." +
                   (kept ? "\r\rThe other station's file is kept in Versions." : QString()),
               platform::vbYesNo + platform::vbExclamation + platform::vbDefaultButton2,
               "Changed at Another Station") == platform::vbYes;
}
