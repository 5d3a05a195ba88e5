#include "shell/hkeyCommandLine.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage.h"
#include "hotkeys/hkeyServices.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"
#include "settings/ui/zelDataPath_Ops.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QDir>
#include <cstdio>

namespace {

const char *const kUsage =
    "usage: hotkeys --export-sets FILE [--linked] [--special] [--coupon] [SET...]\n"
    "       hotkeys --import-sets FILE --report\n"
    "Export writes the sets named (every set when none is named) into the package FILE;\n"
    "--linked adds the sets their keys open, --special and --coupon the special and coupon\n"
    "keys. Import reads the package and reports what Import Sets would do; it writes nothing.\n";

bool isCommand(const QString &argument)
{
    return argument == "--export-sets" || argument == "--import-sets";
}

void print(std::FILE *to, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), to);
    std::fflush(to);
}

int usage()
{
    print(stderr, kUsage);
    return 2;
}

// The data folder and the database as the start settles them, without a window.
bool mpStore_open()
{
    if (!gfbZEL_DataPath_open(0))
        return false;
    gsHotKeyPicturePath = gDataPath.DataPath() + "/pictures/HotKeys/";
    if (gfbDBSM_Unconfigured()) {
        print(stderr, "No database is set up on this workstation: start the program once "
                      "with a window to set it up.\n");
        return false;
    }
    return gfbDBSM_Setup() && gfbDBSM_Open();
}

QStringList mpAllSets()
{
    QStringList sets;
    for (const QString &name : hotKeySetFiles()) {
        if (!hotKeySetNumber(name).isEmpty())
            sets << hotKeySetNumber(name);
    }
    return sets;
}

int mpExport(const QStringList &args)
{
    setpackage::ExportRequest request;
    bool linked = false;
    for (const QString &a : args.mid(1)) {
        if (a == "--linked")
            linked = true;
        else if (a == "--special")
            request.special = true;
        else if (a == "--coupon")
            request.coupon = true;
        else if (bool number = false; a.toInt(&number) > 0 && number)
            request.sets << a;
        else
            return usage();
    }
    if (!mpStore_open())
        return 1;
    if (request.sets.isEmpty())
        request.sets = mpAllSets();
    if (linked)
        request.sets += setpackage::linkedSets(request.sets);
    const setpackage::ExportResult result = setpackage::exportSets(args[0], request);
    for (const QString &note : result.notes) print(stderr, note + '\n');
    if (!result.ok) {
        print(stderr, result.error + '\n');
        return 1;
    }
    print(stdout, QString("%1: %2 sets, %3 pictures, %4 keys that sell an item.\n")
                      .arg(QDir::toNativeSeparators(args[0]))
                      .arg(result.sets)
                      .arg(result.pictures)
                      .arg(result.itemKeys));
    return 0;
}

int mpImportReport(const QStringList &args)
{
    if (args.size() != 2 || args[1] != "--report")
        return usage();
    if (!mpStore_open())
        return 1;
    QString error;
    const std::optional<setpackage::Plan> plan = setpackage::readPackage(args[0], &error);
    if (!plan) {
        print(stderr, error.replace('\r', '\n') + '\n');
        return 1;
    }
    print(stdout, setpackage::reportText(*plan));
    return 0;
}

} // namespace

bool gfbCommandLine_windowless(int argc, char **argv)
{
    return argc > 1 && isCommand(QString::fromLocal8Bit(argv[1]));
}

std::optional<int> gfiCommandLine_run(const QStringList &arguments)
{
    const QString command = arguments.value(1);
    if (!isCommand(command))
        return std::nullopt;
    platform::ConsoleDialogs console;
    platform::Dialogs *before = &platform::DialogPort::get();
    platform::DialogPort::install(&console);
    const QStringList args = arguments.mid(2);
    int code = 2;
    if (args.isEmpty() || args[0].startsWith("--"))
        code = usage();
    else
        code = command == "--export-sets" ? mpExport(args) : mpImportReport(args);
    gpDBSM_Disconnect();
    platform::DialogPort::install(before);
    return code;
}
