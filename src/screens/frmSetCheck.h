#pragma once
#include "hotkeys/hkeyReplace.h"
#include "hotkeys/hkeySetFix.h"
#include "platform/ui/KeyPreviewForm.h"
#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QMenu;
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
    // Check Sets: mends the selected line (0) or every line of its kind (1), then checks again.
    void cmdFix_Click(int Index);
    // Where Used for an item: every listed key sells another item, picked with F3.
    void cmdReplace_Click();
    void cmdUndoReplace_Click();

    platform::MSFlexGrid *fgrdItems;
    QLabel *lblItem;
    QLineEdit *txtItem;
    QPushButton *cmdFindItem;
    QPushButton *cmdSearch;
    QLabel *lblStatus;
    std::array<QPushButton *, 2> cmdFix;
    QMenu *mnuFix; // the same two on the list's right click
    QPushButton *cmdReplace;
    QPushButton *cmdUndoReplace;
    QPushButton *cmdPrint;
    QPushButton *cmdExit;

    QList<setcheck::Finding> Findings; // row r holds Findings[r - 1]
    // The progress display of the running fill; null between fills.
    QProgressDialog *Progress = nullptr;
    QString Heading;                     // what the list shows, for the title and the printed page
    QList<replace::Written> LastReplace; // what Undo Replace puts back

private:
    Mode mMode;
    setcheck::Item mItem;
    QString mItemText; // the item as the status line names it
    setcheck::Result mpRun();
    void mpList_format();
    void mpList_show(const setcheck::Result &result);
    QString mpStatus(const setcheck::Result &result) const;
    void mpResolveItem(const QString &typed);
    const setcheck::Finding *mpSelected() const;
    QList<setcheck::Finding> mpLike(const setcheck::Finding &f) const;
    void mpFix_show();
    // The key dialog on the key of `f`, saved when the user accepts; false on Cancel.
    bool mpEditKey(const setcheck::Finding &f);
};
