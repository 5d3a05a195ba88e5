#pragma once
#include "hotkeys/hkeyReplace.h"
#include "platform/ui/KeyPreviewForm.h"

class QCheckBox;
class QLabel;
class QPushButton;
namespace platform {
class MSFlexGrid;
}

// The preview of Replace Item: every key it will change, as it is and as it will be.
// Nothing is written here; Accept leaves Canceled false and the opener replaces.
class frmReplaceItem : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmReplaceItem(QWidget *parent = nullptr);

    QList<setcheck::Finding> Keys; // Where Used's lines
    replace::Target To;            // its label is set when chkLabel is ticked
    QString FromText, ToText;      // the two items as the user knows them
    QString Description;           // of the new item, the label offered
    bool Canceled = true;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QLabel *lblWhat;
    QCheckBox *chkLabel;
    platform::MSFlexGrid *fgrdKeys;
    QPushButton *cmdAccept;
    QPushButton *cmdCancel;

private:
    void mpPreview_fill();
};
