// The "Layout" report: every set of the list drawn as its panel looks on the
// sales screen, one set a page, landscape.
#include "common/ui/sm_Mouse.h"
#include "hotkeys/hkeyServices.h"
#include "platform/ui/MSFlexGrid.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "print/sm_Print.h"
#include "screens/hkeyLayoutPanel.h"
#include "shell/frmMain.h"
#include <QCoreApplication>
#include <QProgressDialog>

namespace {

// Wide enough for a sharp printed key; 16 bits a pixel keep a page near 2 MB.
constexpr int kPanelWidth = 1200;

void mpLayout_page(print::PageDocument &doc, const QString &number, const QString &title)
{
    gsReportSubtitle = "Set " + number + ": " + title;
    doc.setHeader(gfsPrint_Header());
    if (doc.IsOpen())
        doc.NewPage();
    else
        doc.StartDoc();
    const qreal width = doc.PageWidth() - doc.MarginLeft() - doc.MarginRight();
    const qreal height = doc.PageHeight() - doc.MarginBottom() - doc.CurrentY();
    const QSize pixels(kPanelWidth, qRound(kPanelWidth * height / width));
    const QImage panel = gfLayout_panelImage(gHotKeyGroups, pixels);
    doc.DrawPicture(panel.convertToFormat(QImage::Format_RGB16), width, height);
}

} // namespace

void frmMain::mpReport_layout()
{
    mpReport_headings(QString());
    frmSMPRNT_PREVIEW frm(this);
    frm.ModalMode = 1;
    print::PageDocument &doc = *frm.vsvPrinter;
    doc.setPreview(true);
    doc.setOrientation(print::orLandscape);
    doc.setHdrFontSize(12);
    doc.setFooter(gfsPrint_Footer());
    gpMouse_wait();
    QProgressDialog progress("Drawing the hot key sets...", "Cancel", 0, int(msRowFiles.size()),
                             this);
    progress.setWindowTitle("Layout");
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    for (int i = 0; i < msRowFiles.size() && !progress.wasCanceled(); ++i) {
        gpHotKeySet_clear();
        const QString title = gfsHotKeySet_read(hotKeySetDigits(msRowFiles[i]));
        mpLayout_page(doc, fgrdItems->TextMatrix(i + fgrdItems->FixedRows(), 0), title);
        progress.setValue(i + 1);
        QCoreApplication::processEvents();
    }
    const bool canceled = progress.wasCanceled(); // closing the display cancels it
    progress.close();
    gpMouse_default();
    if (!doc.IsOpen())
        doc.StartDoc(); // an empty list prints one empty page, as Detail does
    if (canceled)
        doc.KillDoc();
    else
        doc.EndDoc();
}
