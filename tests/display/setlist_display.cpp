#include "display/ProgramTest.h"
#include "platform/MSFlexGrid.h"
#include "shell/frmMain.h"
#include <QPushButton>

using namespace display;

namespace {

class SetListOnDisplay : public ProgramTest {};

} // namespace

TEST_F(SetListOnDisplay, StartsOnTheSetListAndEscEndsTheProgram)
{
    int rows = 0;
    robot.on<frmMain>([&](frmMain &main) {
        rows = main.fgrdItems->Rows();
        robot.shot(&main, "set-list");
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_EQ(rows, 13) << "a heading and the twelve demo sets";
}
