// Measures the "Detail" report: hk_print_benchmark [SETS]
// Builds the document of 999 sets (default) as the set list's menu does,
// renders every page once as the preview would at 100%, and writes the PDF.
#include "BenchSets.h"
#include "platform/ui/KeyPreviewForm.h"
#include "platform/ui/Modal.h"
#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "settings/clsDataPath.h"
#include "shell/frmMain.h"
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <cstdio>
#include <sys/resource.h>

namespace {

struct Figures {
    double build = 0;
    double render = 0;
    double pdf = 0;
    int pages = 0;
    qint64 pdfBytes = 0;
};

// Stands in for the user at the preview: renders every page, saves the PDF, closes.
class Measure : public platform::ModalShower {
public:
    Measure(Figures &f, QElapsedTimer &since, QString pdf)
        : m_f(f), m_since(since), m_pdf(std::move(pdf))
    {
    }
    int show(QDialog &form) override
    {
        m_f.build = m_since.nsecsElapsed() / 1e6;
        auto &preview = static_cast<frmSMPRNT_PREVIEW &>(form);
        const print::PageDocument &doc = *preview.vsvPrinter;
        m_f.pages = doc.PageCount();
        QElapsedTimer t;
        t.start();
        const qreal scale = 96.0 / 1440;
        for (int p = 1; p <= doc.PageCount(); ++p) {
            QImage image((doc.page(p).size * scale).toSize(), QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.scale(scale, scale);
            print::renderPage(painter, doc, p, true);
        }
        m_f.render = t.nsecsElapsed() / 1e6;
        t.restart();
        QString error;
        if (!print::writePdf(doc, m_pdf, error))
            std::printf("PDF failed: %s\n", qPrintable(error));
        m_f.pdf = t.nsecsElapsed() / 1e6;
        m_f.pdfBytes = QFileInfo(m_pdf).size();
        preview.cmdClose_Click();
        return QDialog::Rejected;
    }

private:
    Figures &m_f;
    QElapsedTimer &m_since;
    QString m_pdf;
};

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    const int sets = argc > 1 ? std::atoi(argv[1]) : 999;
    QTemporaryDir dir;
    gDataPath.setDataPath(dir.path());
    seedBenchSets(sets);

    frmMain form;
    Figures f;
    QElapsedTimer since;
    Measure measure(f, since, dir.filePath("detail.pdf"));
    platform::ModalPort::install(&measure);
    since.start();
    form.mnuPrintType_Click(1);
    platform::ModalPort::install(nullptr);

    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("Detail of %d sets: %d pages; document %.0f ms, every page rendered %.0f ms "
                "(%.1f ms a page), PDF %.0f ms (%.1f MB); peak memory %.0f MB\n",
                sets, f.pages, f.build, f.render, f.render / std::max(1, f.pages), f.pdf,
                f.pdfBytes / 1e6, usage.ru_maxrss / 1024.0);
    return f.pages > 0 && f.pdfBytes > 0 ? 0 : 1;
}
