#include "platform/FileReplace.h"
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QHash>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSysInfo>
#include <algorithm>
#include <atomic>
#include <optional>
#include <span>
#include <thread>
#include <vector>

#ifdef Q_OS_WIN
#include <QDir>
#include <windows.h>
#else
#include <QFile>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace platform {

namespace {

const char *const kFull = "Disk full: there is no room left on the disk of the data folder, or "
                          "the disk quota is used up. Free some space there and try again.";
const char *const kTooLarge = "File too large: the system does not allow a file of this size "
                              "there. Ask whoever looks after the computers.";
const char *const kReadOnly = "Read-only: the disk or share of the data folder cannot be written "
                              "to. Ask whoever looks after the computers to allow it.";
const char *const kDenied = "Permission denied: this user may not write in the data folder or "
                            "replace the file. Ask whoever looks after the computers to allow it.";
const char *const kMissing = "Folder not found: the data folder is missing or cannot be reached. "
                             "Check the connection to it and try again.";
const char *const kNetwork = "Network error: the connection to the share of the data folder "
                             "failed. Check the network and try again.";
const char *const kFailed = "Input/output error: the disk or share of the data folder failed "
                            "while writing. Check it and try again.";
const char *const kInUse = "In use: another program or station holds the file open. Wait a "
                           "moment and try again.";

// Longer than any save takes, and than the clocks of a station and of the share
// may differ: a temporary file this old was left by a save that ended midway.
constexpr qint64 kAbandonedAfterSeconds = 3600;

// Temporary files written before they are flushed together and closed.
constexpr qsizetype kOpenAtOnce = 64;
// Enough threads for the disk to serve many waits at once.
constexpr size_t kThreads = 8;

enum class Durability { Synced, Unsynced };

struct FoundTemporary {
    QString name;
    qint64 ageSeconds = 0;
};

#ifdef Q_OS_WIN

using Handle = HANDLE;
const int kExists = ERROR_FILE_EXISTS;

std::wstring native(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

// Creates the file, which must not exist.
int createTemporary(const QString &temp, const QString &, Handle &h)
{
    h = CreateFileW(native(temp).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return h == INVALID_HANDLE_VALUE ? static_cast<int>(GetLastError()) : 0;
}

int writeAll(Handle h, const QByteArray &bytes)
{
    const char *data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        DWORD written = 0;
        if (!WriteFile(h, data, static_cast<DWORD>(left), &written, nullptr))
            return static_cast<int>(GetLastError());
        if (written == 0)
            return ERROR_WRITE_FAULT;
        data += written;
        left -= written;
    }
    return 0;
}

void startFlush(Handle) {}

int finishTemporary(Handle h, Durability durability)
{
    DWORD error = 0;
    if (durability == Durability::Synced && !FlushFileBuffers(h))
        error = GetLastError();
    if (!CloseHandle(h) && !error)
        error = GetLastError();
    return static_cast<int>(error);
}

// A station that reads the old file at this moment holds it open; it lets go soon.
int moveOver(const QString &temp, const QString &path, Durability durability)
{
    const DWORD flags =
        MOVEFILE_REPLACE_EXISTING | (durability == Durability::Synced ? MOVEFILE_WRITE_THROUGH : 0);
    for (int attempt = 0;; ++attempt) {
        if (MoveFileExW(native(temp).c_str(), native(path).c_str(), flags))
            return 0;
        const DWORD error = GetLastError();
        if ((error != ERROR_SHARING_VIOLATION && error != ERROR_LOCK_VIOLATION &&
             error != ERROR_ACCESS_DENIED) ||
            attempt == 20)
            return static_cast<int>(error);
        Sleep(50);
    }
}

// The rename went through with write-through, which takes the folder along.
void flushFolder(const QString &) {}

void removeTemporary(const QString &temp)
{
    DeleteFileW(native(temp).c_str());
}

qint64 fileTimeValue(const FILETIME &time)
{
    return (static_cast<qint64>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

QList<FoundTemporary> temporariesIn(const QString &folder)
{
    QList<FoundTemporary> found;
    WIN32_FIND_DATAW entry;
    const HANDLE find = FindFirstFileW(native(folder + "/~hk-*.tmp").c_str(), &entry);
    if (find == INVALID_HANDLE_VALUE)
        return found;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    do {
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            found.append({QString::fromWCharArray(entry.cFileName),
                          (fileTimeValue(now) - fileTimeValue(entry.ftLastWriteTime)) / 10000000});
    } while (FindNextFileW(find, &entry));
    FindClose(find);
    return found;
}

bool processRunning(qint64 pid)
{
    if (pid <= 0 || pid > MAXDWORD)
        return false;
    const HANDLE process =
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(pid));
    if (!process) // one of another user is running but may not be looked at
        return GetLastError() != ERROR_INVALID_PARAMETER;
    DWORD code = 0;
    const bool running = GetExitCodeProcess(process, &code) && code == STILL_ACTIVE;
    CloseHandle(process);
    return running;
}

QStringList namesIn(const QString &folder)
{
    QStringList names;
    WIN32_FIND_DATAW entry;
    const HANDLE find = FindFirstFileExW(native(folder + "/*").c_str(), FindExInfoBasic, &entry,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (find == INVALID_HANDLE_VALUE)
        return names;
    do {
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            names << QString::fromWCharArray(entry.cFileName);
    } while (FindNextFileW(find, &entry));
    FindClose(find);
    return names;
}

qint64 stampOf(const QString &folder)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(native(folder).c_str(), GetFileExInfoStandard, &data))
        return 0;
    return fileTimeValue(data.ftLastWriteTime);
}

QString systemText(int code)
{
    wchar_t *buffer = nullptr;
    const DWORD n = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<LPWSTR>(&buffer), 0, nullptr);
    const QString text = n ? QString::fromWCharArray(buffer, n).trimmed() : QString();
    LocalFree(buffer);
    return text;
}

const char *knownText(int code)
{
    switch (code) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return kFull;
    case ERROR_FILE_TOO_LARGE:
        return kTooLarge;
    case ERROR_WRITE_PROTECT:
        return kReadOnly;
    case ERROR_ACCESS_DENIED:
        return kDenied;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return kMissing;
    case ERROR_NETNAME_DELETED:
    case ERROR_UNEXP_NET_ERR:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_SEM_TIMEOUT:
        return kNetwork;
    case ERROR_WRITE_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_CRC:
        return kFailed;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return kInUse;
    default:
        return nullptr;
    }
}

