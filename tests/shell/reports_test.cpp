#include "database/zelDBSM_Common.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "shell/frmMain.h"
#include "support/HkTest.h"
#include "support/PrintSupport.h"
#include <QTimer>

using testing_support::HkTest;
using testing_support::pageTexts;

namespace {

const QByteArray kLunchMenu = "[SET]Lunch Menu\r\n"
                              "[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n"
                              "[BUTTON]1[CAPTION]Coffee[ITEM]0001234.5[ICON]coffee.jpg"
                              "[IDSELECT]No[LINKSET][ROOT]\r\n"
                              "[BUTTON]2[CAPTION]More Drinks[ITEM][ICON][IDSELECT]No"
                              "[LINKSET]7[ROOT]\r\n"
                              "[GROUP]2[CAPTION]Desserts[COLOR]DARK_RED\r\n"
                              "[BUTTON]1[CAPTION]Cake[ITEM]CAKE-1[ICON][IDSELECT]Yes"
                              "[LINKSET][ROOT]\r\n"
                              "[BUTTON]3[CAPTION][ITEM]PIE-2[ICON][IDSELECT]Yes[LINKSET][ROOT]\r\n";

// What a report put in its preview, read while the preview is up.
struct Printed {
    int pages = 0, orientation = -1;
    QList<QStringList> each; // page by page
    QStringList page1, all;
    std::vector<print::TextRun> runs; // of page 1
    std::vector<print::Rule> rules;   // of page 1
    std::vector<QFont> fonts;
};

class ReportTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        shell.printers = {"Office"};
        gCommonRecord.clear();
        gCommonRecord.setText("Cname", "Corner Shop");
    }
    void load()
    {
        form = std::make_unique<frmMain>();
        form->Form_Load();
    }
    // Keeps in `out` what the next print puts in its preview.
    void onPreview(Printed &out)
    {
        modal.on<frmSMPRNT_PREVIEW>([&out](frmSMPRNT_PREVIEW &f) {
            const print::PageDocument &doc = *f.vsvPrinter;
            out.pages = doc.PageCount();
            out.orientation = doc.Orientation();
            for (int n = 1; n <= out.pages; ++n) out.each << pageTexts(doc, n);
            for (const QStringList &texts : out.each) out.all << texts;
            out.page1 = out.each.value(0);
            out.runs = doc.page(1).texts; // every report here has a page
            out.rules = doc.page(1).rules;
            out.fonts = doc.fonts();
        });
    }
    // Runs a report from its menu item.
    Printed report(int index)
    {
        Printed out;
        onPreview(out);
        form->mnuPrintType[index]->trigger();
        return out;
    }
    std::unique_ptr<frmMain> form;
};

const print::TextRun *runOf(const Printed &p, const QString &text)
{
    for (const auto &r : p.runs)
        if (r.text == text)
            return &r;
    ADD_FAILURE() << "not printed: " << text.toStdString();
    return nullptr;
}

// How a text of page 1 is printed: its colour, weight and size in points.
QString look(const Printed &p, const QString &text)
{
    const print::TextRun *run = runOf(p, text);
    if (!run)
        return {};
    const QFont &font = p.fonts[size_t(run->font)];
    return QString("%1 %2 %3")
        .arg(QColor(run->color).name(), font.bold() ? "bold" : "plain")
        .arg(font.pixelSize() / 20);
}

} // namespace

