#pragma once
#include <QString>
#include <QStringList>

namespace print {
class PageDocument;
}

namespace testing_support {

// The texts of a page in reading order, one entry per run.
QStringList pageTexts(const print::PageDocument &doc, int page);
// Runs a command and gives its standard output; empty when it failed.
QString runTool(const QString &program, const QStringList &args);
// What pdftotext (with -layout) reads from a PDF file.
QString pdfText(const QString &path);
// A field of pdfinfo, such as "Pages" or "Page size".
QString pdfInfo(const QString &path, const QString &field);

// Makes sure the CUPS scheduler runs and has the PDF printer queue "PDF",
// starting and adding them when missing; empty when ready, else why not.
QString ensurePdfQueue();
// Where the PDF queue leaves its files: PDF in the home of the user printing.
QString pdfQueueOutput();
// Waits for a PDF file that is not in `before` to land in `folder` whole.
QString waitForNewPdf(const QString &folder, const QStringList &before);

} // namespace testing_support
