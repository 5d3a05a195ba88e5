#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <array>

class QComboBox;
class QFileSystemModel;
class QLabel;
class QPushButton;
class QTreeView;

// "Path Browser": picks a folder. Set Drive and Path, show, then read Canceled and Path.
class frmSMFILE_PATH : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSMFILE_PATH(QWidget *parent = nullptr);

    bool Canceled = true;
    QString Drive;
    QString Path;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QComboBox *drvBrowse;
    QTreeView *dirBrowse;
    QLabel *lblPath;
    QPushButton *cmdHelp;
    std::array<QPushButton *, 2> cmdOkCancel;

    void cmdHelp_Click();
    void cmdOkCancel_Click(int Index);

private:
    void drvBrowse_Change();
    void dirBrowse_Change();
    QFileSystemModel *m_model;
};
