#include "platform/ui/KeyCodes.h"
#include "print/PageDocument.h"
#include "print/PageView.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "support/HkTest.h"
#include "support/PrintSupport.h"
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontMetricsF>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTest>
#include <csignal>
#include <sys/resource.h>

using namespace platform;
using testing_support::HkTest;

namespace {

class PreviewTest : public HkTest {
protected:
    // Writes a document of `pages` pages, each with its number in words, and
    // shows the preview; `driver` acts on it while it is up.
    void preview(int pages, std::function<void(frmSMPRNT_PREVIEW &)> driver)
    {
        const qsizetype shown = modal.shown.count("frmSMPRNT_PREVIEW");
        modal.drive("frmSMPRNT_PREVIEW", [&](QDialog &d) {
            auto &f = static_cast<frmSMPRNT_PREVIEW &>(d);
            QApplication::setActiveWindow(&f);
            driver(f);
        });
        frmSMPRNT_PREVIEW frm;
        frm.ModalMode = 1;
        frm.vsvPrinter->setPreview(true);
        frm.vsvPrinter->setFooter("|Page %d");
        frm.vsvPrinter->StartDoc();
        for (int p = 1; p <= pages; ++p) {
            if (p > 1)
                frm.vsvPrinter->NewPage();
            frm.vsvPrinter->Paragraph(QString("sheet %1 apple").arg(p));
        }
        frm.vsvPrinter->EndDoc();
        EXPECT_EQ(modal.shown.count("frmSMPRNT_PREVIEW"), shown + 1);
    }
    static void key(frmSMPRNT_PREVIEW &f, Qt::Key k)
    {
        QTest::keyClick(f.focusWidget() ? f.focusWidget() : &f, k);
    }
    static void typeZoom(frmSMPRNT_PREVIEW &f, const QString &text)
    {
        f.cboZoom->setFocus();
        f.cboZoom->lineEdit()->selectAll();
        QTest::keyClicks(f.cboZoom->lineEdit(), text);
        QTest::keyClick(f.cboZoom->lineEdit(), Qt::Key_Return);
    }
    QString file(const QString &name) const { return QDir(dataPath()).filePath(name); }
    // The boxes shown since the last look, as "title: text".
    QStringList told()
    {
        QStringList t;
        for (const auto &b : boxes()) t << b.title + ": " + b.text;
        return t;
    }
};

} // namespace

TEST_F(PreviewTest, OnePageReadsTheZoomBoxAndSaysWhatItCannotDo)
{
    preview(1, [this](frmSMPRNT_PREVIEW &f) {
        for (QPushButton *b : f.cmdMove) EXPECT_FALSE(b->isEnabled());
        for (Qt::Key k : {Qt::Key_End, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_PageUp}) key(f, k);
        EXPECT_EQ(f.lblPageOf->text(), "Page 1 of 1");

        typeZoom(f, "400");
        EXPECT_EQ(f.cboZoom->currentText(), "300%");
        typeZoom(f, "5");
        EXPECT_EQ(f.cboZoom->currentText(), " 10%");
        // Letters are dropped; a digit after the "%" starts the box afresh.
        f.cboZoom->lineEdit()->setCursorPosition(4);
        QTest::keyClicks(f.cboZoom->lineEdit(), "x7");
        EXPECT_EQ(f.cboZoom->currentText(), "7");
        QTest::keyClicks(f.cboZoom->lineEdit(), "5");
        f.cboZoom_LostFocus();
        EXPECT_EQ(f.cboZoom->currentText(), " 75%");
        f.cboZoom->setCurrentIndex(7);
        emit f.cboZoom->activated(7);
        EXPECT_EQ(f.vsvPrinter->Zoom(), 200);
        // The view zooms on its own (Ctrl and the wheel): the box follows.
        f.vsvPrinter->setZoom(150);
        EXPECT_EQ(f.cboZoom->currentText(), "150%");
        EXPECT_NEAR(f.vsvView->widget()->width(), 12240 * f.vsvView->scale(), 1);

        key(f, Qt::Key_F9);
        key(f, Qt::Key_F8);
        EXPECT_EQ(boxTexts(),
                  QStringList({"No Windows Printers setup you must setup a Printer to Print",
                               "Mail is not available in this installation: save the document "
                               "with F7 Save and send the file from your mail program."}));
        EXPECT_FALSE(QFile::exists(file("Doc1.pdf")));
        EXPECT_TRUE(f.isVisible());
        EXPECT_TRUE(f.cmdPrint->isEnabled());
        f.cmdClose_Click();
    });
}