#else

using Handle = int;
const int kExists = EEXIST;

// Creates the file, which must not exist. It takes the old file's permissions, as
// an edited file keeps them.
int createTemporary(const QString &temp, const QString &path, Handle &fd)
{
    fd = ::open(QFile::encodeName(temp).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0)
        return errno;
    struct stat old;
    if (::stat(QFile::encodeName(path).constData(), &old) == 0)
        ::fchmod(fd, old.st_mode & 07777);
    return 0;
}

int writeAll(Handle fd, const QByteArray &bytes)
{
    const char *data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, data, static_cast<size_t>(left));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return n < 0 ? errno : EIO;
        data += n;
        left -= n;
    }
    return 0;
}

// The disk starts writing at once, so that the flushes of a group wait for it
// together instead of one after the other.
void startFlush(Handle fd)
{
#ifdef __linux__
    ::sync_file_range(fd, 0, 0, SYNC_FILE_RANGE_WRITE);
#else
    (void)fd;
#endif
}

int finishTemporary(Handle fd, Durability durability)
{
    int error = 0;
    if (durability == Durability::Synced && ::fsync(fd) != 0)
        error = errno;
    // A share may report a failed write only when the file is closed.
    if (::close(fd) != 0 && !error && errno != EINTR)
        error = errno;
    return error;
}

int moveOver(const QString &temp, const QString &path, Durability)
{
    // A network share answers "busy" while a station has the file open; that passes in a moment.
    for (int attempt = 0;
         ::rename(QFile::encodeName(temp).constData(), QFile::encodeName(path).constData()) != 0;
         ++attempt) {
        if (errno != EBUSY || attempt == 20)
            return errno;
        ::usleep(50000);
    }
    return 0;
}

