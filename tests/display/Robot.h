#pragma once
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMessageBox>
#include <QPointer>
#include <QRect>
#include <QStringList>
#include <QTimer>
#include <deque>
#include <functional>

namespace platform {
class MSFlexGrid;
}

namespace display {

// Works the program as a user at the display does. Each step waits until the
// window it needs is the active modal window, shown, exposed and painted, then
// acts on it with real input through the X server and returns; the program's
// own modal loops carry on from there. A step that waits longer than the limit
// fails the test and closes every dialog, so the program ends instead of hanging.
class Robot : public QObject {
public:
    Robot();

    // When a form of class Form is the active modal window.
    template <class Form, class Act> void on(Act act)
    {
        m_steps.push_back({Form::staticMetaObject.className(),
                           [](QWidget *w) { return qobject_cast<Form *>(w) != nullptr; },
                           [act](QWidget *w) { act(*static_cast<Form *>(w)); }});
    }
    // Presses `button` on the box whose text holds `text`.
    void answer(const QString &text, QMessageBox::StandardButton button);
    // When a condition holds, whatever window is up.
    void until(
        const QString &what, std::function<bool()> condition, std::function<void()> act = [] {})
    {
        m_steps.push_back({what, [condition](QWidget *) { return condition(); },
                           [act](QWidget *) { act(); }, false});
    }

    void start()
    {
        m_waiting.start();
        m_timer.start();
    }
    // Stops; steps never reached and windows left open are failures.
    void stop();
    QStringList failures;

    // Real input through the X server.
    static void click(QWidget *widget) { click(widget, widget->rect().center()); }
    static void click(QWidget *widget, QPoint at, int button = 1, int clicks = 1);
    // A cell of the grid, its row as TextMatrix counts it.
    static void clickCell(platform::MSFlexGrid *grid, int row, int col, int button = 1,
                          int clicks = 1);
    // Presses on one widget, moves in steps and lets go over the other, with `held`
    // (xdotool key names, "ctrl") held down meanwhile.
    static void drag(QWidget *from, QWidget *to, const QString &held = QString());
    // Key names as xdotool knows them: "F10", "Escape".
    static void key(const QString &keys)
    {
        run("xdotool", QStringList{"key", "--delay", "20"} + keys.split(' '));
    }
    static void type(const QString &text) { run("xdotool", {"type", "--delay", "20", text}); }
    // Clicks the box and types over what it holds.
    static void retype(QWidget *box, const QString &text);
    static QString run(const QString &program, const QStringList &args);

    // The window's inside (or the whole screen) as the screen shows it, saved as
    // NAME.png (names are unique across the tests). A window of the program in it
    // that looks blank (a few colours, or a quarter of it black) fails the test.
    void shot(const QString &name, QWidget *window = nullptr);
    // The window's inside where the X server places it.
    static QRect placeOf(QWidget *window);
    // Lets the program paint and settle without running a step.
    void settle(int ms = 150);

private:
    struct Step {
        QString what;
        std::function<bool(QWidget *)> match;
        std::function<void(QWidget *)> act;
        bool window = true; // else a condition, whatever window is up
    };
    void poll();
    void fail(const QString &why);
    // Grabs the area of the screen and saves it as NAME.png.
    static QImage grab(QRect area, const QString &name);
    void checkBlank(const QImage &image, const QString &what);

    QTimer m_timer;
    QElapsedTimer m_waiting;
    std::deque<Step> m_steps;
    QPointer<QWidget> m_seen;
    bool m_activated = false; // the awaited window was asked for the focus once
    bool m_quiet = false;
    bool m_failed = false;
};

} // namespace display
