#pragma once
#include "hotkeys/hkeyVersions.h"
#include "platform/ui/KeyPreviewForm.h"
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
    // Cancel, Esc and the window's close button: asks first when a key was changed.
    void reject() override;

private:
    QString mpFile_path() const;
    bool mpChanged() const;
    // Two special keys on one keyboard character: asks whether to save them so.
    bool mpClashes_accepted() const;
    std::array<QString, 3> ReadCaptions;
    std::array<QString, 3> ReadTags;
    // The file as it was read, to tell on Accept whether another station saved it meanwhile.
    versions::FileStamp ReadStamp;
};
