// Renders the program's screens offscreen to PNG files, to look at them as a
// person would: hk_render_screens OUTPUT_FOLDER [DATA_FOLDER]
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/frm_Lookup.h"
#include "mail/frmSendMail.h"
#include "platform/KeyPreviewForm.h"
#include "platform/Modal.h"
#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "screens/frmButtonSet_Find.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/frmHotKeys_Trial.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/frmSpecialKeys.h"
#include "settings/clsDataPath.h"
#include "settings/frmSMFILE_PATH.h"
#include "settings/frmSM_DATAPATH2.h"
#include "shell/frmFirstRun.h"
#include "shell/frmMain.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QDir>
#include <QGroupBox>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTimer>
#include <cstdio>

namespace {

void save(QWidget &w, const QString &folder, const QString &name)
{
    w.show();
    QApplication::processEvents();
    const QString path = QDir(folder).filePath(name + ".png");
    w.grab().save(path);
    std::printf("%s\n", qPrintable(path));
}

// Saves the preview of a report at 100% and 200%, and its first page as paper shows it.
class PreviewSaver : public platform::ModalShower {
public:
    explicit PreviewSaver(QString folder) : m_folder(std::move(folder)) {}
    QString prefix;
    int show(QDialog &form) override
    {
        auto *preview = qobject_cast<frmSMPRNT_PREVIEW *>(&form);
        if (!preview)
            return QDialog::Rejected;
        preview->resize(1000, 800);
        save(*preview, m_folder, prefix + "-100");
        preview->vsvPrinter->setZoom(200);
        save(*preview, m_folder, prefix + "-200");
        const print::Page &page = preview->vsvPrinter->page(1);
        QImage paper((page.size * 150 / 1440).toSize(), QImage::Format_RGB32);
        paper.fill(Qt::white);
        QPainter painter(&paper);
        painter.scale(150.0 / 1440, 150.0 / 1440);
        print::renderPage(painter, *preview->vsvPrinter, 1);
        painter.end();
        paper.save(QDir(m_folder).filePath(prefix + "-page1.png"));
        preview->hide();
        return QDialog::Rejected;
    }

private:
    QString m_folder;
};

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    const QString out = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath();
    QDir().mkpath(out);

    gDataPath.setMaxStations(50);
    gDataPath.setStationNumberEnabled(true);
    frmSM_DATAPATH2 datapath;
    datapath.Form_Load();
    save(datapath, out, "frmSM_DATAPATH2");

    frmSendMail mail;
    mail.Form_Load();
    mail.txtTo->setText("office@example.com");
    mail.txtFrom->setText("store12@example.com");
    mail.TxtSubject->setText("Price report");
    mail.TxtBody->setPlainText("Here is this week's report.");
    mail.txtAttach->setText(QDir::toNativeSeparators(QDir::home().filePath("QR/Doc1.pdf")));
    mail.FraKeyBoard->setTitle("Message");
    save(mail, out, "frmSendMail");
    mail.CmdShowKB_Click();
    save(mail, out, "frmSendMail-keyboard-hidden");

    if (argc > 2)
        gDataPath.setDataPath(QString::fromLocal8Bit(argv[2]));
    frmFirstRun first;
    first.Form_Load();
    first.txtStoreNumber->setText("12");
    first.txtStoreName->setText("Main Street Market");
    save(first, out, "frmFirstRun");
    first.optServer->setChecked(true);
    first.txtServer->setText("STOREPC\\ZEL");
    save(first, out, "frmFirstRun-server");

    if (argc > 2) {
        frmMain main;
        main.Form_Load();
        save(main, out, "frmMain");
        PreviewSaver previews(out);
        platform::ModalPort::install(&previews);
        previews.prefix = "frmSMPRNT_PREVIEW-summary";
        main.mnuPrintType_Click(0);
        previews.prefix = "frmSMPRNT_PREVIEW-detail";
        main.mnuPrintType_Click(1);
        platform::ModalPort::install(nullptr);

        gsHotKeyPicturePath = gDataPath.DataPath() + "/pictures/HotKeys/";
        frmHotKeys editor;
        editor.HotKeySet = "01";
        editor.fileName = "HKSET01.SDF";
        editor.Form_Load();
        for (const QSize size : {QSize(800, 600), QSize(1920, 1080)}) {
            editor.resize(size);
            save(editor, out, QString("frmHotKeys-%1").arg(size.width()));
        }
        editor.BeginColumnEdit(2);
        save(editor, out, "frmHotKeys-column-title");
        frmHotKey_Define key;
        editor.PrepareKeyDialog(key, 1, 1);
        save(key, out, "frmHotKey_Define");
        frmButtonSet_Find finder;
        finder.ButtonSet_Current = "1";
        finder.Form_Load();
        save(finder, out, "frmButtonSet_Find");

        frmHotKeys_Trial trial;
        trial.msfileName = "HKSET01.SDF";
        trial.currentSet = 1;
        trial.Form_Load();
        trial.resize(1280, 800);
        save(trial, out, "frmHotKeys_Trial");

        // The item lookup, on the database the settings store names.
        if (gfbDBSM_Setup()) {
            for (const QSize size : {QSize(1024, 640), QSize(1600, 1000)}) {
                frm_Lookup lookup;
                gfbInventoryLookup_setup(&lookup);
                lookup.Form_Load();
                lookup.setWindowState(Qt::WindowNoState);
                lookup.resize(size);
                lookup.show();
                QApplication::processEvents();
                save(lookup, out, QString("frm_Lookup-%1").arg(size.width()));
            }
        }

        gbSpecialKeys = true;
        frmSpecialKeys special;
        special.Form_Load();
        save(special, out, "frmSpecialKeys");
        gbCouponKeys = true;
        frmSpecialKeys coupons;
        coupons.Form_Load();
        save(coupons, out, "frmSpecialKeys-coupons");
        frmSpecialKey_edit edit;
        edit.KeyLabel = "Fifty Cents";
        edit.Form_Load();
        edit.TxtAmount->setText(".50");
        save(edit, out, "frmSpecialKey_edit");
    }

    frmSMFILE_PATH browser;
    browser.Path = QDir::homePath();
    browser.Form_Load();
    save(browser, out, "frmSMFILE_PATH");
    gpDBSM_Disconnect();
    return 0;
}
