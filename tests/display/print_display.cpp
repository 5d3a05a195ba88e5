#include "display/ProgramTest.h"
#include "mail/frmSendMail.h"
#include "print/PageDocument.h"
#include "print/PageView.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyMain.h"
#include <QComboBox>
#include <QScrollBar>

using namespace display;

using PreviewOnDisplay = ProgramTest;

// The mouse alone reaches the right edge of a zoomed page; zoomed back the page
// is centred; the preview finds and pages; the mail screen it opens types on its
// own keys.
TEST_F(PreviewOnDisplay, ZoomScrollFindPageAndMailFromThePreview)
{
    int rightEdgeSeen = -1, leftAfter = -1, centredAt = 0, found = 0;
    QString pageOf, typed;
    robot.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &preview) {
        expectWhollyOnScreen(&preview);
        Robot::key("End");
        robot.settle();
        pageOf = preview.lblPageOf->text();
        Robot::key("Home");
        Robot::retype(preview.cboZoom, "200");
        Robot::key("Return");
        robot.settle();
        EXPECT_EQ(preview.vsvPrinter->Zoom(), 200);
        // Presses on the scroll bar's track, right of its handle.
        QScrollBar *across = preview.vsvView->horizontalScrollBar();
        for (int i = 0; i < 12 && across->value() < across->maximum(); ++i) {
            Robot::click(across, QPoint(across->width() - 30, across->height() / 2));
            robot.settle(60);
        }
        QWidget *page = preview.vsvView->widget();
        rightEdgeSeen = page->geometry().right() - (preview.vsvView->viewport()->width() - 1);
        robot.shot(&preview, "preview-200-right-edge");
        Robot::retype(preview.txtFind, "middle");
        Robot::click(preview.cmdFind[0]);
        robot.settle();
        found = int(preview.vsvPrinter->page(preview.vsvPrinter->PreviewPage()).overlays.size());
        Robot::retype(preview.cboZoom, "50");
        Robot::key("Return");
        robot.settle();
        leftAfter = page->x();
        centredAt = (preview.vsvView->viewport()->width() - page->width()) / 2;
        robot.shot(&preview, "preview-50-after-200");
        Robot::key("F8");
    });
    robot.on<frmSendMail>([&](frmSendMail &mail) {
        expectWhollyOnScreen(&mail);
        Robot::click(mail.txtTo);
        for (int i : {10, 12}) Robot::click(mail.cmdKeyPad[i]); // two letter keys
        robot.settle();
        typed = mail.txtTo->text();
        robot.screenShot("mail-from-preview");
        Robot::click(mail.cmdCancel);
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
    frm.vsvPrinter->NewPage();
    frm.vsvPrinter->Paragraph("the second page");
    frm.vsvPrinter->EndDoc();
    robot.stop();
    setPreviewMailOpener(nullptr);
    EXPECT_EQ(pageOf, "Page 2 of 2");
    EXPECT_EQ(found, 1);
    EXPECT_EQ(rightEdgeSeen, 0) << "the page's right edge is reached with the mouse";
    EXPECT_EQ(leftAfter, centredAt) << "zoomed back the page is centred, not shifted left";
    EXPECT_EQ(typed.size(), 2) << typed.toStdString();
}
