#include "display/ProgramTest.h"
#include "mail/frmSendMail.h"
#include "print/PageDocument.h"
#include "print/PageView.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "settings/clsDataPath.h"
#include "shell/frmMain.h"
#include "shell/hkeyMain.h"
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScrollBar>

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

TEST_F(PreviewOnDisplay, ZoomedInTheScrollBarReachesTheRightEdgeAndZoomedBackThePageIsWhole)
{
    int rightEdgeSeen = -1;
    int leftAfter = -1, centredAt = 0;
    robot.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &preview) {
        Robot::click(preview.cboZoom);
        Robot::key("ctrl+a");
        Robot::type("200");
        Robot::key("Return");
        robot.settle();
        // The mouse alone: presses on the scroll bar's track, right of its handle.
        QScrollBar *across = preview.vsvView->horizontalScrollBar();
        for (int i = 0; i < 12 && across->value() < across->maximum(); ++i) {
            Robot::click(across, QPoint(across->width() - 30, across->height() / 2));
            robot.settle(60);
        }
        QWidget *page = preview.vsvView->widget();
        rightEdgeSeen = page->geometry().right() - (preview.vsvView->viewport()->width() - 1);
        robot.shot(&preview, "preview-200-right-edge");
        Robot::click(preview.cboZoom);
        Robot::key("ctrl+a");
        Robot::type("50");
        Robot::key("Return");
        robot.settle();
        leftAfter = page->x();
        centredAt = (preview.vsvView->viewport()->width() - page->width()) / 2;
        robot.shot(&preview, "preview-50-after-200");
        Robot::key("F8");
    });
    QString attached;
    robot.on<frmSendMail>([&](frmSendMail &mail) {
        attached = mail.txtAttach->text();
        robot.screenShot("mail-from-preview");
        Robot::key("Escape");
    });
    robot.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &) { Robot::key("Escape"); });
    gDataPath.setDataPath(dataPath());
    gpPreviewMail_register();
    robot.start();
    frmSMPRNT_PREVIEW frm;
    frm.ModalMode = 1;
    frm.vsvPrinter->setPreview(true);
    frm.vsvPrinter->StartDoc();
    frm.vsvPrinter->setFontSize(14);
    frm.vsvPrinter->AddTable("<3000|<3000|>3360;", "left side|middle|right edge");
    frm.vsvPrinter->EndDoc();
    robot.stop();
    EXPECT_EQ(rightEdgeSeen, 0) << "the page's right edge is reached with the mouse";
    EXPECT_EQ(leftAfter, centredAt) << "zoomed back the page is centred, not shifted left";
    EXPECT_EQ(attached, dataPath() + "/Doc1.pdf") << "the mail screen starts with the report";
    setPreviewMailOpener(nullptr);
}
