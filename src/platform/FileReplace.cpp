#include "platform/FileReplace.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <cstring>
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

#ifdef Q_OS_WIN

const int kExists = ERROR_FILE_EXISTS;

std::wstring native(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

// Creates the file, which must not exist, writes it and flushes it to the disk.
int writeNew(const QString &temp, const QByteArray &bytes, const QString &)
{
    HANDLE h = CreateFileW(native(temp).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return static_cast<int>(GetLastError());
    DWORD error = 0;
    const char *data = bytes.constData();
    qsizetype left = bytes.size();
    while (!error && left > 0) {
        DWORD written = 0;
        if (!WriteFile(h, data, static_cast<DWORD>(left), &written, nullptr))
            error = GetLastError();
        else if (written == 0)
            error = ERROR_WRITE_FAULT;
        data += written;
        left -= written;
    }
    if (!error && !FlushFileBuffers(h))
        error = GetLastError();
    if (!CloseHandle(h) && !error)
        error = GetLastError();
    if (error)
        DeleteFileW(native(temp).c_str());
    return static_cast<int>(error);
}

// A station that reads the old file at this moment holds it open; it lets go soon.
int moveOver(const QString &temp, const QString &path)
{
    for (int attempt = 0;; ++attempt) {
        if (MoveFileExW(native(temp).c_str(), native(path).c_str(),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return 0;
        const DWORD error = GetLastError();
        if ((error != ERROR_SHARING_VIOLATION && error != ERROR_LOCK_VIOLATION &&
             error != ERROR_ACCESS_DENIED) ||
            attempt == 20)
            return static_cast<int>(error);
        Sleep(50);
    }
}

void removeTemp(const QString &temp)
{
    DeleteFileW(native(temp).c_str());
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

const int kExists = EEXIST;

int writeAll(int fd, const QByteArray &bytes)
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

// Creates the file, which must not exist, writes it and flushes it to the disk.
// It takes the old file's permissions, as an edited file keeps them.
int writeNew(const QString &temp, const QByteArray &bytes, const QString &path)
{
    const QByteArray name = QFile::encodeName(temp);
    const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0)
        return errno;
    struct stat old;
    if (::stat(QFile::encodeName(path).constData(), &old) == 0)
        ::fchmod(fd, old.st_mode & 07777);
    int error = writeAll(fd, bytes);
    if (!error && ::fsync(fd) != 0)
        error = errno;
    // A share may report a failed write only when the file is closed.
    if (::close(fd) != 0 && !error && errno != EINTR)
        error = errno;
    if (error)
        ::unlink(name.constData());
    return error;
}

int moveOver(const QString &temp, const QString &path)
{
    // A network share answers "busy" while a station has the file open; that passes in a moment.
    for (int attempt = 0;
         ::rename(QFile::encodeName(temp).constData(), QFile::encodeName(path).constData()) != 0;
         ++attempt) {
        if (errno != EBUSY || attempt == 20)
            return errno;
        ::usleep(50000);
    }
    // The new name must reach the disk too; a folder that cannot be synced still holds it.
    const int dir = ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(),
                           O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    return 0;
}

void removeTemp(const QString &temp)
{
    ::unlink(QFile::encodeName(temp).constData());
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

} // namespace

QString temporaryNameFor(const QString &path)
{
    return QString("~hk-%1-%2-%3.tmp")
        .arg(QFileInfo(path).completeBaseName(),
             QString::number(QCoreApplication::applicationPid()),
             QString::number(QRandomGenerator::global()->generate(), 16).rightJustified(8, '0'));
}

bool replaceFile(const QString &path, const QByteArray &bytes, QString *reason)
{
    const QString folder = QFileInfo(path).absolutePath();
    QString temp;
    int error = kExists;
    // Another station may be saving under the same process id; a new random part avoids it.
    for (int attempt = 0; attempt < 5 && error == kExists; ++attempt) {
        temp = folder + '/' + temporaryNameFor(path);
        error = writeNew(temp, bytes, path);
    }
    if (!error) {
        error = moveOver(temp, path);
        if (error)
            removeTemp(temp);
    }
    if (error && reason)
        *reason = fileErrorText(error);
    return !error;
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
