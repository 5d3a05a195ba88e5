// A second station for the tests of saving.
//   hk_save_helper loop FOLDER COUNT        saves set 07 COUNT times, its two versions in turn
//   hk_save_helper once FOLDER WHAT LIMIT   one save (see saveOnce) with files limited to
//                                           LIMIT bytes; prints what the user was told
//   hk_save_helper killed FOLDER COUNT      COUNT times starts a station that saves set 07 in
//                                           a loop and kills it at a random moment; prints
//                                           how many temporary files the killed ones left
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "settings/clsDataPath.h"
#include "support/SaveScenarios.h"
#include <QCoreApplication>
#include <QDir>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <climits>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace testing_support;

namespace {

int saveLoop(ScriptedDialogs &dialogs, int count)
{
    for (int i = 0; i < count; ++i)
        if (!gpHotKeySet_write("07", fillSetVersion(i % 2))) {
            for (const Box &box : dialogs.take())
                std::fprintf(stderr, "%s\n", qPrintable(box.text));
            return 1;
        }
    return 0;
}

int temporaryFilesIn(const QString &folder)
{
    return static_cast<int>(QDir(folder).entryList({"~hk-*"}, QDir::Files | QDir::Hidden).size());
}

// A save takes a few milliseconds; the kills fall inside and between saves. The clock
// starts when the station is about to save, so a slow start (a sanitizer build) does not
// put every kill before the first save.
int killedSaves(ScriptedDialogs &dialogs, int count)
{
    const QString versionsFolder = versions::dataFolderVersions() + "/HKSET07.SDF";
    int left = 0;
    for (int i = 0; i < count; ++i) {
        int ready[2];
        const pid_t station = ::pipe(ready) == 0 ? ::fork() : -1;
        if (station < 0)
            return 2;
        if (station == 0)
            ::_exit(::write(ready[1], "", 1) == 1 ? saveLoop(dialogs, INT_MAX) : 2);
        ::close(ready[1]); // a station that dies before it saves ends the read
        char go = 0;
        if (::read(ready[0], &go, 1) == 1)
            ::usleep(QRandomGenerator::global()->bounded(20000));
        ::close(ready[0]);
        ::kill(station, SIGKILL);
        ::waitpid(station, nullptr, 0);
        left += temporaryFilesIn(gDataPath.DataPath()) + temporaryFilesIn(versionsFolder);
    }
    std::printf("%d\n", left);
    return 0;
}

int saveLimited(ScriptedDialogs &dialogs, const QString &what, rlim_t limit)
{
    // Past the limit a write fails with "file too large" instead of ending the process.
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit size{limit, limit};
    if (setrlimit(RLIMIT_FSIZE, &size) != 0)
        return 2;
    // The old file cannot be kept as a version under the limit either; going on without
    // it lets the save itself meet the limit.
    dialogs.answer(platform::vbYes);
    QStringList said;
    const bool saved = saveOnce(what, dialogs, &said);
    for (const QString &text : said) std::printf("%s\n", qPrintable(text));
    return saved ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QStringList args = app.arguments();
    if (args.size() < 4 || (args[1] == "once" && args.size() < 5)) {
        std::fprintf(stderr,
                     "usage: hk_save_helper loop|killed FOLDER COUNT | once FOLDER WHAT LIMIT\n");
        return 2;
    }
    gDataPath.setDataPath(args[2]);
    // Beside the test's data folder, never the user's own versions.
    versions::setRoot(args[2] + "-versions");
    ScriptedDialogs dialogs;
    platform::DialogPort::install(&dialogs);
    if (args[1] == "loop")
        return saveLoop(dialogs, args[3].toInt());
    if (args[1] == "killed")
        return killedSaves(dialogs, args[3].toInt());
    return saveLimited(dialogs, args[3], args[4].toULongLong());
}
