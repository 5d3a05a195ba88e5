#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <array>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

// The first start of a workstation that names no database: the user chooses a
// database of its own in the data folder or types where the store's server is.
// Accept leaves the choice in the settings store; nothing is kept on Cancel.
class frmFirstRun : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmFirstRun(QWidget *parent = nullptr);

    bool Canceled = true;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;
    void cmdOkCancel_Click(int Index);

    QLabel *lblIntro;
    QRadioButton *optOwn;
    QGroupBox *fraOwn;
    QLabel *lblOwnFile;
    QLineEdit *txtStoreNumber;
    QLineEdit *txtStoreName;
    QRadioButton *optServer;
    QGroupBox *fraServer;
    QComboBox *cboEngine; // the server engines, each with its "Engine" value as data
    QLineEdit *txtServer;
    QLineEdit *txtDatabase;
    QLineEdit *txtUser;
    QLineEdit *txtPassword;
    std::array<QPushButton *, 2> cmdOkCancel;

private:
    void mpChoice_show();
    bool mpOwn_accept();
    bool mpServer_accept();
    QString mpServerForm() const;
    // The box for a value that will not do; the field keeps its text and the focus.
    void mpRefuse(QLineEdit *field, const QString &text);
};
