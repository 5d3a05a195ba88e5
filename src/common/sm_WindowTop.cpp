#include "common/sm_WindowTop.h"
#include "platform/Shell.h"

bool gfbWindow_topMost(QWidget *hWnd, bool bOnTop)
{
    platform::ShellPort::get().setTopMost(hWnd, bOnTop);
    return true;
}
