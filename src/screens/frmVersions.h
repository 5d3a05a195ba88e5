#pragma once
#include "hotkeys/hkeyRelink.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/ui/KeyPreviewForm.h"
#include <array>

class MyButton;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

// The kept versions of a set, newest first, each drawn as its panel looks, and the
// way back to one of them. Removed sets are listed too, so they can be brought back.
class frmVersions : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmVersions(QWidget *parent = nullptr);

    QString fileName; // the set to show first, "HKSET07.SDF"; may be empty
    bool Restored = false;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;
    void cmdRestore_Click();
    // The selected version beside the set as it is now, or another version.
    void cmdCompare_Click();

    QComboBox *cboSet;
    QListWidget *lstVersions;
    QLabel *lblSetTitle;
    std::array<QLabel *, 4> lblColumn;
    std::array<std::array<MyButton *, 8>, 4> cmdKey;
    QLabel *lblStatus;
    QPushButton *cmdRestore;
    QPushButton *cmdCompare;
    QPushButton *cmdClose;

private:
    void mpSets_fill();
    void mpVersions_fill();
    void mpVersion_draw();
    // After a removed set came back: offers to put back the keys its removal cleared.
    QString mpClearedKeys_offer(const QList<ClearedKey> &cleared, const QString &number);
    QList<versions::Version> Shown;
};
