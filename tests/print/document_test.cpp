#include "print/PageDocument.h"
#include "support/PrintSupport.h"
#include <QImage>
#include <cmath>
#include <gtest/gtest.h>

using namespace print;
using testing_support::pageTexts;

namespace {

// A document with the reports' set-up: header, footer, no borders.
struct Doc : PageDocument {
    Doc()
    {
        setPreview(true);
        setHeader("Left|Middle|Right");
        setFooter("Store|Page %d");
        setTableSeparators("|;");
        setTableBorder(tbNone);
        StartDoc();
    }
};

qreal bottomOfContent(const Page &page)
{
    qreal bottom = 0;
    for (const TextRun &r : page.texts)
        if (!r.text.startsWith("Store") && !r.text.startsWith("Page"))
            bottom = std::max(bottom, r.rect.bottom());
    for (const Picture &p : page.pictures) bottom = std::max(bottom, p.rect.bottom());
    return bottom;
}

} // namespace

TEST(PageDocument, RowsAreNeverCutAndEveryPageGetsItsNumber)
{
    Doc doc;
    doc.setFontSize(12);
    QStringList rows;
    for (int i = 1; i <= 120; ++i) rows << QString("row %1|two\nlines").arg(i);
    doc.AddTable("<2200|>2200;", rows.join(';'));
    doc.EndDoc();
    ASSERT_GE(doc.PageCount(), 3);
    int seen = 0;
    for (int p = 1; p <= doc.PageCount(); ++p) {
        const Page &page = doc.page(p);
        EXPECT_LE(bottomOfContent(page), page.size.height() - doc.MarginBottom()) << "page " << p;
        const QStringList texts = pageTexts(doc, p);
        EXPECT_EQ(texts.first(), "Left");
        EXPECT_TRUE(texts.contains(QString("Page %1").arg(p)));
        // Each row with its two-line cell stays whole on one page.
        for (const QString &t : texts)
            if (t.startsWith("row "))
                ++seen;
        EXPECT_EQ(texts.count("two"), texts.count("lines"));
    }
    EXPECT_EQ(seen, 120);
}

TEST(PageDocument, TableCellsAlignWrapInsideTheirColumnAndTabsMoveToTheNextStop)
{
    Doc doc;
    doc.AddTable("<2200|^2200|>2200;", "left|mid|right;A\tB|x|y;0001234.5\tCoffee Small Extra "
                                       "Hot|Lemonadeeeeeeeeeeeeeeeeeeeeee|z");
    const Page &page = doc.page(1);
    auto run = [&](const QString &t) {
        for (const TextRun &r : page.texts)
            if (r.text == t)
                return r.rect;
        ADD_FAILURE() << "no run " << t.toStdString();
        return QRectF();
    };
    const qreal left = doc.MarginLeft();
    EXPECT_LT(run("left").left(), left + 200);
    EXPECT_NEAR(run("mid").center().x(), left + 2200 + 1100, 2);
    EXPECT_NEAR(run("right").right(), left + 6600 - 60, 2);
    EXPECT_NEAR(run("B").left() - run("A").left(), 360, 1);
    EXPECT_GT(run("A").top(), run("left").top());
    for (const TextRun &r : page.texts) {
        if (r.rect.top() < doc.MarginTop() || r.text.startsWith("Page"))
            continue;
        const qreal column = std::floor((r.rect.left() - left) / 2200) * 2200;
        EXPECT_LE(r.rect.right(), left + column + 2200) << r.text.toStdString();
    }
}

TEST(PageDocument, PicturesFlowAndBreakLikeRows)
{
    Doc doc;
    doc.setTextAlign(taCenter);
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::blue);
    doc.Paragraph("Panel");
    doc.DrawPicture(image, 8000, 6500);
    doc.DrawPicture(image, 8000, 6500); // no room left below the first
    doc.EndDoc();
    ASSERT_EQ(doc.PageCount(), 2);
    const Picture &first = doc.page(1).pictures.at(0);
    EXPECT_NEAR(first.rect.center().x(), doc.PageWidth() / 2, 1);
    EXPECT_GT(first.rect.top(), doc.MarginTop());
    EXPECT_EQ(doc.page(2).pictures.at(0).rect.top(), doc.MarginTop());
}
