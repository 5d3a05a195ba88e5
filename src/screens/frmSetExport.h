#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <QStringList>
#include <array>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;

// Export Sets: which sets go into the package, and whether the special and coupon
// keys go with them. Export asks whether the sets their keys open go too, then
// where the package goes, and writes it.
class frmSetExport : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmSetExport(QWidget *parent = nullptr);

    QString SetNumber; // the set to tick at the start, as the list shows it; may be empty
    bool Canceled = true;
    QString PackageFile; // where the package went

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;
    // 0 Export, 1 Cancel.
    void cmdOkCancel_Click(int Index);
    // Ticks every set, or none.
    void mpSets_tick(bool all);
    QStringList mpSets_chosen() const;

    QListWidget *lstSets;
    QPushButton *cmdAll;
    QPushButton *cmdNone;
    QCheckBox *ckSpecial;
    QCheckBox *ckCoupon;
    QLabel *lblStatus;
    std::array<QPushButton *, 2> cmdOkCancel;
};
