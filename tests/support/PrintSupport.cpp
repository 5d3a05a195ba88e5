#include "support/PrintSupport.h"
#include "print/PageDocument.h"
#include <QProcess>
#include <QRegularExpression>
#include <algorithm>

namespace testing_support {

QStringList pageTexts(const print::PageDocument &doc, int page)
{
    std::vector<print::TextRun> runs = doc.page(page).texts;
    std::stable_sort(runs.begin(), runs.end(), [](const auto &a, const auto &b) {
        return a.rect.top() != b.rect.top() ? a.rect.top() < b.rect.top()
                                            : a.rect.left() < b.rect.left();
    });
    QStringList out;
    for (const auto &r : runs) out << r.text;
    return out;
}

QString runTool(const QString &program, const QStringList &args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        return QString();
    return QString::fromUtf8(p.readAllStandardOutput());
}

QString pdfText(const QString &path)
{
    return runTool("pdftotext", {"-layout", path, "-"});
}

QString pdfInfo(const QString &path, const QString &field)
{
    const QRegularExpression re("^" + QRegularExpression::escape(field) + ":\\s*(.*)$",
                                QRegularExpression::MultilineOption);
    return re.match(runTool("pdfinfo", {path})).captured(1).trimmed();
}

} // namespace testing_support
