// The real-display tests: the program's screens on an X server with a window
// manager, through the production ports. tests/display/run.sh starts them.
#include "platform/ui/KeyPreviewForm.h"
#include <QGuiApplication>
#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    platform::Application app(argc, argv);
    if (QGuiApplication::platformName() != "xcb") {
        std::fputs("These tests need an X display: run them through tests/display/run.sh.\n",
                   stderr);
        return 1;
    }
    return RUN_ALL_TESTS();
}
