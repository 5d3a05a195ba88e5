#include "database/zelDBSM_Common.h"
#include "hotkeys/hkeyServices.h"
#include "platform/ui/MSFlexGrid.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "print/sm_Print.h"
#include "print/sm_Print_FlexGrid.h"
#include "shell/frmMain.h"
#include "support/HkTest.h"
#include "support/PrintSupport.h"
#include <QAction>
#include <QDir>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QTest>
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
    int pages = 0;
    int orientation = -1;
    QStringList page1;
    QStringList all;         // every page's texts
    QList<QStringList> each; // page by page
    std::vector<print::TextRun> runs;
    std::vector<QFont> fonts;
    std::vector<print::Rule> rules;
    QString header;
    int progressMaximum = -1; // of the progress box, closed before the preview shows
    bool progressShown = false;
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
    // Runs a report from its menu item and keeps what reached the preview; `act`
    // then works the preview, which closes it by default.
    Printed report(int index, std::function<void(frmSMPRNT_PREVIEW &)> act = {})
    {
        Printed out;
        modal.drive("frmSMPRNT_PREVIEW", [&](QDialog &d) {
            auto &f = static_cast<frmSMPRNT_PREVIEW &>(d);
            const print::PageDocument &doc = *f.vsvPrinter;
            out.pages = doc.PageCount();
            out.orientation = doc.Orientation();
            out.header = doc.Header();
            if (out.pages > 0) {
                out.page1 = pageTexts(doc, 1);
                out.runs = doc.page(1).texts;
                out.rules = doc.page(1).rules;
            }
            for (int n = 1; n <= out.pages; ++n) out.each << pageTexts(doc, n);
            for (const QStringList &texts : out.each) out.all << texts;
            out.fonts = doc.fonts();
            if (const auto *progress = form->findChild<QProgressDialog *>()) {
                out.progressMaximum = progress->maximum();
                out.progressShown = progress->isVisible();
            }
            act ? act(f) : f.cmdClose_Click();
        });
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

} // namespace

