#include "ScreenForms.h"
#include "screens/KeyDrag.h"
#include <QApplication>

namespace {

class SafeEditTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        usePictures(dataPath());
        // Set 01 as the program writes it: two columns with keys, an untitled coloured third.
        gpHotKeySet_clear();
        for (HotKeyGroup &g : gHotKeyGroups) g.Color = kSilverColor; // as a reread leaves them
        gHotKeyGroups[1].Caption = "Drinks";
        gHotKeyGroups[1].Buttons[1] = {"Coffee", "0001", "", "", "No", ""};
        gHotKeyGroups[1].Buttons[2] = {"Tea", "0002", "", "", "No", ""};
        gHotKeyGroups[2].Caption = "Food";
        gHotKeyGroups[2].Buttons[1] = {"Cake", "", "", "", "No", "cake.jpg"};
        gHotKeyGroups[3].Color = glHotKeyColor_value("BLUE");
        ASSERT_TRUE(gpHotKeySet_write("01", "Lunch"));
        QDir(versionsRoot()).removeRecursively();
    }
    void changeKey(frmHotKeys &editor, int group, int key, const QString &label)
    {
        modal.on<frmHotKey_Define>([label](frmHotKey_Define &define) {
            define.txtEdit[0]->setText(label);
            if (define.txtEdit[1]->text().isEmpty())
                define.txtEdit[1]->setText("0009");
            QTest::keyClick(define.txtEdit[0], Qt::Key_F10);
        });
        QTest::mouseClick(editor.cmdHkGroup[group][key - 1], Qt::LeftButton);
    }
    // A mouse drag from one key to another, as the keys receive it.
    void drag(MyButton *from, MyButton *to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mousePress(from, Qt::LeftButton, modifiers, from->rect().center());
        for (MyButton *over : {from, to}) {
            const QPoint global = over->mapToGlobal(over->rect().center() + QPoint(5, 3));
            QMouseEvent move(QEvent::MouseMove, from->mapFromGlobal(global), global, Qt::NoButton,
                             Qt::LeftButton, modifiers);
            QApplication::sendEvent(from, &move);
        }
        QTest::mouseRelease(from, Qt::LeftButton, modifiers,
                            from->mapFromGlobal(to->mapToGlobal(to->rect().center())));
    }
    QStringList captions(const frmHotKeys &editor, int group) const
    {
        QStringList shown;
        for (int j = 0; j < 3; ++j) shown << editor.cmdHkGroup[group][j]->caption();
        return shown;
    }
};

} // namespace

