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
// un-maximised the editor fits the screen with its frame; a drag swaps, a drag
// with Ctrl copies, undo and redo go back and forth, and the versions screen takes
// the accepted change back.
TEST_F(EditorOnDisplay, ANewSetThenAStackOfWindowsDragUndoRedoAndTheVersionsScreen)
{
    const QByteArray asSeeded = readDataFile("HKSET01.SDF");
    QPointer<frmHotKeys> editor;
    QString first, second;
    QRect normal, area;
    robot.on<frmMain>([&](frmMain &main) { Robot::click(main.cmdEdit[0]); });
    robot.on<frmHotKeys>([&](frmHotKeys &form) {
        editor = &form;
        EXPECT_EQ(form.txtButtonSet->text(), "New Set 13");
        expectMaximized(&form);
        robot.shot(&form, "editor-new-set");
        Robot::retype(form.txtButtonSet, "Display Test");
        Robot::click(form.cmdHkGroup[2][0]);
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        robot.shot(&key, "key-dialog");
        Robot::key("F4");
    });
    robot.on<frmButtonSet_Find>([&](frmButtonSet_Find &finder) {
        EXPECT_EQ(finder.lstItems->count(), 12);
        robot.shot(&finder, "set-finder");
        Robot::key("Down F10"); // the second set, Hot Drinks
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        EXPECT_EQ(key.txtEdit[0]->text(), "Hot Drinks");
        Robot::click(key.cmdBrowsePath);
    });
    robot.on<QFileDialog>([&](QFileDialog &files) {
        EXPECT_EQ(files.directory().absolutePath(), dataPath() + "/pictures/HotKeys");
        robot.shot(&files, "picture-file-dialog");
        Robot::type("coffee.jpg");
        Robot::key("Return");
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        EXPECT_EQ(key.txtEdit[3]->text(), "coffee.jpg");
        EXPECT_FALSE(key.picPreview->picture().isNull()) << "the key as it will look";
        EXPECT_EQ(key.lblPicture->text(), "");
        robot.shot(&key, "key-dialog-picture");
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
            robot.shot(editor, "editor-filled");
            Robot::click(editor->cmdOkCancel[0]);
        });
    robot.on<frmMain>([&](frmMain &main) {
        EXPECT_EQ(main.fgrdItems->TextMatrix(13, 1), "Display Test");
        Robot::clickCell(main.fgrdItems, 1, 1); // Main Menu
        Robot::click(main.cmdEdit[1]);
    });
    robot.on<frmHotKeys>([&](frmHotKeys &form) {
        editor = &form;
        robot.screenShot("stack-1-editor");
        Robot::click(form.cmdHkGroup[3][2]);
    });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        robot.screenShot("stack-2-key-dialog");
        Robot::click(key.txtEdit[0]);
        Robot::type("Label only");
        Robot::key("F10");
    });
    robot.on<QMessageBox>([&](QMessageBox &box) {
        EXPECT_EQ(box.text(), "Button needs an Item or a Link");
        robot.screenShot("stack-3-box");
        Robot::click(box.button(QMessageBox::Ok));
    });
    for (int i = 0; i < 8; ++i) {
        robot.on<frmHotKey_Define>([&, i](frmHotKey_Define &key) {
            if (i > 0)
                return Robot::key("F3"); // xdotool waits forever to move where it already is
            robot.screenShot("stack-4-key-dialog-again");
            Robot::click(key.cmdFind[0]);
        });
        robot.on<frm_Lookup>([&, i](frm_Lookup &lookup) {
            SCOPED_TRACE("open " + std::to_string(i + 1));
            expectMaximized(&lookup);
            if (i == 0)
                robot.screenShot("stack-5-lookup");
            Robot::key("Escape");
        });
    }
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &) { Robot::key("F3"); });
    robot.on<frm_Lookup>([&](frm_Lookup &lookup) {
        robot.shot(&lookup, "item-lookup");
        Robot::type("COFFEE S");
    });
    robot.until(
        "the lookup on Coffee Small",
        [&] {
            auto *lookup = Robot::modal<frm_Lookup>();
            return lookup &&
                   lookup->fgrdItems->TextMatrix(lookup->fgrdItems->Row(), 0) == "COFFEE SMALL";
        },
        [&] { Robot::key("F10"); });
    robot.on<frmHotKey_Define>([&](frmHotKey_Define &key) {
        EXPECT_EQ(key.txtEdit[1]->text(), "0001234.5");
        EXPECT_EQ(key.txtEdit[0]->text(), "Label only") << "a typed label stays";
        robot.screenShot("stack-6-key-dialog-after-lookup");
        Robot::key("F10");
    });
    const auto shows = [&](const QString &top, const QString &next) {
        return editor->cmdHkGroup[1][0]->caption() == top &&
               editor->cmdHkGroup[2][0]->caption() == next;
    };
    robot.on<frmHotKeys>([&](frmHotKeys &form) {
        robot.screenShot("stack-7-editor-after-dialogs");
        form.showNormal();
        robot.settle(500);
        normal = form.frameGeometry();
        area = form.screen()->availableGeometry();
        robot.screenShot("editor-un-maximised");
        first = form.cmdHkGroup[1][0]->caption();
        second = form.cmdHkGroup[2][0]->caption();
        Robot::drag(form.cmdHkGroup[1][0], form.cmdHkGroup[2][0]);
    });
    robot.until(
        "the two keys swapped", [&] { return shows(second, first); },
        [&] {
            robot.shot(editor, "editor-after-drag");
            Robot::key("ctrl+z");
        });
    robot.until(
        "the swap taken back", [&] { return shows(first, second); }, [&] { Robot::key("ctrl+y"); });
    robot.until(
        "the swap made again", [&] { return shows(second, first); },
        [&] { Robot::click(editor->cmdUndo); });
    robot.until(
        "the swap taken back by its button", [&] { return shows(first, second); },
        [&] { Robot::drag(editor->cmdHkGroup[1][0], editor->cmdHkGroup[4][7], "ctrl"); });
    robot.until(
        "the key copied to an empty key",
        [&] { return editor->cmdHkGroup[4][7]->caption() == first; },
        [&] { Robot::click(editor->cmdOkCancel[0]); });
    QByteArray accepted;
    robot.on<frmMain>([&](frmMain &) {
        robot.screenShot("stack-8-set-list");
        accepted = readDataFile("HKSET01.SDF");
        Robot::key("v");
    });
    robot.on<frmVersions>([&](frmVersions &form) {
        EXPECT_EQ(form.lstVersions->count(), 1);
        robot.shot(&form, "versions");
        Robot::click(form.cmdRestore);
    });
    robot.answer("Set 01 will be put back as it was before", QMessageBox::Yes);
    robot.on<frmVersions>([](frmVersions &) { Robot::key("Escape"); });
    robot.on<frmMain>([&](frmMain &) { Robot::key("Escape"); });
    EXPECT_EQ(runProgram(), 0);
    const QByteArray set = readDataFile("HKSET13.SDF");
    EXPECT_TRUE(set.startsWith("[SET]Display Test\r\n")) << set.toStdString();
    EXPECT_TRUE(set.contains("[GROUP]2[CAPTION]Links")) << set.toStdString();
    EXPECT_TRUE(
        set.contains("[BUTTON]1[CAPTION]Hot Drinks[ITEM][ICON]coffee.jpg[IDSELECT]No[LINKSET]2"))
        << set.toStdString();
    EXPECT_TRUE(area.contains(normal)) << "frame " << normal << " on a free area " << area;
    EXPECT_LT(normal.height(), area.height());
    EXPECT_TRUE(accepted.contains("[BUTTON]3[CAPTION]Label only[ITEM]0001234.5[ICON][IDSELECT]No"));
    const QByteArray firstLine = "[CAPTION]" + first.toLatin1() + "[ITEM]";
    EXPECT_EQ(accepted.count(firstLine), 2) << accepted.toStdString();
    EXPECT_LT(accepted.indexOf("[GROUP]4"), accepted.lastIndexOf(firstLine));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), asSeeded);
}
