#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <array>

class QListWidget;
class QPushButton;

// "Find Hot Keys Set": the sets a key may link to, all but the one being edited.
class frmButtonSet_Find : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmButtonSet_Find(QWidget *parent = nullptr);

    QString ButtonSet_Current;
    bool Canceled = true;
    QString ButtonSet;
    QString ButtonSetLabel;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    QListWidget *lstItems;
    std::array<QPushButton *, 2> cmdOkCancel;

    void cmdOkCancel_Click(int Index);

private:
    bool AnySetListed = false;
};
