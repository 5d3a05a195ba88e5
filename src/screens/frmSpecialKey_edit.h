#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// When `amount` is no coupon amount the sales screen can read, says so and gives
// true: the amount is refused and nothing may be written.
bool gfbCouponAmount_refused(const QString &amount);

// Edits one special key (label and keyboard character) or coupon key (label and amount).
class frmSpecialKey_edit : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSpecialKey_edit(QWidget *parent = nullptr);

    bool Canceled = false;
    QString KeyLabel;
    QString KeyCharacter;
    int HelpContextID = 0;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QLineEdit *txtEdit;
    QComboBox *cboEdit;
    QLineEdit *TxtAmount;
    std::array<QLabel *, 2> lblEdit;
    QPushButton *cmdClear;
    std::array<QPushButton *, 2> cmdOkCancel;
    QPushButton *cmdHelp;

    void cmdOkCancel_Click(int Index);
    void cmdClear_Click();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void mpAcceptFollows(const QString &text);
    bool m_activated = false;
};