TEST_F(ReportTest, DetailPrintsTheWorkedExample)
{
    writeDataFile("HKSET03.SDF", kLunchMenu);
    load();
    const Printed p = report(1);
    EXPECT_EQ(p.pages, 1);
    EXPECT_EQ(p.orientation, print::orPortrait);
    // Headings, title, the column row, then the keys row by row; the footer last.
    EXPECT_EQ(p.page1.mid(0, 2), QStringList({"Hot Key Sets", "Stock Numbers & Description"}));
    EXPECT_EQ(p.page1.mid(3), QStringList({" Set:   Lunch Menu", "   Drinks", "   Desserts", "   ",
                                           "   ", "0001234.5", "Coffee", "CAKE-1", "Cake",
                                           "More Drinks", "PIE-2", "Corner Shop", "Page 1"}));
    EXPECT_EQ(look(p, " Set:   Lunch Menu"), "#ff0000 bold 12");
    EXPECT_EQ(look(p, "   Drinks"), "#0000ff bold 12");
    EXPECT_EQ(look(p, "0001234.5"), "#000000 plain 8");
    const print::TextRun *item = runOf(p, "0001234.5");
    const print::TextRun *label = runOf(p, "Coffee");
    // The tab puts the label at a stop of its own, in the same 2200-twip column.
    EXPECT_GT(label->rect.left(), item->rect.right());
    EXPECT_LT(label->rect.right(), item->rect.left() + 2200);
    EXPECT_NEAR(runOf(p, "CAKE-1")->rect.left() - item->rect.left(), 2200, 1);
    EXPECT_TRUE(p.rules.empty()); // border 0
    // Ten rows below the title: the header row and eight key rows.
    EXPECT_GT(runOf(p, "Corner Shop")->rect.top(), runOf(p, "PIE-2")->rect.top() + 5 * 150);
}

TEST_F(ReportTest, DetailGoesOnPastAnUnreadableSetFlowsOverPagesAndLetsTheScreenRun)
{
    for (int n = 1; n <= 12; ++n)
        writeDataFile(QString("HKSET%1.SDF").arg(n, 2, 10, QChar('0')),
                      kLunchMenu +
                          "[BUTTON]8[CAPTION]Last[ITEM][ICON][IDSELECT]No[LINKSET][ROOT]\r\n");
    writeDataFile("HKSET40-old.SDF", "[SET]Never read\r\n"); // read as set 40, which is missing
    load();
    EXPECT_EQ(boxes().size(), 1); // the list reads it too
    // An event posted before the report runs while the report is still building.
    bool ranDuring = false;
    QTimer::singleShot(0, form.get(), [&] { ranDuring = modal.shown.isEmpty(); });
    const Printed p = report(1);
    EXPECT_TRUE(ranDuring);
    const QStringList missing = boxTexts();
    ASSERT_EQ(missing.size(), 1) << missing.join("\n").toStdString();
    EXPECT_TRUE(missing[0].contains("HKSET40.SDF")) << missing[0].toStdString();
    EXPECT_GT(p.pages, 1);
    EXPECT_GE(p.page1.count(" Set:   Lunch Menu"), 3); // no forced break: a page holds several
    EXPECT_EQ(p.all.count(" Set:   Lunch Menu"), 12);
    EXPECT_EQ(p.all.count(" Set:   "), 1); // the unreadable one: empty title, blank keys
    EXPECT_EQ(p.all.count("Coffee"), 12);
    // Each set's title, column row and keys share a page: no heading is left behind.
    for (int n = 0; n < p.each.size(); ++n)
        EXPECT_EQ(p.each[n].count(" Set:   Lunch Menu"), p.each[n].count("Last"))
            << "page " << n + 1;
}

TEST_F(ReportTest, SummaryPrintsTheListInPortraitWithABoldHeading)
{
    writeDataFile("HKSET03.SDF", kLunchMenu);
    load();
    const Printed p = report(0);
    EXPECT_EQ(p.orientation, print::orPortrait); // 7200 twips fit
    EXPECT_EQ(p.page1.value(0), "Hot Key Sets");
    EXPECT_EQ(p.page1.mid(2, 8), QStringList({"Set", "Title", "Column 1", "Column 2", "Column 3",
                                              "Column 4", "03", "Lunch Menu"}));
    EXPECT_EQ(look(p, "Set"), "#000000 bold 10");
    EXPECT_EQ(look(p, "Lunch Menu"), "#000000 plain 10");
    // Two rows of six cells (border 7): four rules across.
    int across = 0;
    for (const auto &r : p.rules) across += r.line.dy() == 0;
    EXPECT_EQ(across, 4);
    // Column 0 keeps its 600 twips; the others share the rest of the width.
    const qreal left = 1440 + 60; // margin and cell padding
    EXPECT_NEAR(runOf(p, "Title")->rect.left() - left, 600, 1);
    EXPECT_NEAR(runOf(p, "Column 1")->rect.left() - runOf(p, "Title")->rect.left(),
                2200.0 * 9360 / 7200, 1);
}
