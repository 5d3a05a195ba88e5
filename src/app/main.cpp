#include "platform/KeyPreviewForm.h"
#include "shell/hkeyMain.h"

int main(int argc, char **argv)
{
    platform::Application app(argc, argv);
    Main();
    return 0;
}
