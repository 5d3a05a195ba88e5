#include "shell/hkeyMain.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/Instance.h"
#include "platform/Shell.h"

void Main() {
    using namespace platform;
    if (Instance::otherIsRunning()) {
        MsgBox(appTitle() + "is already running.\rThis Program Can Only Be Runing Once On This "
                            "Machine",
               vbCritical);
        ShellPort::get().exitProcess(0);
    }
    gpApplication_end();
}

void gpApplication_end() {
    platform::ShellPort::get().exitProcess(0);
}
