#pragma once
#include "hotkeys/hkeyVersions.h"
#include "platform/KeyPreviewForm.h"
#include <array>

class QLabel;
class QPushButton;
class SpecialKeyPanel;

// The three special keys, or the three coupon keys, of the sales screen.
class frmSpecialKeys : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSpecialKeys(QWidget *parent = nullptr);

    int HelpContextID = 0;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    std::array<SpecialKeyPanel *, 3> cmdSpecial;
    QLabel *lblHelp;
    std::array<QPushButton *, 2> cmdOkCancel;
    QPushButton *cmdHelp;

    void cmdSpecial_Click(int Index);
    void cmdOkCancel_Click(int Index);

private:
    QString mpFile_path() const;
    // The file as it was read, to tell on Accept whether another station saved it meanwhile.
    versions::FileStamp ReadStamp;
};