// The new names must reach the disk too; a folder that cannot be synced still holds them.
void flushFolder(const QString &folder)
{
    const int dir =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

void removeTemporary(const QString &temp)
{
    ::unlink(QFile::encodeName(temp).constData());
}

// Calls `take` with the name of each entry of `folder` and whether it is a file.
template <class F> void forEachEntry(const QString &folder, F take)
{
    DIR *dir = ::opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return;
    while (const dirent *entry = ::readdir(dir)) {
        bool file = entry->d_type == DT_REG;
        if (entry->d_type == DT_UNKNOWN) {
            struct stat st;
            file = ::fstatat(::dirfd(dir), entry->d_name, &st, AT_SYMLINK_NOFOLLOW) == 0 &&
                   S_ISREG(st.st_mode);
        }
        take(entry->d_name, file, ::dirfd(dir));
    }
    ::closedir(dir);
}

QList<FoundTemporary> temporariesIn(const QString &folder)
{
    QList<FoundTemporary> found;
    const time_t now = std::time(nullptr);
    forEachEntry(folder, [&](const char *name, bool file, int dir) {
        const size_t length = std::strlen(name);
        struct stat st;
        if (file && length > 8 && std::strncmp(name, "~hk-", 4) == 0 &&
            std::strcmp(name + length - 4, ".tmp") == 0 &&
            ::fstatat(dir, name, &st, AT_SYMLINK_NOFOLLOW) == 0)
            found.append({QFile::decodeName(name), static_cast<qint64>(now - st.st_mtime)});
    });
    return found;
}

bool processRunning(qint64 pid)
{
    if (pid <= 0 || pid > INT_MAX)
        return false;
    // One of another user runs too, though it may not be signalled.
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
}

QStringList namesIn(const QString &folder)
{
    QStringList names;
    forEachEntry(folder, [&names](const char *name, bool file, int) {
        if (file)
            names << QFile::decodeName(name);
    });
    return names;
}

qint64 stampOf(const QString &folder)
{
    struct stat st;
    if (::stat(QFile::encodeName(folder).constData(), &st) != 0)
        return 0;
    return static_cast<qint64>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
}

QString systemText(int code)
{
    const QString text = QString::fromLocal8Bit(std::strerror(code));
    return text.startsWith("Unknown error") ? QString() : text;
}

const char *knownText(int code)
{
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        return kFull;
    case EFBIG:
        return kTooLarge;
    case EROFS:
        return kReadOnly;
    case EACCES:
    case EPERM:
        return kDenied;
    case ENOENT:
    case ENOTDIR:
        return kMissing;
    case ENETDOWN:
    case ENETUNREACH:
    case ENETRESET:
    case ECONNABORTED:
    case ECONNRESET:
    case EHOSTUNREACH:
    case ETIMEDOUT:
    case ESTALE:
        return kNetwork;
    case EIO:
        return kFailed;
    case EBUSY:
    case ETXTBSY:
        return kInUse;
    default:
        return nullptr;
    }
}

#endif

// The computer's tag in a temporary name, which tells whether its process id is one
// of this computer's.
QString computerTag()
{
    static const QString tag =
        QString::fromLatin1(QCryptographicHash::hash(QSysInfo::machineHostName().toLower().toUtf8(),
                                                     QCryptographicHash::Sha1)
                                .toHex()
                                .left(8));
    return tag;
}

struct TemporaryName {
    QString base;
    QString computer; // empty in the names of earlier versions, which had no tag
    qint64 pid = 0;
};

