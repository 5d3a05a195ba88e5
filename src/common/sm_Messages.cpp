#include "common/sm_Messages.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"

bool gfbAsk(const QString &sText, const QString &sQuestion, int iStyle)
{
    using namespace platform;
    return MsgBox(sText + "\r\r" + sQuestion, vbYesNo + vbQuestion + iStyle,
                  QString::fromLatin1(kProductName)) == vbYes;
}

bool gfbChanges_discard()
{
    using namespace platform;
    return MsgBox("Discard the changes to this set?", vbYesNo + vbQuestion + vbDefaultButton2,
                  QString::fromLatin1(kProductName)) == vbYes;
}
