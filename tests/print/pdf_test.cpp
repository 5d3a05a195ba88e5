#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "support/PrintSupport.h"
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace print;
using namespace testing_support;

namespace {

void writeSets(PageDocument &doc, int sets)
{
    doc.setHeader("Hot Key Sets|Stock Numbers & Description|11/18/2026");
    doc.setFooter("Corner Shop|Page %d");
    doc.setTableSeparators("|;");
    doc.setTableBorder(tbNone);
    doc.StartDoc();
    for (int s = 1; s <= sets; ++s) {
        doc.setFontBold(true);
        doc.setFontSize(12);
        doc.setTextColor(255);
        doc.Paragraph(QString(" Set:   Lunch %1").arg(s));
        doc.setTextColor(0xFF0000);
        doc.AddTable("<2200|<2200|<2200|<2200;", "   Drinks|   Desserts|   |   ");
        doc.setFontBold(false);
        doc.setFontSize(8);
        doc.setTextColor(0);
        doc.AddTable(
            "<2200|<2200|<2200|<2200;",
            QString("0001234.5\tCoffee|CAKE-%1\tCake|\t|\t;\tMore Drinks|\t|\t|\t").arg(s));
    }
    doc.EndDoc();
}

// The page as the screen draws it, at the resolution pdftoppm is given.
QImage rendered(const PageDocument &doc, int page, int dpi)
{
    QImage image((doc.page(page).size * dpi / 1440).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(dpi / 1440.0, dpi / 1440.0);
    renderPage(painter, doc, page);
    return image;
}

// Mean difference per channel, 0 to 255, over pictures softened to a third of
// their size: the edges of glyphs, which two rasterisers smooth differently, count little.
double difference(QImage a, QImage b)
{
    if (a.size() != b.size())
        return 255;
    a = a.scaled(a.size() / 3, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    b = b.scaled(b.size() / 3, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                   std::abs(qBlue(p) - qBlue(q));
        }
    return sum / (3.0 * a.width() * a.height());
}

} // namespace

TEST(PdfFile, HoldsEveryPageInItsOrientationWithItsText)
{
    QTemporaryDir dir;
    PageDocument doc;
    doc.setOrientation(orLandscape);
    writeSets(doc, 9);
    ASSERT_GT(doc.PageCount(), 1);
    const QString path = dir.filePath("sets.pdf");
    QString error;
    ASSERT_TRUE(writePdf(doc, path, error)) << error.toStdString();
    EXPECT_EQ(pdfInfo(path, "Pages").toInt(), doc.PageCount());
    EXPECT_TRUE(pdfInfo(path, "Page size").startsWith("792 x 612 pts")) << "landscape letter";
    const QString text = pdfText(path);
    EXPECT_TRUE(text.contains(QRegularExpression("Set:\\s+Lunch 9")));
    EXPECT_TRUE(text.contains("CAKE-9"));
    EXPECT_TRUE(text.contains(QString("Page %1").arg(doc.PageCount())));

    PageDocument empty;
    EXPECT_FALSE(writePdf(empty, dir.filePath("none.pdf"), error));
}

TEST(PdfFile, PageIsTheSameDrawingAsTheScreen)
{
    QTemporaryDir dir;
    PageDocument doc;
    writeSets(doc, 9);
    ASSERT_GE(doc.PageCount(), 2);
    const QString path = dir.filePath("sets.pdf");
    QString error;
    ASSERT_TRUE(writePdf(doc, path, error));
    runTool("pdftoppm", {"-r", "150", "-f", "1", "-l", "1", "-png", path, dir.filePath("p")});
    const QImage pdf = QImage(dir.filePath("p-1.png")).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(pdf.isNull()) << "pdftoppm made no picture";
    const double same = difference(rendered(doc, 1, 150), pdf);
    // The same report a quarter inch lower is another drawing.
    PageDocument lower;
    lower.setMarginTop(doc.MarginTop() + 360);
    writeSets(lower, 9);
    const double other = difference(rendered(lower, 1, 150), pdf);
    EXPECT_LT(same, 1.5);
    EXPECT_GT(other, 3 * same) << same;
    // The red title is where the screen draws it.
    const TextRun &title = doc.page(1).texts.at(5);
    ASSERT_TRUE(title.text.startsWith(" Set:"));
    bool red = false;
    const qreal k = 150.0 / 1440;
    const QRect box = QRectF(title.rect.topLeft() * k, title.rect.size() * k).toRect();
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            red |= qRed(pdf.pixel(x, y)) > 200 && qGreen(pdf.pixel(x, y)) < 80;
    EXPECT_TRUE(red);
}
