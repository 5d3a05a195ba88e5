// The real-display tests: the program's screens on an X server with a window
// manager, through the production ports. tests/display/run.sh starts them.
#include "display/Robot.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

// A modal loop that no step can reach must not hang the run.
void onWatchdog(int)
{
    const char text[] = "display tests: still running after the time limit, stopped\n";
    [[maybe_unused]] auto n = write(2, text, sizeof text - 1);
    _exit(1);
}

// The help button opens a web page: a stand-in browser records the address.
void installBrowser(const QString &folder)
{
    QFile script(folder + "/xdg-open");
    script.open(QIODevice::WriteOnly);
    script.write("#!/bin/sh\necho \"$1\" >> \"$HK_DISPLAY_URLS\"\n");
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", (folder + ':').toLocal8Bit() + qgetenv("PATH"));
}

} // namespace

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    std::signal(SIGALRM, onWatchdog);
    alarm(110);
    QDir runtime(QDir::temp().filePath("hk-display-runtime"));
    runtime.mkpath(".");
    QFile::setPermissions(runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    QTemporaryDir browser;
    installBrowser(browser.path());
    platform::Application app(argc, argv);
    if (QGuiApplication::platformName() != "xcb") {
        std::fprintf(stderr, "These tests need an X display (QT_QPA_PLATFORM=xcb); "
                             "run them through tests/display/run.sh.\n");
        return 1;
    }
    return RUN_ALL_TESTS();
}
