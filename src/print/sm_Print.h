#pragma once
#include <QString>

namespace print {
class PageDocument;
}

// The report headings, set by a report before it prints.
extern QString gsReportTitle;
extern QString gsReportSubtitle;
extern QString gsReportDate;
extern QString gsReportCompany;

// "title|subtitle|date": the subtitle only when not blank, the date part only
// when the date is not blank.
QString gfsPrint_Header();
// "company|Page %d".
QString gfsPrint_Footer();
// The printable width in twips: page width less the left and right margins.
long gflPrint_PageWidth(const print::PageDocument &doc);
