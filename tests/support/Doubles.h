#pragma once
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include <QHash>
#include <QList>
#include <QQueue>
#include <QString>
#include <QStringList>
#include <functional>

class QDialog;

namespace testing_support {

// One box as the user would have seen it.
struct Box {
    QString kind; // "msg", "input", "open", "save", "folder"
    int style = 0;
    QString title;
    QString text;
    int selectedFilter = 0; // of an "open" box that chose one
};

// Records every box and answers from a script. A box that needs an answer and
// has none fails the test and gets a cancel; it never blocks.
class ScriptedDialogs : public platform::Dialogs {
public:
    void answer(int result) { answerText(QString::number(result)); }
    void answerText(const QString &text)
    {
        m_answers.enqueue([text] { return text; });
    }
    // An answer worked out when the box shows, for a test that changes the world meanwhile.
    void answerBy(std::function<int()> f)
    {
        m_answers.enqueue([f] { return QString::number(f()); });
    }
    // The boxes shown since the last call.
    QList<Box> take();
    bool idle() const { return m_boxes.isEmpty() && m_answers.isEmpty(); }

    int msgBox(const QString &text, int style, const QString &title) override;
    QString inputBox(const QString &prompt, const QString &title,
                     const QString &defaultText) override;
    QString openFileName(const QString &title, const QString &folder,
                         const QString &filter) override;
    QString openFileNameFilter(const QString &title, const QString &folder, const QString &filter,
                               int selectedFilter) override;
    QString saveFileName(const QString &title, const QString &path, const QString &filter) override;
    QString folderName(const QString &title, const QString &start) override;

private:
    QString next(const Box &box, bool needed, const QString &fallback);

    QList<Box> m_boxes;
    QQueue<std::function<QString()>> m_answers;
};

// The modal forms a test drives: the driver registered for a form's class acts
// on the form and closes it before the show returns. The screens' support shows
// the forms through it (ModalDouble).
class ScriptedModal {
public:
    using Driver = std::function<void(QDialog &)>;
    void drive(const QString &className, Driver driver) { m_drivers[className] << driver; }
    // Drives the next form of class Form, handed over as that class.
    template <class Form> void on(std::function<void(Form &)> act)
    {
        drive(Form::staticMetaObject.className(),
              [act](QDialog &d) { act(static_cast<Form &>(d)); });
    }
    // Records the form as shown and hands out its next driver; none fails the test.
    Driver next(const QString &className);
    QStringList shown;

private:
    QHash<QString, QList<Driver>> m_drivers;
};

struct ProcessExit {
    int code;
};

// The code `f` ends the process with, or -1 when it returns.
inline int exitCode(const std::function<void()> &f)
{
    try {
        f();
    } catch (const ProcessExit &e) {
        return e.code;
    }
    return -1;
}

class RecordingShell : public platform::Shell {
public:
    bool openUrl(const QString &url) override;
    QStringList printerNames() override { return printers; }
    QString defaultPrinterName() override { return printers.value(0); }
    QList<platform::ProcessEntry> processes() override { return processList; }
    QList<platform::WindowEntry> windows() override { return windowList; }
    bool pingWindow(quintptr window, int timeoutMs) override;
    void setTopMost(QWidget *window, bool onTop) override;
    QString computerName() override { return "TESTPC"; }
    // Throws, so that nothing runs after the end in a test either.
    [[noreturn]] void exitProcess(int code) override { throw ProcessExit{code}; }

    QStringList urls;
    QStringList printers;
    QList<platform::ProcessEntry> processList;
    QList<platform::WindowEntry> windowList;
    QList<quintptr> pinged;
    int pingAnswers = 0; // how many pings answer true before the window is gone
    QList<bool> topMost;
};

} // namespace testing_support
