#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include "settings/clsDataPath.h"
#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

// "Set Data Path": edits gDataPath and saves it when accepted.
class frmSM_DATAPATH2 : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSM_DATAPATH2(QWidget *parent = nullptr);

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QGroupBox *Frame1;
    std::array<QLineEdit *, 2> txtEdit;
    std::array<QLabel *, 3> lblEdit; // 0 station number, 1 import/export path, 2 data path
    std::array<QPushButton *, 2> cmdBrowsePath;
    QComboBox *cboEdit;
    QCheckBox *chkNetwork;
    QLabel *Label2;
    QCheckBox *ckTest;
    QPushButton *cmdBrowse;
    QPushButton *cmdHelp;
    std::array<QPushButton *, 2> cmdOkCancel;

    void cmdOkCancel_Click(int Index);
    void cmdHelp_Click();
    void cmdBrowsePath_Click(int Index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mpLayoutRows();
    void mpAcceptEnable();
    void ckTest_Click();

    bool bLoaded = false;
    int iCurrentPath = 0;
    clsDataPath mLoaded; // the record as it came, put back by Cancel
};
