// Renders the program's screens offscreen to PNG files, to look at them as a
// person would: hk_render_screens OUTPUT_FOLDER [DATA_FOLDER]
#include "CandyGallery.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/frm_Lookup.h"
#include "mail/frmSendMail.h"
#include "platform/ui/KeyPreviewForm.h"
#include "platform/ui/Modal.h"
#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "screens/frmButtonSet_Find.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/frmHotKeys_Trial.h"
#include "screens/frmReplaceItem.h"
#include "screens/frmSetCheck.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/frmSpecialKeys.h"
#include "screens/frmVersionCompare.h"
#include "screens/frmVersions.h"
#include "screens/posButtons.h"
#include "settings/clsDataPath.h"
#include "settings/ui/frmSMFILE_PATH.h"
#include "settings/ui/frmSM_DATAPATH2.h"
#include "shell/frmFirstRun.h"
#include "shell/frmMain.h"
#include "shell/hkeyDBSM_Interface.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QImage>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTemporaryDir>
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

void mouse(QWidget *to, QEvent::Type type, QWidget *over, Qt::MouseButtons held)
{
    const QPoint global = over->mapToGlobal(over->rect().center() + QPoint(12, 8));
    QMouseEvent event(type, to->mapFromGlobal(global), global, Qt::LeftButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(to, &event);
}

// The editor after two changes, with a key being dragged onto another.
void saveDrag(frmHotKeys &editor, const QString &out)
{
    editor.resize(1280, 800);
    editor.show();
    QApplication::processEvents();
    HotKeyButton &k = gHotKeyGroups[3].Buttons[2];
    k.Caption = "Iced Tea";
    editor.DropKey(1, 1, 1, 2, false);
    MyButton *from = editor.cmdHkGroup[1][0];
    mouse(from, QEvent::MouseButtonPress, from, Qt::LeftButton);
    mouse(from, QEvent::MouseMove, editor.cmdHkGroup[1][3], Qt::LeftButton);
    mouse(from, QEvent::MouseMove, editor.cmdHkGroup[2][2], Qt::LeftButton);
    save(editor, out, "frmHotKeys-drag");
    mouse(from, QEvent::MouseButtonRelease, editor.cmdHkGroup[2][2], Qt::NoButton);
}

// The versions screen on two saves of set 01; the set is put back as it was after.
void saveVersions(const QString &out)
{
    const QString path = hotKeySetPath("01");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray original = file.readAll();
    file.close();
    gpHotKeySet_clear();
    const QString title = gfsHotKeySet_read("01");
    std::swap(gHotKeyGroups[1].Buttons[1], gHotKeyGroups[1].Buttons[2]);
    gpHotKeySet_write("01", title);
    gHotKeyGroups[2].Caption = "Specials";
    gpHotKeySet_write("01", title);
    frmVersions screen;
    screen.fileName = "HKSET01.SDF";
    screen.Form_Load();
    screen.resize(1280, 760);
    save(screen, out, "frmVersions");
    frmVersionCompare compare;
    compare.Kept = versions::list("HKSET01.SDF");
    compare.Left = 1;
    compare.Form_Load();
    save(compare, out, "frmVersionCompare");
    versions::restore(versions::list("HKSET01.SDF").last(), nullptr);
    if (file.open(QIODevice::ReadOnly) && file.readAll() != original)
        std::printf("HKSET01.SDF was not put back as it was\n");
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
    // Versions this tool makes go to a folder of its own, never the user's.
    QTemporaryDir kept;
    versions::setRoot(kept.path());

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
        gsHotKeyPicturePath = gDataPath.DataPath() + "/pictures/HotKeys/";
        previews.prefix = "frmSMPRNT_PREVIEW-layout";
        main.mnuPrintLayout->trigger();
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
        editor.cmdGroup_OkCancel_Click(1);
        saveDrag(editor, out);
        frmHotKey_Define key;
        editor.PrepareKeyDialog(key, 1, 1);
        save(key, out, "frmHotKey_Define");
        key.txtEdit[3]->setText("missing.jpg");
        save(key, out, "frmHotKey_Define-no-picture");
        frmButtonSet_Find finder;
        finder.ButtonSet_Current = "1";
        finder.Form_Load();
        save(finder, out, "frmButtonSet_Find");

        saveVersions(out);

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

        // Check Sets on the same database.
        if (gfbDBSM_Open()) {
            frmSetCheck check(frmSetCheck::Mode::Check);
            check.PrintList = [](frmSetCheck &) {}; // shows the Print button as the set list does
            check.Form_Load();
            save(check, out, "frmSetCheck");
            frmSetCheck used(frmSetCheck::Mode::Item);
            used.PrintList = check.PrintList;
            used.Form_Load();
            used.txtItem->setText("0001234.5");
            used.cmdSearch_Click();
            save(used, out, "frmSetCheck-where-used");
            frmReplaceItem preview;
            preview.Keys = used.Findings;
            preview.FromText = "S/L 0001234.5 (COFFEE SMALL)";
            preview.To = {"0001299.0", "No", QString()};
            preview.ToText = "S/L 0001299.0 (EXTRA SHOT)";
            preview.Description = "EXTRA SHOT";
            preview.Form_Load();
            preview.chkLabel->setChecked(true);
            save(preview, out, "frmReplaceItem");
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
    std::printf("%s\n", qPrintable(saveCandyGallery(out)));
    gpDBSM_Disconnect();
    return 0;
}
