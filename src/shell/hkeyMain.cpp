#include "shell/hkeyMain.h"
#include "common/sm_Files.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "mail/frmSendMail.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/Instance.h"
#include "platform/Shell.h"
#include "platform/ui/Modal.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "settings/clsDataPath.h"
#include "settings/clsINI_Services.h"
#include "settings/ui/zelDataPath_Ops.h"
#include "shell/frmFirstRun.h"
#include "shell/frmMain.h"
#include "shell/hkeyCommandLine.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QApplication>
#include <QDir>

namespace {

// The folder for key pictures, and "pictures" above it when that is missing too.
void mpPictureFolder_make()
{
    const QString pictures = gDataPath.DataPath() + "/pictures";
    if (gfbFolder_exists(pictures + "/HotKeys"))
        return;
    if (!QDir().mkpath(pictures + "/HotKeys"))
        platform::MsgBox(QDir::toNativeSeparators(pictures + "/HotKeys") +
                             "\r\rThe folder for key pictures could not be made.\rKeys will show "
                             "no pictures until it exists.",
                         platform::vbExclamation);
}

bool mpFirstRun()
{
    gpDBSM_Disconnect();
    frmFirstRun first;
    first.Form_Load();
    platform::showModal(first);
    return !first.Canceled;
}

} // namespace

void gpPreviewMail_register()
{
    setPreviewMailOpener(gpSendMail_show);
}

void Main()
{
    using namespace platform;
    gpPreviewMail_register();
    gpDBSM_RegisterTables();
    if (const std::optional<int> code = gfiCommandLine_run(QCoreApplication::arguments()))
        ShellPort::get().exitProcess(*code);
    if (Instance::otherIsRunning()) {
        MsgBox(appTitle() + "is already running.\rThis Program Can Only Be Runing Once On This "
                            "Machine",
               vbCritical);
        ShellPort::get().exitProcess(0);
    }
    // The common controls need no initialisation on this toolkit.
    QApplication::processEvents();
    if (!gfbZEL_DataPath_open(0))
        ShellPort::get().exitProcess(0);
    mpPictureFolder_make();
    gsHotKeyPicturePath = gDataPath.DataPath() + "/pictures/HotKeys/";
    gfbSearchFields_read();
    // A workstation that names no database, or whose first run was cut off before its store
    // was stored: the user chooses one, or the start ends.
    if (gfbDBSM_Unconfigured() && !mpFirstRun())
        ShellPort::get().exitProcess(0);
    if (!gfbDBSM_Setup() && !(gfbDBSM_OwnUnfinished() && mpFirstRun() && gfbDBSM_Setup()))
        ShellPort::get().exitProcess(0);
    if (gfbDBSM_Open()) {
        frmMain form;
        Instance::listen(&form, appTitle(), [&form] {
            form.showNormal();
            form.raise();
            form.activateWindow();
        });
        form.Form_Load();
        showModal(form);
    }
    gpApplication_end();
}

bool gfbSearchFields_read()
{
    gIni.setFile_Name(gDataPath.DataPath() + "/ZEL.INI");
    if (!gIni.FileOpen()) {
        platform::MsgBox("Unable to open ZEL Configuration Settings File, ZEL.INI.",
                         platform::vbOKOnly, "Error");
        return false;
    }
    const QString inventory = gIni.GetValue("Primary Search Fields", "Search for Inventory by:");
    if (inventory == "Description")
        giInventorySearch = 0;
    else if (inventory == "Stock Locater")
        giInventorySearch = 2;
    else
        giInventorySearch = 3;
    const QString name = gIni.GetValue("Primary Search Fields", "Search for Name by:");
    if (name == "Business")
        giNameSearch = 3;
    else if (name == "ARCode")
        giNameSearch = 2;
    else
        giNameSearch = 0;
    return true;
}

void gpApplication_end()
{
    gpDBSM_Close();
    platform::ShellPort::get().exitProcess(0);
}
