#include "print/frmSMPRNT_PREVIEW.h"
#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "common/ui/sm_Mouse.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/Modal.h"
#include "platform/ui/Twips.h"
#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include "print/PageView.h"
#include "settings/clsDataPath.h"
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

std::function<void(QWidget *, const QString &)> &mailOpener()
{
    static std::function<void(QWidget *, const QString &)> opener;
    return opener;
}

QPushButton *button(const QString &caption, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    b->setMinimumHeight(30);
    return b;
}

QString dataFile(const QString &name)
{
    return gDataPath.DataPath() + QDir::separator() + name;
}

} // namespace

void setPreviewMailOpener(std::function<void(QWidget *parent, const QString &attachment)> opener)
{
    mailOpener() = std::move(opener);
}

frmSMPRNT_PREVIEW::frmSMPRNT_PREVIEW(QWidget *parent) : KeyPreviewForm(parent)
{
    setObjectName("frmSMPRNT_PREVIEW");
    setWindowTitle("Print Preview");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    vsvPrinter = new print::PageDocument(this);
    vsvView = new print::PageView(vsvPrinter, this);

    menuBar = new QMenuBar(this);
    mnuPrint = menuBar->addMenu("&Print");
    mnuPrinterSetup = mnuPrint->addAction("Printer &Setup");
    mnuPrint_item[0] = mnuPrint->addAction("&All Pages");
    mnuPrint_item[1] = mnuPrint->addAction("&Current Page");
    mnuPrint->addSeparator();
    mnuPrint_Save = mnuPrint->addAction("&Save As");
    mnuPrint_Mail = mnuPrint->addAction("Send &E-Mail");
    mnuPrint->addSeparator();
    mnuPrint_exit = mnuPrint->addAction("E&xit");
    mnuHelp = menuBar->addMenu("&Help");
    mnuHelp->addAction("&Contents");
    mnuHelp->addAction("&Index");

    const char *moves[] = {"&First", "&Next", "Pre&vious", "&Last"};
    for (int i = 0; i < 4; ++i) cmdMove[i] = button(moves[i], "cmdMove", this);
    lblPageOf = new QLabel(this);
    lblPageOf->setObjectName("lblPageOf");
    lblPageOf->setMinimumWidth(120);
    cboZoom = new QComboBox(this);
    cboZoom->setObjectName("cboZoom");
    cboZoom->setEditable(true);
    cboZoom->setInsertPolicy(QComboBox::NoInsert);
    cboZoom->setCompleter(nullptr); // a typed digit must not complete to an item
    cboZoom->addItems({" 25%", " 50%", " 75%", "100%", "125%", "150%", "175%", "200%"});
    txtFind = new QLineEdit(this);
    txtFind->setObjectName("txtFind");
    const char *finds[] = {"&Find", "Find Next", "Show Invoice", "F6 Show PO"};
    for (int i = 0; i < 4; ++i) cmdFind[i] = button(finds[i], "cmdFind", this);
    cmdFind[2]->hide();
    cmdFind[3]->hide();

    mButtons = new QWidget(this);
    mButtons->setObjectName("elsButtons");
    cmdPrint = button("F9 &Print", "cmdPrint", mButtons);
    cmdSave = button("F7 &Save", "cmdSave", mButtons);
    cmdSendMail = button("F8 Email", "cmdSendMail", mButtons);
    cmdClose = button("Esc Cancel", "cmdClose", mButtons);
    mButtons->setMinimumHeight(cmdClose->minimumHeight() + 8);

    auto *top = new QHBoxLayout;
    for (QPushButton *b : cmdMove) top->addWidget(b);
    top->addWidget(lblPageOf);
    top->addWidget(cboZoom);
    top->addSpacing(12);
    top->addWidget(txtFind, 1);
    for (QPushButton *b : cmdFind) top->addWidget(b);
    auto *main = new QVBoxLayout(this);
    main->setMenuBar(menuBar);
    main->addLayout(top);
    main->addWidget(vsvView, 1);
    main->addWidget(mButtons);
    resize(900, 760);

    for (int i = 0; i < 4; ++i)
        connect(cmdMove[i], &QPushButton::clicked, this, [this, i] { cmdMove_Click(i); });
    for (int i = 0; i < 2; ++i) {
        connect(cmdFind[i], &QPushButton::clicked, this, [this, i] { cmdFind_Click(i); });
        connect(mnuPrint_item[i], &QAction::triggered, this, [this, i] { mnuPrint_item_Click(i); });
    }
    connect(cmdPrint, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(mnuPrint_Save, &QAction::triggered, this, [this] { cmdSave_Click(); });
    connect(cmdSendMail, &QPushButton::clicked, this, [this] { cmdSendMail_Click(); });
    connect(mnuPrint_Mail, &QAction::triggered, this, [this] { cmdSendMail_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, [this] { cmdClose_Click(); });
    connect(mnuPrint_exit, &QAction::triggered, this, [this] { cmdClose_Click(); });
    connect(mnuPrinterSetup, &QAction::triggered, this, [this] { mnuPrinterSetup_Click(); });
    connect(cboZoom, &QComboBox::activated, this,
            [this](int index) { vsvPrinter->setZoom((index + 1) * 25.0); });
    connect(txtFind, &QLineEdit::textChanged, this, [this](const QString &t) {
        cmdFind[0]->setEnabled(!t.isEmpty());
        cmdFind[1]->setEnabled(!t.isEmpty());
    });
    connect(vsvPrinter, &print::PageDocument::newPage, this, [this] { vsvPrinter_NewPage(); });
    connect(vsvPrinter, &print::PageDocument::endDoc, this, [this] { vsvPrinter_EndDoc(); });
    connect(vsvPrinter, &print::PageDocument::zoomChanged, this,
            [this] { vsvPrinter_ZoomChanged(); });
    connect(vsvPrinter, &print::PageDocument::previewPageChanged, this,
            [this] { mpPageOf_update(); });
    cboZoom->lineEdit()->installEventFilter(this);
    mButtons->installEventFilter(this);

    // Load
    cboZoom->setCurrentIndex(3);
    vsvPrinter->setTableBorder(print::tbAll);
    cmdFind[0]->setEnabled(false);
    cmdFind[1]->setEnabled(false);
    gpForm_initControls(this);
    mpPageOf_update();
}

frmSMPRNT_PREVIEW::~frmSMPRNT_PREVIEW() = default;

bool frmSMPRNT_PREVIEW::event(QEvent *e)
{
    if (e->type() == QEvent::WindowActivate) {
        bEscDone = false;
        mpPrint_enable(true);
    }
    return KeyPreviewForm::event(e);
}

bool frmSMPRNT_PREVIEW::eventFilter(QObject *watched, QEvent *e)
{
    if (watched == cboZoom->lineEdit() && e->type() == QEvent::FocusOut)
        cboZoom_LostFocus();
    if (watched == mButtons && e->type() == QEvent::Resize)
        mpButtons_layout();
    return KeyPreviewForm::eventFilter(watched, e);
}

void frmSMPRNT_PREVIEW::vsvPrinter_NewPage()
{
    mpPageOf_update();
}

void frmSMPRNT_PREVIEW::vsvPrinter_EndDoc()
{
    mpPageOf_update();
    gpMouse_default();
    if (ModalMode == 1) {
        platform::showModal(*this);
    } else {
        setAttribute(Qt::WA_DeleteOnClose);
        show();
    }
}

void frmSMPRNT_PREVIEW::mpPageOf_update()
{
    const int count = vsvPrinter->PageCount();
    bMultiPage = count > 1;
    for (QPushButton *b : cmdMove) b->setEnabled(bMultiPage);
    lblPageOf->setText(QString("Page %1 of %2").arg(vsvPrinter->PreviewPage()).arg(count));
}

void frmSMPRNT_PREVIEW::cmdMove_Click(int Index)
{
    const int page = vsvPrinter->PreviewPage();
    const int target[] = {1, page + 1, page - 1, vsvPrinter->PageCount()};
    vsvPrinter->setPreviewPage(target[Index]);
    mpPageOf_update();
}

void frmSMPRNT_PREVIEW::mpZoomText_write()
{
    const QString text = conv::FormatText(QString::number(qRound(vsvPrinter->Zoom())), "@@@") + "%";
    if (cboZoom->currentText() != text)
        cboZoom->setEditText(text);
}

void frmSMPRNT_PREVIEW::vsvPrinter_ZoomChanged()
{
    mpZoomText_write();
}

void frmSMPRNT_PREVIEW::cboZoom_LostFocus()
{
    const QString text = cboZoom->currentText();
    if (text.endsWith('%'))
        return;
    const double zoom = std::clamp(conv::Val(text), 10.0, 300.0);
    vsvPrinter->setZoom(zoom);
    mpZoomText_write();
}

void frmSMPRNT_PREVIEW::cmdFind_Click(int Index)
{
    if (Index == 0) {
        if (conv::Trim(txtFind->text()).isEmpty()) {
            platform::MsgBox("Please enter value for which to search", platform::vbOKOnly,
                             "Search for ???");
            txtFind->setFocus();
            return;
        }
        lFindPage = 0;
        lFindPos = 0;
    }
    const int page = vsvPrinter->FindText(txtFind->text(), lFindPage.toInt(), lFindPos.toDouble());
    lFindPage = page;
    vsvPrinter->clearOverlays();
    if (page <= 0) {
        platform::MsgBox("Cannot find the string '" + txtFind->text() + "'\r" +
                             "The document has been searched.",
                         platform::vbOKOnly, "Not Found");
        lFindPos = 0;
        vsvView->viewport()->update();
        return;
    }
    const QRectF hit = vsvPrinter->FindRect();
    lFindPos = hit.bottom();
    vsvPrinter->setPreviewPage(page);
    vsvPrinter->addOverlay(page, hit, 25, 200, 0, 1);
    vsvView->scrollIntoView(hit);
}

void frmSMPRNT_PREVIEW::mpPrint_enable(bool on)
{
    cmdPrint->setEnabled(on);
    mnuPrint_item[0]->setEnabled(on);
    mnuPrint_item[1]->setEnabled(on);
}

void frmSMPRNT_PREVIEW::mnuPrint_item_Click(int Index)
{
    mpPrint_enable(false);
    // The platform's default printer, unless Printer Setup chose another.
    std::unique_ptr<QPrinter> byDefault;
    QPrinter *printer = mPrinter.get();
    if (!printer) {
        const QString device = platform::ShellPort::get().defaultPrinterName();
        if (device.isEmpty()) {
            platform::MsgBox("No Windows Printers setup you must setup a Printer to Print");
            mpPrint_enable(true);
            return;
        }
        byDefault = std::make_unique<QPrinter>(QPrinter::HighResolution);
        byDefault->setPrinterName(device);
        printer = byDefault.get();
    }
    printer->setDocName(windowTitle());
    const int page = vsvPrinter->PreviewPage();
    QString error;
    const bool ok =
        Index == 0 ? print::printPages(*vsvPrinter, *printer, 1, vsvPrinter->PageCount(), error)
                   : print::printPages(*vsvPrinter, *printer, page, page, error);
    if (!ok)
        platform::MsgBox("Printing failed: " + error + "\rCheck the printer and try again.",
                         platform::vbExclamation);
    mpPrint_enable(true);
}

// Only sets up: the printer and its settings chosen here serve the prints that follow.
void frmSMPRNT_PREVIEW::mnuPrinterSetup_Click()
{
    // A cancelled dialog leaves its printer as it was.
    std::unique_ptr<QPrinter> fresh;
    QPrinter *printer = mPrinter.get();
    if (!printer) {
        fresh = std::make_unique<QPrinter>(QPrinter::HighResolution);
        fresh->setPrinterName(platform::ShellPort::get().defaultPrinterName());
        printer = fresh.get();
    }
    QPrintDialog dialog(printer, this);
    dialog.setWindowTitle("Printer Setup");
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (auto *buttons = dialog.findChild<QDialogButtonBox *>())
        if (QPushButton *ok = buttons->button(QDialogButtonBox::Ok))
            ok->setText("OK"); // not "Print": nothing prints from here
    if (platform::showModal(dialog) == QDialog::Accepted && fresh)
        mPrinter = std::move(fresh);
}

bool frmSMPRNT_PREVIEW::mpPriceLevel_save()
{
    const QString tmp = dataFile("priceLevel.tmp");
    if (!QFile::exists(tmp))
        return false;
    if (platform::MsgBox("Save as csv file for import into Excel", platform::vbYesNo,
                         "Save Option") != platform::vbYes) {
        QFile::remove(tmp);
        return false;
    }
    for (;;) {
        const QString name =
            platform::InputBox("Save file as:", "Save as", dataFile("priceLevel.csv"));
        if (name.isEmpty())
            return true;
        if (QFile::exists(name)) {
            if (platform::MsgBox(name + " already exists. Overwrite?", platform::vbYesNo,
                                 "File save error") != platform::vbYes)
                continue;
            QFile::remove(name);
        }
        QFile file(tmp);
        if (!file.rename(name))
            platform::MsgBox(QString("%1 could not be renamed to %2: %3.\rThe file is kept.")
                                 .arg(QDir::toNativeSeparators(tmp), QDir::toNativeSeparators(name),
                                      file.errorString()),
                             platform::vbExclamation);
        return true;
    }
}

bool frmSMPRNT_PREVIEW::mpPdf_write(const QString &path)
{
    QString error;
    if (print::writePdf(*vsvPrinter, path, error))
        return true;
    platform::MsgBox(error + "\rChoose another folder and save again.", platform::vbExclamation,
                     "Save");
    return false;
}

void frmSMPRNT_PREVIEW::cmdSave_Click()
{
    if (mpPriceLevel_save())
        return;
    const QString name =
        platform::DialogPort::get().saveFileName("Save As", gDataPath.DataPath(), "(*.pdf)|*.pdf");
    gpMouse_wait();
    if (!conv::Trim(name).isEmpty()) {
        QString path = name;
        if (QFileInfo(path).suffix().isEmpty())
            path += ".pdf";
        mpPdf_write(path);
    }
    gpMouse_default();
}

void frmSMPRNT_PREVIEW::cmdSendMail_Click()
{
    const QString doc = dataFile("Doc1.pdf");
    QString error;
    print::writePdf(*vsvPrinter, doc, error);
    if (!QFile::exists(doc)) {
        platform::MsgBox("You must save the document in ZEL folder before sending email.");
        cmdSave_Click();
    }
    if (mailOpener())
        mailOpener()(this, QFile::exists(doc) ? QDir::toNativeSeparators(doc) : QString());
    else
        platform::MsgBox("Mail is not available in this installation: save the document with "
                         "F7 Save and send the file from your mail program.",
                         platform::vbInformation);
    if (QFile::exists(doc))
        QFile::remove(doc);
}

void frmSMPRNT_PREVIEW::cmdClose_Click()
{
    vsvPrinter->KillDoc();
    mbClosed = true;
    close();
}

void frmSMPRNT_PREVIEW::closeEvent(QCloseEvent *e)
{
    if (!mbClosed)
        vsvPrinter->KillDoc();
    KeyPreviewForm::closeEvent(e);
}

void frmSMPRNT_PREVIEW::Form_KeyDown(int &KeyCode, int)
{
    using namespace platform;
    std::function<void()> action;
    switch (KeyCode) {
    case vbKeyHome:
    case vbKeyPageUp:
    case vbKeyPageDown:
    case vbKeyEnd: {
        if (!bMultiPage)
            return;
        const int index = KeyCode == vbKeyHome       ? 0
                          : KeyCode == vbKeyPageUp   ? 2
                          : KeyCode == vbKeyPageDown ? 1
                                                     : 3;
        action = [this, index] { cmdMove_Click(index); };
        break;
    }
    case vbKeyEscape:
        if (bEscDone) {
            KeyCode = 0;
            return;
        }
        bEscDone = true;
        action = [this] { cmdClose_Click(); };
        break;
    case vbKeyF9:
        action = [this] { cmdPrint_Click(); };
        break;
    case vbKeyF8:
        action = [this] { cmdSendMail_Click(); };
        break;
    case vbKeyF7:
        action = [this] { cmdSave_Click(); };
        break;
    case vbKeyF3:
        action = [this] { cmdFind_Click(1); };
        break;
    default:
        return;
    }
    KeyCode = 0;
    action();
}

void frmSMPRNT_PREVIEW::Form_KeyPress(int &KeyAscii)
{
    if (focusWidget() != cboZoom && focusWidget() != cboZoom->lineEdit())
        return;
    if (KeyAscii == platform::vbKeyReturn) {
        KeyAscii = 0;
        cboZoom_LostFocus();
        return;
    }
    if (KeyAscii < '0' || KeyAscii > '9') {
        KeyAscii = 0;
        return;
    }
    if (cboZoom->currentText().endsWith('%'))
        cboZoom->setEditText(QString());
}

// The buttons keep to the right edge, Close last, whatever the width.
void frmSMPRNT_PREVIEW::mpButtons_layout()
{
    const int gap = platform::twipsToPixels(100);
    int x = mButtons->width() - gap;
    for (QPushButton *b : {cmdClose, cmdSendMail, cmdSave, cmdPrint}) {
        b->adjustSize();
        const int w = std::max(b->sizeHint().width(), platform::twipsToPixels(1200));
        x -= w;
        b->setGeometry(x, 4, w, b->minimumHeight());
        x -= gap;
    }
}
