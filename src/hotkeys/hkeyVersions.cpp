#include "hotkeys/hkeyVersions.h"
#include "platform/Dialogs.h"
#include "platform/FileReplace.h"
#include "settings/clsDataPath.h"
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

QString g_root;

const char *const kStampFormat = "yyyyMMdd'T'HHmmsszzz";

QString fileFolder(const QString &fileName)
{
    return versions::dataFolderVersions() + '/' + fileName;
}

// Oldest first: the names start with the time they were kept.
QStringList versionNames(const QString &fileName)
{
    return QDir(fileFolder(fileName)).entryList(QDir::Files, QDir::Name);
}

QString newVersionName(const QString &folder)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(kStampFormat) + 'Z';
    QString name = stamp;
    for (int n = 2; QFile::exists(folder + '/' + name); ++n)
        name = stamp + QString("-%1").arg(n, 3, 10, QChar('0'));
    return name;
}

void dropOldest(const QString &fileName)
{
    const QStringList names = versionNames(fileName);
    for (qsizetype i = 0; i + versions::kMaxVersions < names.size(); ++i)
        QFile::remove(fileFolder(fileName) + '/' + names[i]);
}

} // namespace

namespace versions {

QString root()
{
    if (!g_root.isEmpty())
        return g_root;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           "/ZEL Hot Keys/versions";
}

void setRoot(const QString &folder)
{
    g_root = folder;
}

QString dataFolderVersions()
{
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
    return root() + '/' + readable + '-' + QString::fromLatin1(hash.toHex().left(12));
}

bool keep(const QString &path, QString *error)
{
    const FileStamp now = FileStamp::of(path);
    if (!now.exists)
        return true;
    const QString fileName = QFileInfo(path).fileName();
    const QList<Version> kept = list(fileName);
    if (!kept.isEmpty() && bytesOf(kept.first()) == now.bytes)
        return true;
    const QString folder = fileFolder(fileName);
    if (!QDir().mkpath(folder)) {
        if (error)
            *error = "The folder " + QDir::toNativeSeparators(folder) + " could not be made.";
        return false;
    }
    if (!platform::replaceFile(folder + '/' + newVersionName(folder), now.bytes, error))
        return false;
    dropOldest(fileName);
    return true;
}

QList<Version> list(const QString &fileName)
{
    QList<Version> result;
    const QStringList names = versionNames(fileName);
    for (auto name = names.crbegin(); name != names.crend(); ++name) {
        QDateTime time = QDateTime::fromString(name->left(18), kStampFormat);
        time.setTimeSpec(Qt::UTC);
        result.append({fileName, fileFolder(fileName) + '/' + *name, time.toLocalTime()});
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