std::optional<TemporaryName> parseTemporaryName(const QString &name)
{
#ifdef Q_OS_WIN
    const auto options = QRegularExpression::CaseInsensitiveOption;
#else
    const auto options = QRegularExpression::NoPatternOption;
#endif
    static const QRegularExpression tagged("^~hk-(.+)-([0-9a-f]{8})-([0-9]+)-[0-9a-f]{8}\\.tmp$",
                                           options);
    static const QRegularExpression untagged("^~hk-(.+)-([0-9]+)-[0-9a-f]{8}\\.tmp$", options);
    if (const QRegularExpressionMatch m = tagged.match(name); m.hasMatch())
        return TemporaryName{m.captured(1), m.captured(2).toLower(), m.captured(3).toLongLong()};
    if (const QRegularExpressionMatch m = untagged.match(name); m.hasMatch())
        return TemporaryName{m.captured(1), QString(), m.captured(2).toLongLong()};
    return std::nullopt;
}

bool abandoned(const TemporaryName &name, qint64 ageSeconds)
{
    if (ageSeconds > kAbandonedAfterSeconds)
        return true;
    return name.computer == computerTag() && name.pid != QCoreApplication::applicationPid() &&
           !processRunning(name.pid);
}

// Creates the temporary file of `path` and writes it; the handle stays open for the
// flush. On failure nothing is left.
int writeTemporary(const QString &path, const QByteArray &bytes, QString &temp, Handle &h)
{
    const QString folder = QFileInfo(path).absolutePath();
    int error = kExists;
    // Another station may be saving under the same process id; a new random part avoids it.
    for (int attempt = 0; attempt < 5 && error == kExists; ++attempt) {
        temp = folder + '/' + temporaryNameFor(path);
        error = createTemporary(temp, path, h);
    }
    if (error)
        return error;
    error = writeAll(h, bytes);
    if (error) {
        finishTemporary(h, Durability::Unsynced);
        removeTemporary(temp);
    }
    return error;
}

void fail(Replacement &file, int error)
{
    file.replaced = false;
    file.reason = fileErrorText(error);
}

// Runs work(i) for every i below `count` on several threads at once. Where each
// call waits for the disk (a flush, or the space a replaced file frees), the disk
// then serves the waits together instead of one after the other.
template <class F> void inParallel(size_t count, F work)
{
    std::atomic<size_t> next = 0;
    const auto run = [&] {
        for (size_t i; (i = next++) < count;) work(i);
    };
    std::vector<std::thread> helpers;
    for (size_t n = 1; n < std::min(count, kThreads); ++n) helpers.emplace_back(run);
    run();
    for (std::thread &helper : helpers) helper.join();
}

struct Pending {
    QString temp; // empty when nothing is written
    Handle handle{};
    int error = 0;
};

// Removes the temporary files that killed saves left of these files, each folder looked at once.
void removeAbandonedOf(const QList<Replacement> &files)
{
    QHash<QString, QStringList> bases; // folder -> base names
    for (const Replacement &file : files) {
        const QFileInfo info(file.path);
        bases[info.absolutePath()] << info.completeBaseName();
    }
    for (auto folder = bases.cbegin(); folder != bases.cend(); ++folder)
        removeAbandonedTemporaries(folder.key(), folder.value());
}

// Writes every file's temporary file, flushed to the disk in groups that wait for it together.
QList<Pending> writeTemporaries(const QList<Replacement> &files, Durability durability)
{
    if (durability == Durability::Synced)
        removeAbandonedOf(files);
    const Replacement *const file = files.data();
    QList<Pending> pending(files.size());
    Pending *const p = pending.data();
    for (qsizetype first = 0; first < files.size(); first += kOpenAtOnce) {
        const qsizetype end = std::min(files.size(), first + kOpenAtOnce);
        for (qsizetype i = first; i < end; ++i) {
            p[i].error = writeTemporary(file[i].path, file[i].bytes, p[i].temp, p[i].handle);
            if (p[i].error)
                p[i].temp.clear();
            else if (durability == Durability::Synced)
                startFlush(p[i].handle);
        }
        inParallel(end - first, [&, first](size_t n) {
            const qsizetype i = first + static_cast<qsizetype>(n);
            if (!p[i].error)
                p[i].error = finishTemporary(p[i].handle, durability);
        });
    }
    return pending;
}

