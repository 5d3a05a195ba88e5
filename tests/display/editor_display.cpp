#include "display/ProgramTest.h"
#include "lookup/frm_Lookup.h"
#include "screens/frmButtonSet_Find.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/frmVersions.h"
#include "screens/posButtons.h"
#include <QFileDialog>
#include <QListWidget>
#include <QScreen>

using namespace display;

using EditorOnDisplay = ProgramTest;

// A new set gets a link from the set finder, a picture and a column title. Then
// the main menu: every window of a stack is drawn, whichever lies over which (the
// set list under the editor under the key dialog under a box, and the lookup over
// all of them, which opens maximised each time: a passing size once undid that);
// un-maximised the editor fits the screen with its frame; a drag swaps, undo and
// redo go back and forth, a drag with Ctrl copies, and the versions screen takes
// the accepted change back.
TEST_F(EditorOnDisplay, ANewSetThenAStackOfWindowsDragUndoRedoAndTheVersionsScreen)
{
    const QByteArray asSeeded = readDataFile("HKSET01.SDF");
    QPointer<frmHotKeys> editor;
    QString first, second;
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdEdit[0]); });
    robot.on<frmHotKeys>([&](frmHotKeys &form) {
        editor = &form;
        expectMaximized(&form);
        robot.shot("editor-new-set", &form);
        Robot::retype(form.txtButtonSet, "Display Test");
        Robot::click(form.cmdHkGroup[2][0]);
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        robot.shot("key-dialog", &key);
        Robot::key("F4");
    });
    robot.on<frmButtonSet_Find>([&](frmButtonSet_Find &finder) {
        robot.shot("set-finder", &finder);
        Robot::key("Down F10"); // the second set, Hot Drinks
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        EXPECT_EQ(key.txtEdit[0]->text(), "Hot Drinks");
        Robot::click(key.cmdBrowsePath);
    });
    robot.on<QFileDialog>([&](QFileDialog &files) {
        EXPECT_EQ(files.directory().absolutePath(), dataPath() + "/pictures/HotKeys");
        robot.shot("picture-file-dialog", &files);
        Robot::type("coffee.jpg");
        Robot::key("Return");
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        EXPECT_EQ(key.txtEdit[3]->text(), "coffee.jpg");
        EXPECT_FALSE(key.picPreview->picture().isNull()) << "the key as it will look";
        robot.shot("key-dialog-picture", &key);
        Robot::key("F10");
    });
    robot.on<frmHotKeys>([&](frmHotKeys &form) { Robot::click(form.cmdEdit_Group[2]); });
    robot.until(
        "the column title panel", [&] { return editor->fraGroupEdit->isVisible(); },
        [&] {
            Robot::key("ctrl+a");
            Robot::type("Links");
        });
    robot.until(
        "the typed column title", [&] { return editor->txtEdit->text() == "Links"; },
        [&] { Robot::click(editor->cmdGroup_OkCancel[0]); });
    robot.until(
        "the column title on the editor",
        [&] { return editor->cmdEdit_Group[2]->caption() == "Links"; },
        [&] {
            robot.shot("editor-filled", editor);
            Robot::click(editor->cmdOkCancel[0]);
        });
    robot.on<frmMain>([&](frmMain &main) {
        Robot::clickCell(main.fgrdItems, 1, 1); // Main Menu
        Robot::click(main.cmdEdit[1]);
    });
    robot.on<frmHotKeys>([&](frmHotKeys &form) {
        editor = &form;
        robot.shot("stack-1-editor");
        Robot::click(form.cmdHkGroup[3][2]);
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        robot.shot("stack-2-key-dialog");
        Robot::click(key.txtEdit[0]);
        Robot::type("Label only");
        Robot::key("F10");
    });
    robot.on<QMessageBox>([&](QMessageBox &box) {
        robot.shot("stack-3-box");
        Robot::click(box.button(QMessageBox::Ok));
    });
    // The lookup opens maximised each time: a passing size once undid that.
    QPointer<frm_Lookup> lookup;
    for (int open = 0; open < 3; ++open) {
        robot.on<frmHotKey_Define>([](frmHotKey_Define &) { Robot::key("F3"); });
        robot.on<frm_Lookup>([&, open](frm_Lookup &form) {
            lookup = &form;
            expectMaximized(&form);
            if (open < 2)
                return Robot::key("Escape");
            robot.shot("stack-4-lookup");
            Robot::type("COFFEE S");
        });
    }
    robot.until(
        "the lookup on Coffee Small",
        [&] {
            return lookup->fgrdItems->TextMatrix(lookup->fgrdItems->Row(), 0) == "COFFEE SMALL";
        },
        [&] { Robot::key("F10"); });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        EXPECT_EQ(key.txtEdit[1]->text(), "0001234.5");
        EXPECT_EQ(key.txtEdit[0]->text(), "Label only") << "a typed label stays";
        robot.shot("stack-5-key-dialog-after-lookup");
        Robot::key("F10");
    });
    const auto shows = [&](const QString &top, const QString &next) {
        return editor->cmdHkGroup[1][0]->caption() == top &&
               editor->cmdHkGroup[2][0]->caption() == next;
    };
    robot.on<frmHotKeys>([&](frmHotKeys &form) {
        robot.shot("stack-6-editor-after-dialogs");
        form.showNormal();
        robot.settle(500);
        EXPECT_TRUE(form.screen()->availableGeometry().contains(form.frameGeometry()))
            << "frame " << form.frameGeometry() << " on a free area "
            << form.screen()->availableGeometry();
        robot.shot("editor-un-maximised");
        first = form.cmdHkGroup[1][0]->caption();
        second = form.cmdHkGroup[2][0]->caption();
        Robot::drag(form.cmdHkGroup[1][0], form.cmdHkGroup[2][0]);
    });
    robot.until(
        "the two keys swapped", [&] { return shows(second, first); },
        [&] {
            robot.shot("editor-after-drag", editor);
            Robot::key("ctrl+z");
        });
    robot.until(
        "the swap taken back", [&] { return shows(first, second); }, [&] { Robot::key("ctrl+y"); });
    robot.until(
        "the swap made again", [&] { return shows(second, first); },
        [&] { Robot::drag(editor->cmdHkGroup[1][0], editor->cmdHkGroup[4][7], "ctrl"); });
    robot.until(
        "the key copied to an empty key",
        [&] { return editor->cmdHkGroup[4][7]->caption() == second; },
        [&] { Robot::click(editor->cmdOkCancel[0]); });
    robot.on<frmMain>([&](frmMain &) {
        robot.shot("stack-7-set-list");
        const QByteArray accepted = readDataFile("HKSET01.SDF");
        const QByteArray copied = "[CAPTION]" + second.toLatin1() + "[ITEM]";
        EXPECT_TRUE(
            accepted.contains("[BUTTON]3[CAPTION]Label only[ITEM]0001234.5[ICON][IDSELECT]No"));
        EXPECT_EQ(accepted.count(copied), 2) << accepted.toStdString();
        EXPECT_LT(accepted.indexOf("[GROUP]4"), accepted.lastIndexOf(copied));
        Robot::key("v");
    });
    robot.on<frmVersions>([&](frmVersions &form) {
        robot.shot("versions", &form);
        Robot::click(form.cmdRestore);
    });
    robot.answer("Set 01 will be put back as it was before", QMessageBox::Yes);
    robot.on<frmVersions>([](frmVersions &) { Robot::key("Escape"); });
    robot.on<frmMain>([&](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    const QByteArray set = readDataFile("HKSET13.SDF");
    EXPECT_TRUE(set.startsWith("[SET]Display Test\r\n"));
    EXPECT_TRUE(set.contains("[GROUP]2[CAPTION]Links"));
    EXPECT_TRUE(
        set.contains("[BUTTON]1[CAPTION]Hot Drinks[ITEM][ICON]coffee.jpg[IDSELECT]No[LINKSET]2"));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), asSeeded);
}
