#include "database/zelDBSM_Common.h"
#include "mail/MailScreen.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "shell/frmMain.h"
#include "shell/hkeyMain.h"
#include <QAction>
#include <QFile>
#include <QLineEdit>

using namespace testing_support;

namespace {

class PreviewMailTest : public MailTest {
protected:
    void SetUp() override
    {
        MailTest::SetUp();
        shell.printers = {"Office"};
        gCommonRecord.clear();
        gCommonRecord.setText("Cname", "Corner Shop");
        gpPreviewMail_register();
    }
    void TearDown() override
    {
        setPreviewMailOpener(nullptr);
        MailTest::TearDown();
    }
    // Runs the Detail report from the set list and presses F8 on its preview.
    void mailTheReport()
    {
        modal.drive("frmSMPRNT_PREVIEW", [](QDialog &d) {
            auto &f = static_cast<frmSMPRNT_PREVIEW &>(d);
            QApplication::setActiveWindow(&f);
            QTest::keyClick(f.focusWidget() ? f.focusWidget() : &f, Qt::Key_F8);
            f.cmdClose_Click();
        });
        frmMain list;
        list.Form_Load();
        list.mnuPrintType[1]->trigger();
    }
    QString doc() const { return QDir(dataPath()).filePath("Doc1.pdf"); }
};

} // namespace

TEST_F(PreviewMailTest, AReportGoesFromThePreviewToAMailboxWithItsPdf)
{
    SmtpPeer *p = server(SmtpPeer::Secure);
    writeDataFile("HKSET03.SDF", "[SET]Lunch Menu\r\n[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n");
    QByteArray pdf;
    modal.drive("frmSendMail", [&](QDialog &d) {
        auto &f = static_cast<frmSendMail &>(d);
        EXPECT_TRUE(f.txtTo->text().isEmpty()) << "the screen starts empty";
        EXPECT_EQ(f.txtAttach->text(), QDir::toNativeSeparators(doc()))
            << "but for the report, attached already";
        type(f, f.txtTo, "OFFICE@EXAMPLE.COM");
        type(f, f.txtFrom, "SHOP@EXAMPLE.COM");
        type(f, f.TxtSubject, "HOT KEYS");
        QFile made(doc());
        EXPECT_TRUE(made.open(QIODevice::ReadOnly));
        pdf = made.readAll();
        QTest::mouseClick(f.cmdSend, Qt::LeftButton);
        EXPECT_EQ(f.result(), QDialog::Accepted) << "the screen closes once the message went";
    });
    mailTheReport();
    EXPECT_EQ(modal.shown, (QStringList{"frmSMPRNT_PREVIEW", "frmSendMail"}));
    EXPECT_FALSE(QFile::exists(doc())) << "the preview deletes its work file";

    const QJsonObject m = onlyMessage(p);
    EXPECT_EQ(rcpt(m), QStringList{"office@example.com"});
    EXPECT_EQ(header(m, "Subject"), "hot keys");
    const QJsonArray files = m["attachments"].toArray();
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0]["filename"].toString(), "Doc1.pdf");
    EXPECT_EQ(files[0]["type"].toString(), "application/pdf");
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_EQ(QByteArray::fromBase64(files[0]["data"].toString().toLatin1()), pdf);
}
