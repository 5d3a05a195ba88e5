#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <array>

class QGroupBox;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

// "Send": writes one message and sends it, with an on-screen keyboard for touch
// screens that types into the box last touched.
class frmSendMail : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSendMail(QWidget *parent = nullptr);

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QLineEdit *txtTo;
    QLineEdit *TxtCC;
    QLineEdit *txtFrom;
    QLineEdit *TxtSubject;
    QPlainTextEdit *TxtBody;
    QLineEdit *txtAttach;
    QPushButton *Command1;
    QPushButton *cmdSend;
    QPushButton *cmdCancel;
    QPushButton *CmdShowKB;
    QGroupBox *FraKeyBoard;
    std::array<QPushButton *, 41> cmdKeyPad;
    std::array<QPushButton *, 3> cmdEdit;
    bool bUpperCase = false;

    void cmdKeyPad_Click(int Index);
    void cmdEdit_Click(int Index);
    void CmdShowKB_Click();
    void Command1_Click();
    void cmdSend_Click();
    void cmdCancel_Click();

    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLayout *mpFields();
    QLayout *mpButtons();
    QWidget *mpKeyboard();
    QWidget *mpTarget() const;
    void mpSetTargetText(QWidget *box, const QString &text);
    void mpShowError(long number, const QString &description);

    bool mbSending = false;
};

// Shows the mail screen modally, as the preview's mail command does: empty but
// for the document's file in the attachment box.
void gpSendMail_show(QWidget *parent, const QString &sAttach);
