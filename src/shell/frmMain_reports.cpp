#include "common/Conversions.h"
#include "common/ui/sm_Mouse.h"
#include "database/zelDBSM_Common.h"
#include "hotkeys/hkeyServices.h"
#include "platform/ui/MSFlexGrid.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "print/sm_Print.h"
#include "print/sm_Print_FlexGrid.h"
#include "shell/frmMain.h"
#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <QProgressDialog>

namespace {

const QString kSetFormat = "<2200|<2200|<2200|<2200;";

} // namespace

void frmMain::mpReport_headings(const QString &subtitle)
{
    gsReportTitle = "Hot Key Sets";
    gsReportSubtitle = subtitle;
    gsReportDate = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
    gsReportCompany = conv::RTrim(gCommonRecord.text("Cname"));
}

void frmMain::mnuPrintType_Click(int Index)
{
    if (Index == 0) {
        mpReport_headings(QString());
        gpPrint_FlexGrid(*fgrdItems);
    } else {
        mpReport_detail();
    }
}

void frmMain::mpReport_detail()
{
    mpReport_headings("Stock Numbers & Description");
    const QStringList files = hotKeySetFiles();
    frmSMPRNT_PREVIEW frm(this);
    frm.ModalMode = 1;
    print::PageDocument &doc = *frm.vsvPrinter;
    doc.setPreview(true);
    doc.setOrientation(print::orPortrait);
    doc.setHeader(gfsPrint_Header());
    doc.setFooter(gfsPrint_Footer());
    doc.setTableSeparators("|;");
    doc.setTableBorder(print::tbNone);
    gpMouse_wait();
    // A long report shows how far it is; the list stays out of reach meanwhile.
    QProgressDialog progress("Printing the hot key sets...", QString(), 0, int(files.size()), this);
    progress.setWindowTitle("Detail");
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    doc.StartDoc();
    for (int i = 0; i < files.size(); ++i) {
        gpHotKeySet_clear();
        sReportSetTitle = gfsHotKeySet_read(hotKeySetDigits(files[i]));
        // A set's title and column row never stay behind at the foot of a page.
        doc.KeepTogether([&] { mpReport_set(doc); });
        progress.setValue(i + 1);
        QCoreApplication::processEvents();
    }
    progress.close();
    doc.EndDoc();
    gpMouse_default();
}

void frmMain::mpReport_set(print::PageDocument &doc)
{
    doc.setFontBold(true);
    doc.setFontSize(12);
    doc.setTextColor(255);
    doc.Paragraph(" Set:   " + sReportSetTitle);
    doc.setTextColor(0xFF0000);
    QStringList heads;
    for (int g = 1; g <= 4; ++g) heads << "   " + gHotKeyGroups[g].Caption;
    doc.AddTable(kSetFormat, heads.join('|'));
    doc.setFontSize(8);
    doc.setTextColor(0);
    doc.setFontBold(false);
    QStringList rows;
    for (int j = 1; j <= 8; ++j) {
        QStringList cells;
        for (int g = 1; g <= 4; ++g) {
            const HotKeyButton &key = gHotKeyGroups[g].Buttons[j];
            cells << key.Item + '\t' + key.Caption;
        }
        rows << cells.join('|');
    }
    doc.AddTable(kSetFormat, rows.join(';'));
}
