#include "display/ProgramTest.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "shell/frmMain.h"
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QPushButton>

using namespace display;

namespace {

class PreviewOnDisplay : public ProgramTest {};

} // namespace

TEST_F(PreviewOnDisplay, DetailReachesThePreviewWhichZoomsFindsAndClosesOnEsc)
{
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        GTEST_SKIP() << "no printer: the set list offers no reports (the offscreen print queue "
                        "test starts CUPS with its PDF printer)";
    int pages = 0;
    QString pageOf;
    bool listStillUp = false;
    robot.on<frmMain>([&](frmMain &main) {
        Robot::click(main.cmdPrint);
        Robot::key("Down Down Return"); // "Detail"
    });
    robot.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &preview) {
        pages = preview.vsvPrinter->PageCount();
        expectWhollyOnScreen(&preview);
        robot.shot(&preview, "preview-detail-100");
        Robot::key("End");
        robot.settle();
        pageOf = preview.lblPageOf->text();
        Robot::key("Home");
        Robot::click(preview.cboZoom);
        Robot::key("ctrl+a");
        Robot::type("200");
        Robot::key("Return");
        robot.settle();
        EXPECT_EQ(preview.cboZoom->currentText(), "200%");
        EXPECT_EQ(preview.vsvPrinter->Zoom(), 200);
        Robot::click(preview.txtFind);
        Robot::type("Coffee");
        Robot::click(preview.cmdFind[0]);
        robot.settle();
        EXPECT_EQ(preview.vsvPrinter->page(preview.vsvPrinter->PreviewPage()).overlays.size(), 1u);
        robot.shot(&preview, "preview-detail-200-found");
        Robot::key("Escape");
    });
    robot.on<frmMain>([&](frmMain &main) {
        listStillUp = main.isVisible();
        Robot::key("Escape");
    });
    EXPECT_EQ(runProgram(), 0);
    EXPECT_GT(pages, 1);
    EXPECT_EQ(pageOf, QString("Page %1 of %1").arg(pages));
    EXPECT_TRUE(listStillUp);
}
