#pragma once
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/ui/KeyPreviewForm.h"
#include <array>
#include <vector>

class MyButton;
class QFrame;
class QLabel;
class QLineEdit;
class frmHotKey_Define;
class KeyDrag;

// The set editor: four columns of eight keys, the set's title and the column
// titles. It works on gHotKeyGroups in place; only Accept writes the file.
class frmHotKeys : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmHotKeys(QWidget *parent = nullptr);

    QString HotKeySet;
    QString fileName;
    bool Canceled = false;
    int HelpContextID = 0;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;

    void gpHotKeys_populate(const QString &sHotKeySet);
    void ShowAcceptButton();
    void DrawColumnTitle(int N);
    void BeginColumnEdit(int N);
    void PrepareKeyDialog(frmHotKey_Define &dialog, int group, int key);
    void RunKeyDialog(frmHotKey_Define &dialog);
    void PressKey(int group, int index);
    // Key `fromKey` of column `fromGroup` dropped on another key: the two swap places,
    // or with `copy` the first is copied over the second (after asking, when it is defined).
    void DropKey(int fromGroup, int fromKey, int toGroup, int toKey, bool copy);
    void Undo();
    void Redo();
    // A key as the editor shows it; `exact` also takes away a picture the key no longer has.
    static void DrawKey(MyButton *control, const HotKeyButton &k, bool exact);

    QLineEdit *txtButtonSet;
    QLabel *lblEdit;
    std::array<MyButton *, 5> cmdEdit_Group{};             // 1 to 4
    std::array<std::array<MyButton *, 8>, 5> cmdHkGroup{}; // [1..4][0..7]
    std::array<MyButton *, 2> cmdOkCancel;
    MyButton *cmdUndo;
    MyButton *cmdRedo;
    KeyDrag *keyDrag;
    MyButton *cmdHelp;
    QFrame *fraGroupEdit;
    QLineEdit *txtEdit;
    QLabel *lblButtonEdit;
    std::array<MyButton *, 2> cmdGroup_OkCancel;
    QLabel *lblInstructions;
    std::array<QLabel *, 4> LblGroup;

    void cmdOkCancel_Click(int Index);
    // The window's close button cancels as Cancel does, asking first about changes.
    void reject() override { cmdOkCancel_Click(1); }
    void cmdGroup_OkCancel_Click(int Index);
    void cmdHelp_Click();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Every change to the keys and column titles is a step; each holds the set as it was.
    void mpStep_begin();
    void mpSteps_show();
    void mpStep_move(std::vector<::HotKeySet> &from, std::vector<::HotKeySet> &to);
    // Undo, redo and drags draw `exact`ly: a key that lost its picture shows none.
    void mpKeys_draw(bool exact);
    // Whether the set on the screen differs from the set as it was read.
    bool mpChanged() const;
    // Makes the change `apply` as one step, when it changes anything.
    template <typename Change> void mpStep_make(Change apply);
    std::vector<::HotKeySet> UndoSteps;
    std::vector<::HotKeySet> RedoSteps;
    // The file as it was read, to tell on Accept whether another station saved it meanwhile.
    versions::FileStamp ReadStamp;
    ::HotKeySet ReadGroups;
    QString ReadTitle;
    // False for a file with lines the reader could not take: Accept then always rewrites it.
    bool ReadWhole = true;
    bool SetLoaded = false;
    int CurrentGroup = 1;
    // The column the title panel was opened for: pressing a key in another
    // column while it is open must not move its Accept there.
    int PanelGroup = 1;
    QString SetTitle;
};
