#pragma once
#include "lookup/model/InventoryLookup.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QSize>
#include <array>

class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
namespace platform {
class MSFlexGrid;
}

// The suite's full-screen list for finding an inventory item: pick a row and
// the caller gets its stock locater.
class frm_Lookup : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frm_Lookup(QWidget *parent = nullptr);

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;
    void Form_KeyPress(int &KeyAscii) override;

    bool gfbSortColumn_select(int iColumn);
    void gpSortColumn_plain(int iColumn);
    void mpSearchButtons_hide();
    void mpColumns_fit();

    void cmdAction_Click(int Index);
    void cmdExit_Click();
    void cmdSearch_Click();
    void cmdStop_Click();
    void cmdEdit_Click();

    // The captions of a sort, and its boxes.
    void showSort(const LookupPage &page);
    // The search box when it is visible and enabled.
    void focusSearchBox();
    void closeLookup();

    platform::MSFlexGrid *fgrdItems;
    QLineEdit *txtEditValue;
    QLabel *Label1;
    QFrame *fraPad;
    QLabel *lblPad;
    QCheckBox *ckWildcard;
    QPushButton *cmdSearch;
    QPushButton *cmdStop;
    std::array<QPushButton *, 1> cmdEdit;
    std::array<QPushButton *, 5> cmdAction;
    QPushButton *cmdExit;
    QPushButton *cmdHelp;
    std::array<QPushButton *, 2> cmdPage;
    std::array<QPushButton *, 2> SpnGrid; // up, down
    QLabel *Lblwait;
    QLabel *LblTraining;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mpResize();
    void mpActivate();
    void mpSortBy(int column);
    void txtEditValue_Change();
    void ckWildcard_Click();

    bool mbLoaded = false;
    bool mbFormReady = false;
    bool mbFirstSort = false;
    QString msTyped;
    bool mbEnterDown = false;
    QSize mResizedTo; // the size the last resize steps ran for
};

// Shows the lookup and returns the stock locater picked, in stored form, or empty.
QString gfsInventory_find(const QString &sCode);
