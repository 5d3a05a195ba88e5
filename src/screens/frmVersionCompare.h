#pragma once
#include "hotkeys/hkeyVersions.h"
#include "platform/ui/KeyPreviewForm.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

// Two states of a set side by side, each drawn as its panel looks, every key that
// differs framed in red, and the differences in words below.
class frmVersionCompare : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmVersionCompare(QWidget *parent = nullptr);

    QList<versions::Version> Kept; // of one set, newest first
    int Left = 0;                  // the version on the left

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QLabel *lblLeft;
    QComboBox *cboRight; // the file as it is now, then the versions
    QLabel *picLeft;
    QLabel *picRight;
    QListWidget *lstDifferences;
    QLabel *lblStatus;
    QPushButton *cmdClose;

private:
    void mpCompare();
};
