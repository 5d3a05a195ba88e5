#include "print/sm_Print.h"
#include "common/Conversions.h"
#include "print/PageDocument.h"

QString gsReportTitle;
QString gsReportSubtitle;
QString gsReportDate;
QString gsReportCompany;

QString gfsPrint_Header()
{
    QString s = gsReportTitle + "|";
    if (!conv::Trim(gsReportSubtitle).isEmpty())
        s += gsReportSubtitle;
    if (!conv::Trim(gsReportDate).isEmpty())
        s += "|" + gsReportDate;
    return s;
}

QString gfsPrint_Footer()
{
    return gsReportCompany + "|Page %d";
}

long gflPrint_PageWidth(const print::PageDocument &doc)
{
    return long(doc.PageWidth() - doc.MarginLeft() - doc.MarginRight());
}
