#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "support/PrintSupport.h"
#include <QImage>
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

    // The red title at the top left and the footer at the bottom right are where the
    // screen draws them: the page is neither moved nor scaled.
    runTool("pdftoppm", {"-r", "150", "-f", "1", "-l", "1", "-png", path, dir.filePath("p")});
    const QImage shot = QImage(dir.filePath("p-1.png")).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(shot.isNull()) << "pdftoppm made no picture";
    auto inked = [&](QRectF rect, auto ink) {
        const QRect box = QRectF(rect.topLeft() * 150 / 1440, rect.size() * 150 / 1440).toRect();
        for (int y = box.top(); y <= box.bottom(); ++y)
            for (int x = box.left(); x <= box.right(); ++x)
                if (ink(shot.pixel(x, y)))
                    return true;
        return false;
    };
    auto red = [](QRgb p) { return qRed(p) > 200 && qGreen(p) < 80; };
    auto black = [](QRgb p) { return qGray(p) < 60; };
    const TextRun &title = doc.page(1).texts.at(5), &footer = doc.page(1).texts.at(4);
    ASSERT_TRUE(title.text.startsWith(" Set:"));
    ASSERT_EQ(footer.text, "Page 1");
    EXPECT_TRUE(inked(title.rect, red));
    EXPECT_TRUE(inked(footer.rect, black));
    EXPECT_FALSE(inked(footer.rect.translated(0, -360), black)) << "a quarter inch above it";

    PageDocument empty;
    EXPECT_FALSE(writePdf(empty, dir.filePath("none.pdf"), error));
}
