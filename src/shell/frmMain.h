#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <QStringList>
#include <array>

class MyButton;
class QMenu;
class QAction;
class QPushButton;
namespace platform {
class MSFlexGrid;
}
namespace print {
class PageDocument;
}

// The main screen: every hot key set of the data folder with its title and column titles.
class frmMain : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmMain(QWidget *parent = nullptr);

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    platform::MSFlexGrid *fgrdItems;
    std::array<QPushButton *, 3> cmdEdit;
    QPushButton *cmdTrial;
    QPushButton *cmdSpecial;
    QPushButton *CmdCoupon;
    QPushButton *cmdPrint;
    QPushButton *cmdHelp;
    QPushButton *cmdExit;
    QPushButton *cmdVersions;
    MyButton *cmdChangeOrder;
    QMenu *mnuPrint;
    std::array<QAction *, 2> mnuPrintType;
    // Check Sets and Where Used, also on the list's own menu (right click).
    QPushButton *cmdCheck;
    QPushButton *cmdWhereUsed;
    QMenu *mnuSets;
    QMenu *mnuWhereUsed;
    std::array<QAction *, 2> mnuWhereUsedType; // an item, the selected set
    QAction *mnuPrintLayout;                   // the third report, beside Summary and Detail
    // Set packages: sets carried to and from another store, also on the list's menu.
    QPushButton *cmdExport;
    QPushButton *cmdImport;

    int HelpContextID = 0;
    bool bHaveSets = false;

    // The lowest positive number that no listed set uses.
    int mpSetNumber_next() const;
    void mpSetList_fill();

    // The reports: 0 "Summary", 1 "Detail".
    void mnuPrintType_Click(int Index);
    void mpReport_detail();

protected:
    bool event(QEvent *e) override;

private:
    // The file name of each data row, in row order, for telling a set from a stray file.
    QStringList msRowFiles;
    QString sReportSetTitle;
    // The four report headings, "Hot Key Sets" over `subtitle`.
    static void mpReport_headings(const QString &subtitle);
    // Every set drawn as its panel, one a page, in frmMain_Layout.cpp.
    void mpReport_layout();
    // Prints the set in gHotKeyGroups.
    void mpReport_set(print::PageDocument &doc);
    bool mpIsSetRow(int row) const;
    // Tells the user when the row is a stray file and not a set.
    bool mpRowIsSet(int row, const QString &nothingDone) const;
    void mpSetList_format();
    void mpSelectRow(int row);
    void cmdEdit_Click(int Index);
    void cmdTrial_Click();
    void cmdSpecial_Click(bool coupons);
    void cmdPrint_Click();
    void fgrdItems_DblClick();
    void cmdVersions_Click();
    // Shows the set editor for a set; true when the user accepted it.
    // A set file with lines the reader cannot take: says so and asks whether to open it.
    bool mpUnreadable_accepted(const QString &fileName);
    bool mpEditSet(const QString &setNumber, const QString &fileName, int helpContext,
                   QWidget *over = nullptr);
    // Check Sets and Where Used, in frmMain_Check.cpp.
    void mpCheck_setup();
    bool mpCheck_KeyDown(int KeyCode);
    void cmdCheck_Click();
    void mnuWhereUsedType_Click(int Index);
    void mpCheck_show(int mode, const QString &setNumber);
    // Export Sets and Import Sets, in frmMain_Packages.cpp.
    void mpPackages_setup();

public:
    void cmdExport_Click();
    void cmdImport_Click();
};
