#pragma once
#include <QString>

class QPainter;
class QPrinter;

namespace print {

class PageDocument;

// Paints one page (1-based) on a painter whose unit is the twip and whose
// origin is the page's top left corner. The screen adds the overlays.
void renderPage(QPainter &painter, const PageDocument &doc, int page, bool overlays = false);

// The pages from `first` to `last` on a printer; the page size and orientation
// follow each page. False with the reason in `error`.
bool printPages(const PageDocument &doc, QPrinter &printer, int first, int last, QString &error);

// The whole document as a PDF file; false with the reason in `error`.
bool writePdf(const PageDocument &doc, const QString &path, QString &error);

} // namespace print
