#include "display/ProgramTest.h"
#include "platform/SettingsStore.h"
#include "platform/ui/MSFlexGrid.h"
#include "settings/ui/frmSMFILE_PATH.h"
#include "settings/ui/frmSM_DATAPATH2.h"
#include "shell/frmMain.h"
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace display;

namespace {

class DataPathOnDisplay : public ProgramTest {};

} // namespace

TEST_F(DataPathOnDisplay, AStartWithoutDataPathAsksForItThenShowsTheSets)
{
    platform::DeleteSetting("ZEL Settings", "DATABASE", "DATAPATH");
    QPointer<frmSM_DATAPATH2> form;
    int rows = 0;
    robot.answer("A path to the ZEL Data Files has not been defined", QMessageBox::Yes);
    robot.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) {
        form = &f;
        robot.shot(&f, "data-path");
        Robot::click(f.txtEdit[1]);
        Robot::key("ctrl+a");
        Robot::type(dataPath());
    });
    robot.until(
        "the typed data path", [&] { return form->txtEdit[1]->text() == dataPath(); },
        [&] { Robot::click(form->cmdBrowsePath[1]); });
    robot.on<frmSMFILE_PATH>([&](frmSMFILE_PATH &browser) {
        EXPECT_EQ(browser.lblPath->text(), dataPath());
        robot.shot(&browser, "path-browser");
        Robot::click(browser.cmdOkCancel[0]);
    });
    robot.on<frmSM_DATAPATH2>([&](frmSM_DATAPATH2 &f) {
        EXPECT_EQ(f.txtEdit[1]->text(), dataPath());
        Robot::click(f.cmdOkCancel[0]);
    });
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 13);
    EXPECT_EQ(platform::GetSetting("ZEL Settings", "DATABASE", "DATAPATH", ""), dataPath());
}
