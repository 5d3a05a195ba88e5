#include "settings/ui/zelDataPath_Ops.h"
#include "common/sm_Files.h"
#include "common/sm_Messages.h"
#include "platform/Dialogs.h"
#include "platform/Paths.h"
#include "platform/ui/Modal.h"
#include "settings/clsDataPath.h"
#include "settings/sm_SafeStub.h"
#include "settings/ui/frmSM_DATAPATH2.h"
#include <QApplication>
#include <QFile>

namespace {

void mpCopyUpperAlt()
{
    const QString target = gfsPath_join(gDataPath.DataPath(), "upper.alt");
    const QString source = gfsPath_join(QCoreApplication::applicationDirPath(), "upper.alt");
    if (!gfbFile_exists(target) && gfbFile_exists(source))
        QFile::copy(source, target);
}

} // namespace

bool gfbZEL_DataPath_open(qint16 iMaxStations)
{
    gDataPath.setAppLabel(kSettingsApp);
    gDataPath.setCreatePath(false);
    gDataPath.setDefaultNetwork(false);
    gDataPath.setMaxStations(iMaxStations < 51 ? 50 : iMaxStations);
    gDataPath.setDefaultStation("1");
    gDataPath.setStationNumberEnabled(true);
    gDataPath.setDataPath("");
    gDataPath.Read(true);

    QString path = gDataPath.DataPath();
    if (platform::endsWithSeparator(path))
        gDataPath.setDataPath(path.chopped(1));

    if (!gDataPath.DataPath().isEmpty()) {
        if (gfbFolder_exists(platform::nativePath("C:\\zelsafe")))
            gfbSafe_CheckDataPath();
        gDataPath.Validate(true);
        if (gDataPath.Valid())
            mpCopyUpperAlt();
        else
            gDataPath.setDataPath("");
    }
    if (!gDataPath.DataPath().isEmpty())
        return true;

    if (gDataPath.Network()) {
        platform::MsgBox("The network is currently down or is not set up properly. Please "
                         "contact your network administrator for help.",
                         platform::vbOKOnly, "Network Not Found");
        return false;
    }
    if (!gfbAsk("A path to the ZEL Data Files has not been defined",
                "Do you want to define it now?", 0))
        return false;
    gDataPath.setCreatePath(true);
    gDataPath.setStationNumberEnabled(true);
    frmSM_DATAPATH2 form;
    form.Form_Load();
    platform::showModal(form);
    QApplication::processEvents();
    return !gDataPath.DataPath().isEmpty();
}
