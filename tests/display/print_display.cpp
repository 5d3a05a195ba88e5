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
// is centred; the preview finds; the mail screen it opens types on its own keys.
TEST_F(PreviewOnDisplay, ZoomScrollFindAndMailFromThePreview)
{
    robot.on<frmSMPRNT_PREVIEW>([&](frmSMPRNT_PREVIEW &preview) {
        expectWhollyOnScreen(&preview);
        Robot::retype(preview.cboZoom, "200");
        Robot::key("Return");
        robot.settle();
        // Presses on the scroll bar's track, right of its handle.
        QScrollBar *across = preview.vsvView->horizontalScrollBar();
        for (int i = 0; i < 12 && across->value() < across->maximum(); ++i) {
            Robot::click(across, QPoint(across->width() - 30, across->height() / 2));
            robot.settle(60);
        }
        QWidget *page = preview.vsvView->widget();
        EXPECT_EQ(page->geometry().right(), preview.vsvView->viewport()->width() - 1)
            << "the page's right edge is reached with the mouse";
        robot.shot("preview-200-right-edge", &preview);
        Robot::retype(preview.txtFind, "middle");
        Robot::click(preview.cmdFind[0]);
        robot.settle();
        EXPECT_EQ(preview.vsvPrinter->page(preview.vsvPrinter->PreviewPage()).overlays.size(), 1u);
        Robot::retype(preview.cboZoom, "50");
        Robot::key("Return");
        robot.settle();
        EXPECT_EQ(page->x(), (preview.vsvView->viewport()->width() - page->width()) / 2)
            << "zoomed back the page is centred, not shifted left";
        robot.shot("preview-50-after-200", &preview);
        Robot::key("F8");
    });
    robot.on<frmSendMail>([&](frmSendMail &mail) {
        expectWhollyOnScreen(&mail);
        Robot::click(mail.txtTo);
        for (int i : {10, 12}) Robot::click(mail.cmdKeyPad[i]); // two letter keys
        robot.settle();
        EXPECT_EQ(mail.txtTo->text().size(), 2);
        robot.shot("mail-from-preview");
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
    frm.vsvPrinter->EndDoc();
    robot.stop();
    setPreviewMailOpener(nullptr);
}
