#pragma once

// What the tests of the screens share: the forms, the fixtures and the ways in.
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "lookup/model/InventoryLookup.h"
#include "platform/Dialogs.h"
#include "platform/ui/MSFlexGrid.h"
#include "screens/frmHotKey_Define.h"
#include "screens/frmHotKeys.h"
#include "screens/frmSetCheck.h"
#include "screens/frmSpecialKey_edit.h"
#include "screens/frmSpecialKeys.h"
#include "screens/posButtons.h"
#include "shell/frmMain.h"
#include "support/HkTest.h"
#include "support/OneBox.h"
#include "support/SetLines.h"
#include "support/StoreDb.h"
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <memory>

using namespace platform;
using namespace testing_support;

namespace testing_support {

// The editor on set `number`, shown as the set list opens it.
inline std::unique_ptr<frmHotKeys> openEditor(const QString &number = "01")
{
    auto editor = std::make_unique<frmHotKeys>();
    editor->HotKeySet = number;
    editor->fileName = "HKSET" + number + ".SDF";
    editor->Form_Load();
    editor->setWindowState(Qt::WindowNoState);
    editor->resize(900, 700);
    editor->show();
    return editor;
}

// The special keys screen, or the coupons screen.
inline std::unique_ptr<frmSpecialKeys> openKeys(bool coupons)
{
    gbCouponKeys = coupons;
    gbSpecialKeys = !coupons;
    auto screen = std::make_unique<frmSpecialKeys>();
    screen->Form_Load();
    screen->show();
    return screen;
}

// The set list, as the program opens it.
inline std::unique_ptr<frmMain> openSetList()
{
    auto list = std::make_unique<frmMain>();
    list->Form_Load();
    list->show();
    return list;
}

// The key pictures' folder of `dataPath`, made and named as the program finds it.
inline void usePictures(const QString &dataPath)
{
    gsHotKeyPicturePath = dataPath + "/pictures/HotKeys/";
    QDir(dataPath).mkpath("pictures/HotKeys");
}

// A picture of `width` x `height` in the key pictures' folder.
inline void savePicture(const QString &name, int width = 8, int height = 8)
{
    QImage(width, height, QImage::Format_RGB32).save(gsHotKeyPicturePath + name);
}

// The line of key `k` in `file`, the first one, with its line end; "?" when there is none.
inline QByteArray keyLineIn(const QByteArray &file, int k)
{
    for (const QByteArray &line : file.split('\n'))
        if (line.startsWith("[BUTTON]" + QByteArray::number(k) + "[CAPTION]"))
            return line + '\n';
    return "?";
}

} // namespace testing_support
