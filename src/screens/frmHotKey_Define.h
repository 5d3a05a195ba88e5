#pragma once
#include "platform/ui/KeyPreviewForm.h"
#include <array>

struct HotKeyButton;
struct HotKeyGroup;
class MyButton;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

// One key of a set: label, item or link, picture. The editor fills the public
// fields, shows the form and reads them back; the form writes nothing itself.
class frmHotKey_Define : public platform::KeyPreviewForm {
    Q_OBJECT
public:
    explicit frmHotKey_Define(QWidget *parent = nullptr);

    bool Canceled = true;
    QString Group;
    QString ButtonSet;
    QString ButtonNumber;
    QString ButtomItem;
    QString ButtonLabel;
    QString ButtonLink;
    QString ButtonIcon;
    QString ItemIDLink;
    int HelpContextID = 0;

    void Form_Load();
    // Fills the fields from key `key` of `group` of set `set` and loads the form.
    void LoadKey(const QString &set, const HotKeyGroup &group, int key);
    // The key as the user left the fields.
    void StoreKey(HotKeyButton &key) const;
    void Form_KeyDown(int &KeyCode, int Shift) override;

    std::array<QLineEdit *, 4> txtEdit;
    QString txtEdit2_Tag; // the linked set's number behind the label in txtEdit(2)
    std::array<QLabel *, 4> lblEdit;
    QPushButton *cmdBrowsePath;
    std::array<QRadioButton *, 2> Option1;
    QLabel *LinkLabel;
    std::array<QPushButton *, 2> cmdFind;
    QPushButton *cmdClear;
    std::array<QPushButton *, 2> cmdOkCancel;
    // The key as it will look with this label and picture, and what is wrong with the picture.
    MyButton *picPreview;
    QLabel *lblPicture;

    void cmdOkCancel_Click(int Index);
    void cmdClear_Click();
    void cmdFind_Click(int Index);
    void cmdBrowsePath_Click();

private:
    void Option1_Click(int Index);
    void mpFindItem();
    void txtEdit_Change();
    void mpSelectOption(int Index);
    void mpPreview_draw();
    // Asks about a picture that cannot be shown; true to accept the key as it is.
    bool mpPicture_accepted();
    // The label the last F3 pick put in, which the next pick may replace.
    QString PickedLabel;
};