void replaceAll(QList<Replacement> &files,
                const std::function<bool(const Replacement &)> &stillWanted, Durability durability)
{
    if (files.isEmpty())
        return;
    const QString folder = QFileInfo(files.first().path).absolutePath();
    QList<Pending> pending = writeTemporaries(files, durability);
    Replacement *const file = files.data();
    Pending *const p = pending.data();
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (!p[i].error && stillWanted && !stillWanted(file[i])) {
            removeTemporary(p[i].temp);
            p[i].temp.clear();
        }
    }
    std::atomic<bool> moved = false;
    inParallel(files.size(), [&](size_t i) {
        if (p[i].temp.isEmpty() && !p[i].error)
            return; // not wanted
        const int error = p[i].error ? p[i].error : moveOver(p[i].temp, file[i].path, durability);
        if (error) {
            if (!p[i].temp.isEmpty())
                removeTemporary(p[i].temp);
            fail(file[i], error);
        } else {
            file[i].replaced = true;
            moved = true;
        }
    });
    if (moved && durability == Durability::Synced)
        flushFolder(folder);
}

bool replaceOne(const QString &path, const QByteArray &bytes, QString *reason,
                Durability durability)
{
    QList<Replacement> one{{path, bytes, false, {}}};
    replaceAll(one, {}, durability);
    if (!one.first().replaced && reason)
        *reason = one.first().reason;
    return one.first().replaced;
}

} // namespace

QString temporaryNameFor(const QString &path)
{
    return QString("~hk-%1-%2-%3-%4.tmp")
        .arg(QFileInfo(path).completeBaseName(), computerTag(),
             QString::number(QCoreApplication::applicationPid()),
             QString::number(QRandomGenerator::global()->generate(), 16).rightJustified(8, '0'));
}

bool replaceFile(const QString &path, const QByteArray &bytes, QString *reason)
{
    return replaceOne(path, bytes, reason, Durability::Synced);
}

void replaceFiles(QList<Replacement> &files,
                  const std::function<bool(const Replacement &)> &stillWanted)
{
    replaceAll(files, stillWanted, Durability::Synced);
}

bool writeNewFile(const QString &path, const QByteArray &bytes, QString *reason)
{
    return replaceOne(path, bytes, reason, Durability::Unsynced);
}

bool stageFiles(QList<Replacement> &files, QStringList &temps)
{
    QList<Pending> pending = writeTemporaries(files, Durability::Synced);
    const qsizetype failed = std::find_if(pending.cbegin(), pending.cend(),
                                          [](const Pending &p) { return p.error != 0; }) -
                             pending.cbegin();
    temps.clear();
    for (const Pending &p : pending) {
        if (failed < files.size() && !p.temp.isEmpty())
            removeTemporary(p.temp);
        temps << (failed < files.size() ? QString() : p.temp);
    }
    if (failed < files.size())
        fail(files[failed], pending[failed].error);
    return failed == files.size();
}

void syncFolder(const QString &folder)
{
    flushFolder(folder);
}

void removeAbandonedTemporaries(const QString &folder, const QStringList &baseNames)
{
#ifdef Q_OS_WIN
    const Qt::CaseSensitivity names = Qt::CaseInsensitive;
#else
    const Qt::CaseSensitivity names = Qt::CaseSensitive;
#endif
    for (const FoundTemporary &found : temporariesIn(folder)) {
        const std::optional<TemporaryName> name = parseTemporaryName(found.name);
        if (name && (baseNames.isEmpty() || baseNames.contains(name->base, names)) &&
            abandoned(*name, found.ageSeconds))
            removeTemporary(folder + '/' + found.name);
    }
}

QStringList fileNamesIn(const QString &folder)
{
    return namesIn(folder);
}

qint64 folderStamp(const QString &folder)
{
    return stampOf(folder);
}

QString fileErrorText(int code)
{
    if (const char *text = knownText(code))
        return QString::fromLatin1(text);
    const QString system = systemText(code);
    if (system.isEmpty())
        return QString("Error %1 of the operating system.").arg(code);
    return system + QString(" (error %1).").arg(code);
}

} // namespace platform