TEST_F(SafeEditTest, UndoAndRedoWalkMixedStepsBackToTheFileAsRead)
{
    const QByteArray handWritten = readDataFile("HKSET01.SDF").replace("\r\n", "\n");
    writeDataFile("HKSET01.SDF", handWritten);
    auto editor = openEditor();
    changeKey(*editor, 1, 1, "Coffee");
    EXPECT_FALSE(editor->cmdUndo->isEnabled()) << "a key accepted unchanged is no step";
    changeKey(*editor, 1, 1, "Espresso");
    QTest::mouseClick(editor->cmdEdit_Group[3], Qt::LeftButton);
    editor->txtEdit->setText("Meals");
    QTest::keyClick(editor->txtEdit, Qt::Key_F10);
    QTest::keyClick(editor->txtEdit, Qt::Key_F10); // the same title twice: one step
    EXPECT_EQ(gHotKeyGroups[3].Color, kSilverColor) << "its first title turns it silver";
    QTest::mouseClick(editor->cmdGroup_OkCancel[1], Qt::LeftButton);
    drag(editor->cmdHkGroup[1][1], editor->cmdHkGroup[2][1]);

    QTest::mouseClick(editor->cmdUndo, Qt::LeftButton); // the drag
    EXPECT_EQ(captions(*editor, 1), QStringList({"Espresso", "Tea", ""}));
    QTest::mouseClick(editor->cmdEdit_Group[3], Qt::LeftButton);
    QTest::mouseClick(editor->cmdUndo, Qt::LeftButton); // the title, its panel open
    EXPECT_EQ(editor->txtEdit->text(), "") << "the open panel shows the undone title";
    QTest::keyClick(editor->txtEdit, Qt::Key_F10);
    EXPECT_TRUE(editor->cmdRedo->isEnabled()) << "so its Accept stores nothing again";
    QTest::mouseClick(editor->cmdGroup_OkCancel[1], Qt::LeftButton);
    QTest::keyClick(editor->cmdHkGroup[1][0], Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(editor->cmdEdit_Group[3]->caption(), "Meals");
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(editor->cmdHkGroup[1][0], Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(captions(*editor, 1), QStringList({"Coffee", "Tea", ""}));
    EXPECT_FALSE(editor->cmdUndo->isEnabled());
    EXPECT_TRUE(editor->cmdRedo->isEnabled());

    // A new step after undoing drops what could be redone.
    changeKey(*editor, 1, 3, "Juice");
    EXPECT_FALSE(editor->cmdRedo->isEnabled());
    QTest::mouseClick(editor->cmdUndo, Qt::LeftButton);

    // In the set title the keys are the editor's until something is typed there.
    editor->txtButtonSet->setFocus();
    QTest::keyClick(editor->txtButtonSet, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(editor->cmdHkGroup[1][2]->caption(), "Juice");
    QTest::keyClick(editor->txtButtonSet, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor->cmdHkGroup[1][2]->caption(), "");
    QTest::keyClicks(editor->txtButtonSet, "X");
    QTest::keyClick(editor->txtButtonSet, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor->txtButtonSet->text(), "Lunch");
    EXPECT_TRUE(editor->cmdRedo->isEnabled());

    QTest::mouseClick(editor->cmdOkCancel[0], Qt::LeftButton);
    EXPECT_EQ(readDataFile("HKSET01.SDF"), handWritten) << "BLUE and the line ends kept";
}

TEST_F(SafeEditTest, DraggingSwapsKeysPictureAndAllCtrlCopiesAfterAskingAndAFingerMustHold)
{
    auto editor = openEditor();
    drag(editor->cmdHkGroup[1][0], editor->cmdHkGroup[2][0]);
    EXPECT_EQ(captions(*editor, 1), QStringList({"Cake", "Tea", ""}));
    EXPECT_EQ(gHotKeyGroups[1].Buttons[1].Icon, "cake.jpg");
    EXPECT_EQ(gHotKeyGroups[2].Buttons[1].Item, "0001");

    dialogs.answer(vbNo);
    drag(editor->cmdHkGroup[1][1], editor->cmdHkGroup[2][0], Qt::ControlModifier);
    EXPECT_TRUE(oneBox(boxes(),
                       "Key 1 of column 2 (\"Coffee\") is already defined.\r\rReplace it with a "
                       "copy of key 2 of column 1 (\"Tea\")?",
                       vbYesNo + vbQuestion + vbDefaultButton2, "Copy Key"));
    EXPECT_EQ(gHotKeyGroups[2].Buttons[1].Caption, "Coffee");
    dialogs.answer(vbYes);
    drag(editor->cmdHkGroup[1][1], editor->cmdHkGroup[2][0], Qt::ControlModifier);
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_EQ(captions(*editor, 2), QStringList({"Tea", "", ""}));

    for (int i = 0; i < 2; ++i) QTest::mouseClick(editor->cmdUndo, Qt::LeftButton);
    EXPECT_EQ(captions(*editor, 1), QStringList({"Coffee", "Tea", ""}));
    EXPECT_TRUE(editor->cmdHkGroup[1][0]->picture().isNull())
        << "a key that gave its picture away shows none";

    // By touch: a key held by a finger is dragged, one moved at once is not.
    // Deleting the device takes it out of Qt's list again.
    const std::unique_ptr<QPointingDevice> device(QTest::createTouchDevice());
    QPointingDevice *screen = device.get();
    QWidget *window = editor->window();
    const auto at = [&](MyButton *key) { return key->mapTo(window, key->rect().center()); };

    // Moved at once, the finger slips: nothing moves.
    QTest::touchEvent(window, screen).press(0, at(editor->cmdHkGroup[1][0]), window);
    QTest::touchEvent(window, screen).move(0, at(editor->cmdHkGroup[1][1]), window);
    QTest::touchEvent(window, screen).release(0, at(editor->cmdHkGroup[1][1]), window);
    EXPECT_EQ(captions(*editor, 1), QStringList({"Coffee", "Tea", ""}));

    QTest::touchEvent(window, screen).press(0, at(editor->cmdHkGroup[1][0]), window);
    QTest::qWait(QApplication::startDragTime() + 100); // held
    QTest::touchEvent(window, screen).move(0, at(editor->cmdHkGroup[2][0]), window);
    EXPECT_TRUE(editor->keyDrag->dragging());
    QTest::touchEvent(window, screen).release(0, at(editor->cmdHkGroup[2][0]), window);
    EXPECT_EQ(captions(*editor, 1), QStringList({"Cake", "Tea", ""}));
    EXPECT_EQ(captions(*editor, 2), QStringList({"Coffee", "", ""}));
    EXPECT_TRUE(modal.shown.isEmpty()) << "the drop opened no key";
}

TEST_F(SafeEditTest, AcceptAfterAnotherStationSavedOrRemovedTheSetAsksAndKeepsItsFile)
{
    auto editor = openEditor();
    changeKey(*editor, 1, 1, "Espresso");
    const QByteArray theirs = "[SET]Lunch\r\n[GROUP]1[CAPTION]Breakfast[COLOR]RED\r\n";
    writeDataFile("HKSET01.SDF", theirs);

    dialogs.answer(vbNo);
    QTest::mouseClick(editor->cmdOkCancel[0], Qt::LeftButton);
    EXPECT_TRUE(oneBox(boxes(),
                       "Hot keys set 01 was saved at another station since you opened it here.\r\r"
                       "Yes: save your changes over the other station's.\r"
                       "No: save nothing now; your changes stay on the screen.\r\r"
                       "The other station's file is kept in Versions.",
                       vbYesNo + vbExclamation + vbDefaultButton2, "Changed at Another Station"));
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(readDataFile("HKSET01.SDF"), theirs);
    ASSERT_EQ(versions::list("HKSET01.SDF").size(), 1);
    EXPECT_EQ(versions::bytesOf(versions::list("HKSET01.SDF").first()), theirs);

    dialogs.answer(vbYes);
    QTest::mouseClick(editor->cmdOkCancel[0], Qt::LeftButton);
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_TRUE(readDataFile("HKSET01.SDF").contains("[CAPTION]Espresso"));
    EXPECT_EQ(versions::list("HKSET01.SDF").size(), 1) << "the other station's file is kept once";

    // Removed there: saved back only when the user says so.
    editor = openEditor();
    const QByteArray mine = readDataFile("HKSET01.SDF");
    QFile::remove(dataPath() + "/HKSET01.SDF");
    for (const int answer : {vbNo, vbYes}) {
        dialogs.answer(answer);
        QTest::keyClick(editor->cmdHkGroup[1][0], Qt::Key_F10);
        EXPECT_TRUE(
            boxTexts().value(0).startsWith("Hot keys set 01 was removed at another station"));
        EXPECT_EQ(QFile::exists(dataPath() + "/HKSET01.SDF"), answer == vbYes);
    }
    EXPECT_EQ(readDataFile("HKSET01.SDF"), mine);
}
