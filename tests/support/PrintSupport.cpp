#include "support/PrintSupport.h"
#include "print/PageDocument.h"
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>
#include <algorithm>
#include <pwd.h>
#include <unistd.h>

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

QString ensurePdfQueue()
{
    const QString ppd = "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd";
    if (!QFile::exists("/usr/sbin/cupsd") || !QFile::exists(ppd))
        return "CUPS and its PDF printer are not installed (apt-get install cups "
               "printer-driver-cups-pdf)";
    const auto running = [] { return runTool("lpstat", {"-r"}).contains("scheduler is running"); };
    if (!running()) {
        QProcess::execute("/usr/sbin/cupsd", {});
        QDeadlineTimer deadline(15000);
        while (!running() && !deadline.hasExpired()) QThread::msleep(200);
        if (!running())
            return "the CUPS scheduler could not be started (run /usr/sbin/cupsd as root)";
    }
    if (runTool("lpstat", {"-p", "PDF"}).isEmpty()) {
        QProcess::execute("lpadmin", {"-p", "PDF", "-v", "cups-pdf:/", "-E", "-P", ppd});
        if (runTool("lpstat", {"-p", "PDF"}).isEmpty())
            return "the PDF printer queue could not be added (lpadmin -p PDF -v cups-pdf:/ -E -P " +
                   ppd + ", as root)";
    }
    // Through the default PostScript step the fonts lose their text, and
    // pdftotext reads nothing from the PDF that lands.
    QProcess::execute("lpadmin", {"-p", "PDF", "-o", "pdftops-renderer-default=pdftocairo"});
    return QString();
}

QString pdfQueueOutput()
{
    const passwd *pw = getpwuid(getuid());
    return QDir(pw ? QString::fromLocal8Bit(pw->pw_dir) : QDir::homePath()).filePath("PDF");
}

QString waitForNewPdf(const QString &folder, const QStringList &before)
{
    QDeadlineTimer deadline(60000);
    while (!deadline.hasExpired()) {
        for (const QString &name : QDir(folder).entryList({"*.pdf"}, QDir::Files)) {
            const QString path = QDir(folder).filePath(name);
            if (!before.contains(name) && !pdfInfo(path, "Pages").isEmpty())
                return path;
        }
        QThread::msleep(200);
    }
    return QString();
}

} // namespace testing_support
