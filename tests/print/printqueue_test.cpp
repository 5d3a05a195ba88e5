#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "shell/frmMain.h"
#include "support/HkTest.h"
#include "support/PrintSupport.h"
#include <QAction>
#include <QDir>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

using namespace testing_support;

namespace {

// Prints through a real CUPS queue whose printer writes PDF files.
class PrintQueueTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        const QString why = ensurePdfQueue();
        if (!why.isEmpty())
            GTEST_SKIP() << "no print queue: " << why.toStdString();
        shell.printers = {"PDF"};
        QDir().mkpath(pdfQueueOutput());
        for (int n = 1; n <= 14; ++n)
            writeDataFile(QString("HKSET%1.SDF").arg(n, 2, 10, QChar('0')),
                          QString("[SET]Menu number %1\r\n"
                                  "[GROUP]3[CAPTION]Cakes[COLOR]RED\r\n"
                                  "[BUTTON]2[CAPTION]Cake[ITEM]CAKE-%1[ICON][IDSELECT]Yes"
                                  "[LINKSET][ROOT]\r\n")
                              .arg(n, 2, 10, QChar('0'))
                              .toLatin1());
    }
    // Runs "Detail" from the set list, `act` printing from the preview of `pages`
    // pages; the PDF the queue made of it.
    QString detail(std::function<void(frmSMPRNT_PREVIEW &)> act)
    {
        const QStringList before = QDir(pdfQueueOutput()).entryList({"*.pdf"}, QDir::Files);
        modal.drive("frmSMPRNT_PREVIEW", [&](QDialog &d) {
            auto &f = static_cast<frmSMPRNT_PREVIEW &>(d);
            pages = f.vsvPrinter->PageCount();
            act(f);
            f.cmdClose_Click();
        });
        frmMain form;
        form.Form_Load();
        form.mnuPrintType[1]->trigger();
        return waitForNewPdf(pdfQueueOutput(), before);
    }
    int pages = 0;
};

} // namespace

// One test, so that no other test of this queue prints between its two jobs.
TEST_F(PrintQueueTest, DetailReachesThePrinterWholeOrThePageShown)
{
    QString pdf = detail([](frmSMPRNT_PREVIEW &f) { QTest::keyClick(&f, Qt::Key_F9); });
    EXPECT_GT(pages, 1);
    EXPECT_EQ(pdfInfo(pdf, "Pages").toInt(), pages);
    EXPECT_TRUE(pdfText(pdf).contains(QRegularExpression("Set:\\s+Menu number 01(.|\\n)*CAKE-14")))
        << "from the first set to the last";
    QFile::remove(pdf);

    pdf = detail([](frmSMPRNT_PREVIEW &f) {
        f.cmdMove[3]->click();
        f.mnuPrint_item[1]->trigger();
    });
    EXPECT_EQ(pdfInfo(pdf, "Pages"), "1");
    EXPECT_TRUE(pdfText(pdf).contains("Menu number 14"));
    EXPECT_FALSE(pdfText(pdf).contains("Menu number 01"));
    QFile::remove(pdf);
}
