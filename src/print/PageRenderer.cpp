#include "print/PageRenderer.h"
#include "print/PageDocument.h"
#include <QDir>
#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

namespace print {

namespace {

QPageLayout layoutOf(const Page &page)
{
    const bool landscape = page.size.width() > page.size.height();
    const QSizeF portrait = landscape ? page.size.transposed() : page.size;
    return QPageLayout(QPageSize(portrait / 20, QPageSize::Point),
                       landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
}

// Draws every page from `first` to `last` on a device whose layout follows each page.
template <class Device>
bool paintPages(const PageDocument &doc, Device &device, int first, int last)
{
    QPainter painter;
    for (int n = first; n <= last; ++n) {
        device.setPageLayout(layoutOf(doc.page(n)));
        if (n == first ? !painter.begin(&device) : !device.newPage())
            return false;
        painter.save();
        const qreal scale = device.resolution() / 1440.0;
        painter.scale(scale, scale);
        renderPage(painter, doc, n);
        painter.restore();
    }
    return painter.end();
}

} // namespace

void renderPage(QPainter &painter, const PageDocument &doc, int number, bool overlays)
{
    const Page &page = doc.page(number);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const Picture &pic : page.pictures) painter.drawImage(pic.rect, pic.image);
    for (const Rule &rule : page.rules) {
        painter.setPen(QPen(QColor(rule.color), rule.width));
        painter.drawLine(rule.line);
    }
    int font = -1;
    for (const TextRun &run : page.texts) {
        if (run.font != font) {
            font = run.font;
            painter.setFont(doc.fonts()[size_t(font)]);
        }
        painter.setPen(QColor(run.color));
        painter.drawText(QPointF(run.rect.left(), run.rect.top() + run.ascent), run.text);
    }
    if (overlays) {
        for (const Overlay &o : page.overlays) {
            painter.setPen(QPen(QColor(o.pen), o.penWidth));
            painter.setBrush(o.brushStyle == 1 ? QBrush(Qt::NoBrush) : QBrush(QColor(o.brush)));
            painter.drawRect(o.rect);
        }
    }
    painter.restore();
}

bool printPages(const PageDocument &doc, QPrinter &printer, int first, int last, QString &error)
{
    if (doc.PageCount() == 0 || first < 1 || last > doc.PageCount() || first > last) {
        error = "There is no page to print.";
        return false;
    }
    printer.setFullPage(true);
    if (!paintPages(doc, printer, first, last)) {
        error = QString("The printer \"%1\" could not be started.").arg(printer.printerName());
        return false;
    }
    return true;
}

bool writePdf(const PageDocument &doc, const QString &path, QString &error)
{
    if (doc.PageCount() == 0) {
        error = "The document has no pages.";
        return false;
    }
    QFile file(path);
    const QString name = QDir::toNativeSeparators(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        error = QString("%1 could not be written: %2.").arg(name, file.errorString());
        return false;
    }
    bool painted = false;
    {
        QPdfWriter writer(&file);
        writer.setResolution(1440);
        writer.setCreator("Hot Keys");
        painted = paintPages(doc, writer, 1, doc.PageCount());
    }
    if (!painted || file.error() != QFileDevice::NoError || !file.flush()) {
        error = QString("%1 could not be written: %2.")
                    .arg(name, file.error() != QFileDevice::NoError ? file.errorString()
                                                                    : QString("the PDF failed"));
        file.close();
        file.remove();
        return false;
    }
    return true;
}

} // namespace print
