#pragma once

#include "hotkeys/hkeyGlobal.h"
#include "screens/frmHotKeys.h"
#include "screens/frmSpecialKeys.h"
#include <memory>

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

// The line of key `k` in `file`, the first one, with its line end; "?" when there is none.
inline QByteArray keyLineIn(const QByteArray &file, int k)
{
    for (const QByteArray &line : file.split('\n'))
        if (line.startsWith("[BUTTON]" + QByteArray::number(k) + "[CAPTION]"))
            return line + '\n';
    return "?";
}

} // namespace testing_support
