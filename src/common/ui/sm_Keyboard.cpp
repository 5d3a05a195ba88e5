#include "common/ui/sm_Keyboard.h"
#include "common/Conversions.h"
#include <QPushButton>

namespace {

// The key code a caption names, 0 when it names none.
int functionKeyOf(const QString &caption)
{
    if (!caption.startsWith('F') || conv::Val(caption.mid(1)) == 0)
        return 0;
    int end = caption.indexOf(' ');
    if (end < 0)
        end = caption.indexOf('\r');
    if (end < 0)
        end = caption.indexOf('\n');
    if (end < 0)
        return 0;
    return static_cast<int>(conv::Val(caption.mid(1, end - 1))) + 111;
}

} // namespace

void gpKey_pressButton(QWidget *oForm, int &iKeyCode, int iShift)
{
    if (iShift != 0)
        return;
    for (QPushButton *button : oForm->findChildren<QPushButton *>()) {
        if (button->metaObject() != &QPushButton::staticMetaObject || !button->isEnabled())
            continue;
        const int code = functionKeyOf(button->text());
        if (code != 0 && code == iKeyCode) {
            iKeyCode = 0;
            button->click();
            return;
        }
    }
}
