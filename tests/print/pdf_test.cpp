#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "support/PrintSupport.h"
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace print;
using namespace testing_support;

// The red title at the top left and the footer at the bottom right are where the
// screen draws them: the landscape page is neither moved nor scaled.
TEST(PdfFile, HoldsThePageInItsOrientationNeitherMovedNorScaled)
{
    QTemporaryDir dir;
    PageDocument doc;
    QString error;
    EXPECT_FALSE(writePdf(doc, dir.filePath("none.pdf"), error)) << "no pages, no file";
    doc.setOrientation(orLandscape);
    doc.setFooter("|Page %d");
    doc.StartDoc();
    doc.setFontBold(true);
    doc.setFontSize(12);
    doc.setTextColor(255);
    doc.Paragraph(" Set:   Lunch 9");
    doc.EndDoc();
    const QString path = dir.filePath("sets.pdf");
    ASSERT_TRUE(writePdf(doc, path, error)) << error.toStdString();
    EXPECT_TRUE(pdfInfo(path, "Page size").startsWith("792 x 612 pts")) << "landscape letter";
    runTool("pdftoppm", {"-r", "150", "-png", path, dir.filePath("p")});
    const QImage shot = QImage(dir.filePath("p-1.png")).convertToFormat(QImage::Format_RGB32);
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
    const TextRun &footer = doc.page(1).texts.at(0), &title = doc.page(1).texts.at(1);
    ASSERT_EQ(footer.text + title.text, "Page 1 Set:   Lunch 9");
    EXPECT_TRUE(inked(title.rect, red));
    EXPECT_TRUE(inked(footer.rect, black));
    EXPECT_FALSE(inked(footer.rect.translated(0, -360), black)) << "a quarter inch above it";
}
