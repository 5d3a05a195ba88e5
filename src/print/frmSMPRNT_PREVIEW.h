#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <QVariant>
#include <array>
#include <functional>
#include <memory>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPrinter;
class QPushButton;
class QWidget;

namespace print {
class PageDocument;
class PageView;
} // namespace print

// Opens the mail screen with the preview as its parent and the document's file
// attached. The mail room registers it at start; while none is registered the
// mail command says mail is not available.
void setPreviewMailOpener(std::function<void(QWidget *parent, const QString &attachment)> opener);

// The preview screen. A report creates it, sets ModalMode, writes its document
// on vsvPrinter between StartDoc and EndDoc; EndDoc shows the screen (with
// ModalMode 1 the report's EndDoc returns when the user has closed it):
//
//   frmSMPRNT_PREVIEW frm;
//   frm.ModalMode = 1;
//   frm.vsvPrinter->setPreview(true);
//   frm.vsvPrinter->StartDoc();
//   frm.vsvPrinter->Paragraph("...");
//   frm.vsvPrinter->AddTable("<2200|>900;", "a|b;c|d");
//   frm.vsvPrinter->EndDoc();
//
// With ModalMode 0 the screen shows without waiting and deletes itself when
// closed, so it must then be made with new.
class frmSMPRNT_PREVIEW : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSMPRNT_PREVIEW(QWidget *parent = nullptr);
    ~frmSMPRNT_PREVIEW() override;

    void Form_KeyDown(int &KeyCode, int Shift) override;
    void Form_KeyPress(int &KeyAscii) override;

    qint16 ModalMode = 0;

    print::PageDocument *vsvPrinter;
    print::PageView *vsvView;
    std::array<QPushButton *, 4> cmdMove;
    QLabel *lblPageOf;
    QComboBox *cboZoom;
    QLineEdit *txtFind;
    std::array<QPushButton *, 4> cmdFind;
    QPushButton *cmdPrint;
    QPushButton *cmdSave;
    QPushButton *cmdSendMail;
    QPushButton *cmdClose;
    QMenuBar *menuBar;
    QMenu *mnuPrint;
    QAction *mnuPrinterSetup;
    std::array<QAction *, 2> mnuPrint_item;
    QAction *mnuPrint_Save;
    QAction *mnuPrint_Mail;
    QAction *mnuPrint_exit;
    QMenu *mnuHelp;

    void cmdMove_Click(int Index);
    void cmdFind_Click(int Index);
    void cmdPrint_Click() { mnuPrint_item_Click(0); }
    void mnuPrint_item_Click(int Index);
    void mnuPrinterSetup_Click();
    void cmdSave_Click();
    void cmdSendMail_Click();
    void cmdClose_Click();
    // Leaving the zoom box: its text read back as a zoom between 10 and 300.
    void cboZoom_LostFocus();

protected:
    bool event(QEvent *e) override;
    bool eventFilter(QObject *watched, QEvent *e) override;
    void closeEvent(QCloseEvent *e) override;

private:
    void vsvPrinter_NewPage();
    void vsvPrinter_EndDoc();
    void vsvPrinter_ZoomChanged();
    void mpPageOf_update();
    void mpButtons_layout();
    void mpPrint_enable(bool on);
    void mpZoomText_write();
    // The priceLevel.tmp questions; true when they finished the save.
    bool mpPriceLevel_save();
    bool mpPdf_write(const QString &path);

    bool bMultiPage = false;
    bool bEscDone = false;
    bool mbClosed = false;
    QVariant lFindPage = 0;
    QVariant lFindPos = 0;
    QWidget *mButtons;
    // What Printer Setup chose; none until it is used.
    std::unique_ptr<QPrinter> mPrinter;
};
