#pragma once
#include <QApplication>
#include <QDialog>

namespace platform {

// The base of every form: it sees the keys of all its controls before they do,
// with the legacy key codes. Setting the code to 0 consumes the key.
class KeyPreviewForm : public QDialog {
    Q_OBJECT
public:
    explicit KeyPreviewForm(QWidget *parent = nullptr);

    virtual void Form_KeyDown(int &KeyCode, int Shift);
    virtual void Form_KeyPress(int &KeyAscii);
};

// The application object: routes key presses to the form that holds the receiver.
class Application : public QApplication {
    Q_OBJECT
public:
    Application(int &argc, char **argv);
    bool notify(QObject *receiver, QEvent *event) override;
};

} // namespace platform
