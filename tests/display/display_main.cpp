// The real-display tests: the program's screens on an X server with a window
// manager, through the production ports. tests/display/run.sh starts them.
#include "display/Robot.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QGuiApplication>
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

} // namespace

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    std::signal(SIGALRM, onWatchdog);
    alarm(110);
    platform::Application app(argc, argv);
    if (QGuiApplication::platformName() != "xcb") {
        std::fprintf(stderr, "These tests need an X display (QT_QPA_PLATFORM=xcb); "
                             "run them through tests/display/run.sh.\n");
        return 1;
    }
    return RUN_ALL_TESTS();
}
