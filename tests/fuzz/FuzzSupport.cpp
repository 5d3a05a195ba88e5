#include "FuzzSupport.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

namespace fuzzing {

namespace {

// Answers every box at once, as a user pressing OK or Cancel would.
class SilentDialogs : public platform::Dialogs {
public:
    int shown = 0;
    int msgBox(const QString &, int, const QString &) override
    {
        ++shown;
        return platform::vbOK;
    }
    QString inputBox(const QString &, const QString &, const QString &) override { return none(); }
    QString openFileName(const QString &, const QString &, const QString &) override
    {
        return none();
    }
    QString saveFileName(const QString &, const QString &, const QString &) override
    {
        return none();
    }
    QString folderName(const QString &, const QString &) override { return none(); }

private:
    QString none()
    {
        ++shown;
        return QString();
    }
};

SilentDialogs &dialogs()
{
    static SilentDialogs d;
    return d;
}

} // namespace

QString dataFolder()
{
    // In memory where the system has such a folder: every input rewrites a file,
    // which on a disk waits for it.
    static QTemporaryDir temp(QDir("/dev/shm").exists() ? "/dev/shm/hk-fuzz-XXXXXX"
                                                        : QDir::tempPath() + "/hk-fuzz-XXXXXX");
    static const bool ready = [] {
        if (!temp.isValid())
            fail("no temporary folder", temp.errorString());
        QDir(temp.path()).mkpath("data");
        gDataPath.setDataPath(temp.filePath("data"));
        // A save keeps a version first: in a folder of the run's own, never the user's.
        versions::setRoot(temp.filePath("versions"));
        platform::DialogPort::install(&dialogs());
        return true;
    }();
    (void)ready;
    return temp.filePath("data");
}

QString writeDataFile(const QString &name, const QByteArray &bytes)
{
    const QString path = QDir(dataFolder()).filePath(name);
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size())
        fail("cannot write the input file", f.errorString());
    return path;
}

QByteArray readDataFile(const QString &name)
{
    QFile f(QDir(dataFolder()).filePath(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

int takeBoxes()
{
    const int n = dialogs().shown;
    dialogs().shown = 0;
    return n;
}

void fail(const char *what, const QString &detail)
{
    std::fprintf(stderr, "FUZZ FAILURE: %s %s\n", what, qPrintable(detail));
    std::abort();
}

} // namespace fuzzing
