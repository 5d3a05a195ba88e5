#include "settings/sm_SafeStub.h"
#include "common/sm_Files.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"

bool gfbSafe_CheckDataPath()
{
    using namespace platform;
    while (!gfbFolder_exists(gDataPath.DataPath())) {
        if (MsgBox("Server not found. Check Server and Network Connections.\r\n Retry?",
                   vbYesNo + vbQuestion, "Network Error") != vbYes)
            return false;
    }
    return true;
}
