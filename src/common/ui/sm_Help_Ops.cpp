#include "common/ui/sm_Help_Ops.h"
#include "common/sm_Shell.h"
#include "common/ui/frmHelp.h"
#include "platform/Shell.h"

const char *const kGuidesPage = "https://www.zelsoftware.com/guides-documents/";

void gpHelp_open(const QString &sTopic)
{
    // The address does not depend on the topic. When the page cannot be opened
    // the program's own page for the topic answers instead.
    if (!platform::ShellPort::get().openUrl(QString::fromLatin1(kGuidesPage)))
        gpHelp_show(sTopic);
}

void gpHelp_press(const QString &sTopic)
{
    platform::Shell &shell = platform::ShellPort::get();
    gpHelp_open(sTopic);
    glHelpProcess = glProcess_id("WinHlp32.exe");
    for (const platform::WindowEntry &w : shell.windows()) {
        if (!gfbWindow_match(w.handle, w.processId))
            break;
    }
    while (shell.pingWindow(glHelpWindow, 1000)) {
    }
}
