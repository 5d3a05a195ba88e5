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

} // namespace testing_support
