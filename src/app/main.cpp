#include "platform/ui/KeyPreviewForm.h"
#include "shell/hkeyCommandLine.h"
#include "shell/hkeyMain.h"

int main(int argc, char **argv)
{
    // A script's command runs where there may be no display: it shows no window.
    if (gfbCommandLine_windowless(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    Main();
    return 0;
}