TEST_F(ReportTest, DetailPrintsTheWorkedExample)
{
    writeDataFile("HKSET03.SDF", kLunchMenu);
    load();
    const Printed p = report(1);
    EXPECT_EQ(p.pages, 1);
    EXPECT_EQ(p.orientation, print::orPortrait);
    EXPECT_TRUE(p.header.startsWith("Hot Key Sets|Stock Numbers & Description|"));
    EXPECT_EQ(gsReportCompany, "Corner Shop");
    // Headings, title, the column row, then the keys row by row; the footer last.
    EXPECT_EQ(p.page1.mid(0, 2), QStringList({"Hot Key Sets", "Stock Numbers & Description"}));
    EXPECT_EQ(p.page1.mid(3), QStringList({" Set:   Lunch Menu", "   Drinks", "   Desserts", "   ",
                                           "   ", "0001234.5", "Coffee", "CAKE-1", "Cake",
                                           "More Drinks", "PIE-2", "Corner Shop", "Page 1"}));
    const print::TextRun *title = runOf(p, " Set:   Lunch Menu");
    const print::TextRun *column = runOf(p, "   Drinks");
    const print::TextRun *item = runOf(p, "0001234.5");
    const print::TextRun *label = runOf(p, "Coffee");
    ASSERT_TRUE(title && column && item && label);
    EXPECT_EQ(QColor(title->color), QColor(Qt::red));
    EXPECT_TRUE(p.fonts[size_t(title->font)].bold());
    EXPECT_EQ(p.fonts[size_t(title->font)].pixelSize(), 12 * 20);
    EXPECT_EQ(QColor(column->color), QColor(Qt::blue));
    EXPECT_TRUE(p.fonts[size_t(column->font)].bold());
    EXPECT_EQ(QColor(item->color), QColor(Qt::black));
    EXPECT_FALSE(p.fonts[size_t(item->font)].bold());
    EXPECT_EQ(p.fonts[size_t(item->font)].pixelSize(), 8 * 20);
    // The tab puts the label at a stop of its own, in the same 2200-twip column.
    EXPECT_GT(label->rect.left(), item->rect.right());
    EXPECT_LT(label->rect.right(), item->rect.left() + 2200);
    EXPECT_NEAR(runOf(p, "CAKE-1")->rect.left() - item->rect.left(), 2200, 1);
    EXPECT_TRUE(p.rules.empty()); // border 0
    // Ten rows below the title: the header row and eight key rows.
    EXPECT_GT(runOf(p, "Corner Shop")->rect.top(), runOf(p, "PIE-2")->rect.top() + 5 * 150);
    // The report leaves the last set it read in memory.
    EXPECT_EQ(gHotKeyGroups[2].Buttons[1].Item, "CAKE-1");
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
    EXPECT_EQ(p.progressMaximum, 13);
    EXPECT_FALSE(p.progressShown);
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

TEST_F(ReportTest, SummaryPrintsTheListInPortraitWithABoldHeadingAndReachesAPdf)
{
    writeDataFile("HKSET03.SDF", kLunchMenu);
    load();
    const QString pdf = QDir(dataPath()).filePath("summary.pdf");
    dialogs.answerText(pdf);
    const Printed p = report(0, [](frmSMPRNT_PREVIEW &f) {
        QTest::keyClick(&f, Qt::Key_F7);
        QTest::keyClick(&f, Qt::Key_Escape);
    });
    EXPECT_EQ(boxes().size(), 1); // the save dialog
    EXPECT_EQ(testing_support::pdfInfo(pdf, "Pages"), "1");
    EXPECT_TRUE(testing_support::pdfInfo(pdf, "Page size").startsWith("612 x 792"));
    const QString text = testing_support::pdfText(pdf);
    EXPECT_TRUE(text.contains(QRegularExpression("03\\s+Lunch Menu\\s+Drinks\\s+Desserts")))
        << text.toStdString();
    EXPECT_TRUE(text.contains("Corner Shop"));
    EXPECT_EQ(p.orientation, print::orPortrait); // 7200 twips fit
    EXPECT_TRUE(p.header.startsWith("Hot Key Sets||"));
    EXPECT_EQ(p.page1.mid(2, 8), QStringList({"Set", "Title", "Column 1", "Column 2", "Column 3",
                                              "Column 4", "03", "Lunch Menu"}));
    EXPECT_TRUE(p.fonts[size_t(runOf(p, "Set")->font)].bold());
    EXPECT_FALSE(p.fonts[size_t(runOf(p, "Lunch Menu")->font)].bold());
    EXPECT_EQ(p.fonts[size_t(runOf(p, "Set")->font)].pixelSize(), 10 * 20);
    EXPECT_FALSE(p.rules.empty()); // border 7
    // Column 0 keeps its 600 twips; the others share the rest of the width.
    const qreal left = 1440 + 60; // margin and cell padding
    EXPECT_NEAR(runOf(p, "Title")->rect.left() - left, 600, 1);
    EXPECT_NEAR(runOf(p, "Column 1")->rect.left() - runOf(p, "Title")->rect.left(),
                2200.0 * 9360 / 7200, 1);
}

TEST_F(ReportTest, OfAnEmptyListDetailIsAnEmptyPageAndSummaryTheHeadingAndOneBlankRow)
{
    load();
    const Printed detail = report(1);
    EXPECT_EQ(detail.pages, 1);
    EXPECT_EQ(detail.page1.filter("Set:").size(), 0);
    const Printed p = report(0);
    EXPECT_EQ(p.page1.mid(2, 6),
              QStringList({"Set", "Title", "Column 1", "Column 2", "Column 3", "Column 4"}));
    // Two rows of six cells: four rules across and seven lines down each row.
    int across = 0;
    for (const auto &r : p.rules) across += r.line.dy() == 0;
    EXPECT_EQ(across, 4);
}

TEST_F(ReportTest, GridPrintLeavesOutHiddenRowsAndColumnsAndTurnsWideGridsLandscape)
{
    platform::MSFlexGrid grid;
    grid.setCols(4);
    grid.setRows(6);
    const int widths[] = {1000, 3000, 0, 9000};
    for (int c = 0; c < 4; ++c) {
        grid.setColWidth(c, widths[c]);
        grid.setTextMatrix(0, c, QString("H%1 ").arg(c));
        for (int r = 1; r < 6; ++r) grid.setTextMatrix(r, c, QString(" r%1c%2").arg(r).arg(c));
    }
    // Hidden and squeezed to height 0, also the last row: none of them print, not even blank.
    grid.setRowHidden(1, true); // grid row 2
    grid.setRowHeight(3, 0);    // grid row 4
    grid.setRowHeight(4, 0);    // grid row 5, the last
    Printed p;
    modal.drive("frmSMPRNT_PREVIEW", [&](QDialog &d) {
        auto &f = static_cast<frmSMPRNT_PREVIEW &>(d);
        p.orientation = f.vsvPrinter->Orientation();
        p.page1 = pageTexts(*f.vsvPrinter, 1);
        p.runs = f.vsvPrinter->page(1).texts;
        p.rules = f.vsvPrinter->page(1).rules;
        f.cmdClose_Click();
    });
    gsReportTitle = "Grid";
    gsReportSubtitle.clear();
    gsReportDate.clear();
    gpPrint_FlexGrid(grid);
    EXPECT_EQ(p.orientation, print::orLandscape); // 13000 twips do not fit 9360
    EXPECT_EQ(p.page1.mid(1, 9),
              QStringList({"H0", "H1", "H3", "r1c0", "r1c1", "r1c3", "r3c0", "r3c1", "r3c3"}));
    EXPECT_TRUE(p.page1.filter(QRegularExpression("^r[245]")).isEmpty());
    int across = 0;
    for (const auto &r : p.rules) across += r.line.dy() == 0;
    EXPECT_EQ(across, 3 * 2) << "three rows: the heading, r1 and r3";
    // Shrunk to the landscape width, shared by the visible widths only.
    const qreal width = 15840 - 2 * 1440;
    EXPECT_NEAR(runOf(p, "H3")->rect.left() - runOf(p, "H1")->rect.left(), 3000 * width / 13000, 1);
}
