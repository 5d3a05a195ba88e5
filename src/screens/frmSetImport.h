#pragma once
#include "hotkeys/hkeyPackage.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QList>
#include <array>

class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;
namespace platform {
class MSFlexGrid;
}

// The preview of Import Sets: what a package would add and change in this store,
// set by set, key by key and picture by picture. Each set's number here can be
// chosen. Nothing is written before Import; Cancel writes nothing.
class frmSetImport : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSetImport(QWidget *parent = nullptr);

    setpackage::Plan Plan; // filled by the opener from readPackage
    bool Canceled = true;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;
    // 0 Import, 1 Cancel.
    void cmdOkCancel_Click(int Index);
    // Gives set `row` (1 and on, as the grid counts) the number `number` in this store.
    void mpSetNumber_change(int row, int number);

    QLabel *lblPackage;
    platform::MSFlexGrid *fgrdSets;
    QList<QSpinBox *> txtNumber; // one a set, in the grid's column "Number here"
    platform::MSFlexGrid *fgrdKeys;
    platform::MSFlexGrid *fgrdPictures;
    QCheckBox *ckSpecial;
    QCheckBox *ckCoupon;
    QLabel *lblStatus;
    std::array<QPushButton *, 2> cmdOkCancel;

private:
    void mpSets_fill();
    void mpKeys_fill();
    void mpPictures_fill();
    void mpStatus_show();
};
