#pragma once
#include "hotkeys/hkeySetCheck.h"
#include "platform/KeyPreviewForm.h"
#include <functional>

class QLabel;
class QLineEdit;
class QProgressDialog;
class QPushButton;
namespace platform {
class MSFlexGrid;
}

// The list of "Check Sets" and "Where Used": one line per set and key, a double
// click opens that set in the editor and the list is made again when it closes.
class frmSetCheck : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    enum class Mode { Check, Item, Set };
    explicit frmSetCheck(Mode mode, QWidget *parent = nullptr);

    // Mode Set: the set whose openers are listed, in file form.
    QString SetNumber;
    // Opens a set in the editor over `parent`: its number in file form and its file name.
    std::function<void(QWidget *parent, const QString &, const QString &)> EditSet;
    // Prints the list; the Print button shows only when it is set.
    std::function<void(frmSetCheck &)> PrintList;
    int HelpContextID = 0;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    // Makes the list; false when the user canceled it.
    bool mpList_fill();
    // Where Used for the item in txtItem: its S/L or Item ID, as typed or picked.
    void cmdSearch_Click();
    void cmdFindItem_Click();
    void fgrdItems_DblClick();

    platform::MSFlexGrid *fgrdItems;
    QLabel *lblItem;
    QLineEdit *txtItem;
    QPushButton *cmdFindItem;
    QPushButton *cmdSearch;
    QLabel *lblStatus;
    QPushButton *cmdPrint;
    QPushButton *cmdExit;

    QList<setcheck::Finding> Findings; // row r holds Findings[r - 1]
    // The progress display of the running fill; null between fills.
    QProgressDialog *Progress = nullptr;
    QString Heading; // what the list shows, for the title and the printed page

private:
    Mode mMode;
    setcheck::Item mItem;
    QString mItemText; // the item as the status line names it
    setcheck::Result mpRun();
    void mpList_format();
    void mpList_show(const setcheck::Result &result);
    QString mpStatus(const setcheck::Result &result) const;
    void mpResolveItem(const QString &typed);
};