TEST_F(PreviewTest, PrinterSetupPagesByButtonAndKeyFindAndEscClosingOnce)
{
    shell.printers = {"Office"};
    const QString chosen = file("chosen.pdf");
    int finished = 0;
    preview(3, [&](frmSMPRNT_PREVIEW &f) {
        QObject::connect(&f, &QDialog::finished, [&] { ++finished; });
        modal.drive("QPrintDialog", [&](QDialog &d) {
            auto &dialog = static_cast<QPrintDialog &>(d);
            EXPECT_EQ(dialog.windowTitle(), "Printer Setup");
            dialog.printer()->setOutputFormat(QPrinter::PdfFormat);
            dialog.printer()->setOutputFileName(chosen);
            d.setResult(QDialog::Accepted);
        });
        f.mnuPrinterSetup->trigger();
        EXPECT_FALSE(QFile::exists(chosen)) << "setting up prints nothing";
        f.cmdPrint->click();
        EXPECT_EQ(testing_support::pdfInfo(chosen, "Pages"), "3")
            << "the next Print goes to the printer chosen";
        QStringList seen;
        for (auto move : std::initializer_list<std::function<void()>>{
                 [&] { f.cmdMove[1]->click(); }, [&] { key(f, Qt::Key_End); },
                 [&] { key(f, Qt::Key_PageDown); }, [&] { key(f, Qt::Key_PageUp); },
                 [&] { key(f, Qt::Key_Home); }, [&] { f.cmdMove[3]->click(); },
                 [&] { f.cmdMove[2]->click(); }}) {
            move();
            seen << f.lblPageOf->text();
        }
        EXPECT_EQ(seen, QStringList({"Page 2 of 3", "Page 3 of 3", "Page 3 of 3", "Page 2 of 3",
                                     "Page 1 of 3", "Page 3 of 3", "Page 2 of 3"}));

        f.cmdFind_Click(0);
        EXPECT_EQ(told(), QStringList({"Search for ???: Please enter value for which to search"}));
        f.txtFind->setText("APPLE"); // in any case
        f.cmdFind[0]->click();
        ASSERT_EQ(f.vsvPrinter->page(1).overlays.size(), 1u);
        EXPECT_EQ(f.vsvPrinter->page(1).overlays[0].rect, f.vsvPrinter->FindRect());
        EXPECT_NEAR(f.vsvPrinter->FindRect().left() - f.vsvPrinter->MarginLeft(),
                    QFontMetricsF(f.vsvPrinter->fonts().back()).horizontalAdvance("sheet 1 "), 1)
            << "the word, not its line";
        key(f, Qt::Key_F3);
        key(f, Qt::Key_F3);
        EXPECT_EQ(f.lblPageOf->text(), "Page 3 of 3");
        EXPECT_TRUE(f.vsvPrinter->page(1).overlays.empty());
        key(f, Qt::Key_F3); // after the last hit
        EXPECT_EQ(told(), QStringList({"Not Found: Cannot find the string 'APPLE'\rThe document "
                                       "has been searched."}));
        key(f, Qt::Key_F3); // starts over
        EXPECT_EQ(f.lblPageOf->text(), "Page 1 of 3");

        // Esc closes and cancels the document; a second one is swallowed, so it does not
        // reach the screen below.
        int esc = vbKeyEscape, again = vbKeyEscape;
        f.Form_KeyDown(esc, 0);
        f.Form_KeyDown(again, 0);
        EXPECT_EQ(esc + again, 0);
        EXPECT_FALSE(f.isVisible());
        EXPECT_EQ(f.vsvPrinter->PageCount(), 0);
    });
    EXPECT_EQ(finished, 1);
}

TEST_F(PreviewTest, SaveWritesThePdfAndNamesTheFileThatCannotBeWritten)
{
    const QString pdf = file("report.pdf");
    dialogs.answerText(file("report"));
    dialogs.answerText(file("not-a-folder/report.pdf"));
    writeDataFile("not-a-folder", "x");
    preview(2, [&](frmSMPRNT_PREVIEW &f) {
        key(f, Qt::Key_F7);
        EXPECT_EQ(testing_support::pdfInfo(pdf, "Pages"), "2");
        EXPECT_TRUE(testing_support::pdfText(pdf).contains("sheet 2 apple"));
        f.cmdSave_Click();
        // A disk that is full after a few kilobytes.
        dialogs.answerText(file("full.pdf"));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit disk{};
        getrlimit(RLIMIT_FSIZE, &disk);
        const rlim_t room = std::exchange(disk.rlim_cur, 4096);
        setrlimit(RLIMIT_FSIZE, &disk);
        f.cmdSave_Click();
        disk.rlim_cur = room;
        setrlimit(RLIMIT_FSIZE, &disk);
        const auto b = boxes(); // the save box of each, and a box for each that failed
        ASSERT_EQ(b.size(), 5);
        EXPECT_TRUE(b[2].text.contains(QDir::toNativeSeparators(file("not-a-folder/report.pdf"))))
            << b[2].text.toStdString();
        EXPECT_TRUE(b[4].text.startsWith(QDir::toNativeSeparators(file("full.pdf")) +
                                         " could not be written: "))
            << b[4].text.toStdString();
        EXPECT_FALSE(QFile::exists(file("full.pdf")));
        EXPECT_TRUE(f.isVisible());
        f.cmdClose_Click();
    });
}

TEST_F(PreviewTest, PriceLevelWorkFileIsRenamedOrDropped)
{
    writeDataFile("priceLevel.tmp", "a,b\r\n");
    writeDataFile("priceLevel.csv", "old");
    dialogs.answer(vbYes);                      // save as csv
    dialogs.answerText(file("priceLevel.csv")); // the name offered
    dialogs.answer(vbNo);                       // do not overwrite: ask again
    dialogs.answerText(file("prices.csv"));
    preview(1, [this](frmSMPRNT_PREVIEW &f) {
        f.cmdSave_Click();
        EXPECT_EQ(told(), QStringList({"Save Option: Save as csv file for import into Excel",
                                       "Save as: Save file as:",
                                       "File save error: " + file("priceLevel.csv") +
                                           " already exists. Overwrite?",
                                       "Save as: Save file as:"}));
        EXPECT_EQ(readDataFile("prices.csv"), "a,b\r\n");
        EXPECT_EQ(readDataFile("priceLevel.csv"), "old");
        EXPECT_FALSE(QFile::exists(file("priceLevel.tmp")));

        writeDataFile("priceLevel.tmp", "x");
        dialogs.answer(vbNo);
        dialogs.answerText(QString()); // the save dialog cancelled
        f.cmdSave_Click();
        EXPECT_EQ(boxes().size(), 2);
        EXPECT_FALSE(QFile::exists(file("priceLevel.tmp")));
        f.cmdClose_Click();
    });
}
