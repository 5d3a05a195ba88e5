#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <QVector>
#include <array>

class MyButton;
struct HotKeyButton;
class QLabel;
namespace platform {
class MSFlexGrid;
}

// The trial panel: a set behaves as on the sales screen. Keys follow links or
// ring items up into a small sale list; nothing is written.
class frmHotKeys_Trial : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmHotKeys_Trial(QWidget *parent = nullptr);

    QString msfileName;
    qint16 currentSet = 1;
    QStringList SetFiles; // from 1; entry 0 unused
    qint16 SetCount = 0;
    QVector<qint16> History; // from 1; entry 0 unused
    qint16 iLastSetIndex = 1;
    int HelpContextID = 0;

    void Form_Load();
    void Form_KeyDown(int &KeyCode, int Shift) override;
    void Form_KeyPress(int &KeyAscii) override;

    void DrawSet(const QString &file);
    // One key as the panel shows it: label with its keyboard letter, and picture.
    static void DrawKey(MyButton *control, const HotKeyButton &key, int group, int index);
    // Its two parts: the label with the letter, and the picture.
    static void DrawKeyLabel(MyButton *control, const HotKeyButton &key, int group, int index);
    static void DrawKeyPicture(MyButton *control, const HotKeyButton &key);
    void PressKey(int group, int index);
    void AddItemToList(const QString &item, const QString &idSelect);
    static QString SetFileName(const QString &setNumber);
    void LoadSetList();
    void cmdBack_Click(int Index);
    void cmdHelp_Click();

    std::array<std::array<MyButton *, 8>, 5> cmdHkGroup{}; // [1..4][0..7]
    std::array<QLabel *, 4> LblGroup;
    std::array<MyButton *, 4> cmdBack;
    MyButton *CmdAcceptCancel;
    MyButton *cmdHelp;
    platform::MSFlexGrid *fgrdItems;

protected:
    bool event(QEvent *e) override;
    void resizeEvent(QResizeEvent *e) override;

private:
    void mpButtonStates();
    bool FirstDraw = true;
    bool GridPlaced = false;
};
