#pragma once
#include <QApplication>
#include <QDialog>
#include <functional>

namespace platform {

// The base of every form: it sees the keys of all its controls before they do,
// with the legacy key codes. Setting the code to 0 consumes the key.
class KeyPreviewForm : public QDialog {
    Q_OBJECT
public:
    explicit KeyPreviewForm(QWidget *parent = nullptr);

    virtual void Form_KeyDown(int &KeyCode, int Shift);
    virtual void Form_KeyPress(int &KeyAscii);

protected:
    // F10 accepts, Esc cancels and F1 helps on most forms, whatever state their
    // buttons are in; a handled key is consumed. An empty action leaves its key.
    void mpStandardKeys(int &KeyCode, const std::function<void()> &accept,
                        const std::function<void()> &cancel,
                        const std::function<void()> &help = {});
};

// The application object: routes key presses to the form that holds the receiver,
// and registers the boxes and the shell of a program with screens.
class Application : public QApplication {
    Q_OBJECT
public:
    Application(int &argc, char **argv);
    bool notify(QObject *receiver, QEvent *event) override;
};

} // namespace platform
