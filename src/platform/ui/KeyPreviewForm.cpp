#include "platform/ui/KeyPreviewForm.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/NativeShell.h"
#include "platform/ui/QtDialogs.h"
#include <QKeyEvent>
#include <QPointer>

namespace platform {

KeyPreviewForm::KeyPreviewForm(QWidget *parent) : QDialog(parent) {}

void KeyPreviewForm::Form_KeyDown(int &, int) {}
void KeyPreviewForm::Form_KeyPress(int &) {}

void KeyPreviewForm::mpStandardKeys(int &KeyCode, const std::function<void()> &accept,
                                    const std::function<void()> &cancel,
                                    const std::function<void()> &help)
{
    const std::function<void()> *action = nullptr;
    if (KeyCode == vbKeyF10)
        action = &accept;
    else if (KeyCode == vbKeyEscape)
        action = &cancel;
    else if (KeyCode == vbKeyF1)
        action = &help;
    if (!action || !*action)
        return;
    KeyCode = 0;
    (*action)();
}

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    static QtDialogs dialogs;
    static NativeShell shell;
    DialogPort::registerProduction(&dialogs);
    ShellPort::registerProduction(&shell);
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !receiver->isWidgetType())
        return QApplication::notify(receiver, event);
    auto *form = qobject_cast<KeyPreviewForm *>(static_cast<QWidget *>(receiver)->window());
    if (!form)
        return QApplication::notify(receiver, event);

    QPointer<QObject> target(receiver);
    auto *key = static_cast<QKeyEvent *>(event);
    int code = legacyKeyCode(*key);
    if (code) {
        form->Form_KeyDown(code, legacyShift(key->modifiers()));
        if (code == 0 || !target)
            return true;
    }
    const int ascii = legacyKeyAscii(*key);
    if (ascii == 0)
        return QApplication::notify(receiver, event);
    int changed = ascii;
    form->Form_KeyPress(changed);
    if (changed == 0 || !target)
        return true;
    if (changed == ascii)
        return QApplication::notify(receiver, event);
    // The form replaced the character (upper-casing, say): the control gets the new one.
    const QChar c(static_cast<char16_t>(changed));
    int newKey = key->key();
    if (c.isLetterOrNumber() && c.unicode() < 128)
        newKey = c.toUpper().unicode();
    QKeyEvent replaced(QEvent::KeyPress, newKey, key->modifiers(), QString(c), key->isAutoRepeat());
    return QApplication::notify(receiver, &replaced);
}

} // namespace platform
