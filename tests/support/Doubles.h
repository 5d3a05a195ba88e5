#pragma once
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include <QHash>
#include <QList>
#include <QQueue>
#include <QString>
#include <QStringList>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

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
    QList<Box> take() { return std::exchange(m_boxes, {}); }

    int msgBox(const QString &text, int style, const QString &title) override
    {
        // A box with only OK needs no script; the test reads it from take().
        const bool question = (style & 7) != platform::vbOKOnly;
        const int fallback = question ? platform::vbCancel : platform::vbOK;
        return next({"msg", style, title, text}, question, QString::number(fallback)).toInt();
    }
    QString inputBox(const QString &prompt, const QString &title, const QString &) override
    {
        return next({"input", 0, title, prompt});
    }
    QString openFileName(const QString &title, const QString &folder,
                         const QString &filter) override
    {
        return openFileNameFilter(title, folder, filter, 0);
    }
    QString openFileNameFilter(const QString &title, const QString &folder, const QString &filter,
                               int selectedFilter) override
    {
        return next({"open", 0, title, folder + '|' + filter, selectedFilter});
    }
    QString saveFileName(const QString &title, const QString &path, const QString &filter) override
    {
        return next({"save", 0, title, path + '|' + filter});
    }
    QString folderName(const QString &title, const QString &start) override
    {
        return next({"folder", 0, title, start});
    }

private:
    QString next(const Box &box, bool needed = true, const QString &fallback = {})
    {
        m_boxes << box;
        if (!m_answers.isEmpty())
            return m_answers.dequeue()();
        if (needed)
            ADD_FAILURE() << "unexpected " << box.kind.toStdString()
                          << " box: " << box.title.toStdString() << " / " << box.text.toStdString();
        return fallback;
    }

    QList<Box> m_boxes;
    QQueue<std::function<QString()>> m_answers;
};

// The modal forms a test drives: the driver registered for a form's class acts
// on the form and closes it before the show returns. The screens' support shows
// the forms through it.
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
    Driver next(const QString &className)
    {
        shown << className;
        QList<Driver> &queue = m_drivers[className];
        if (queue.isEmpty())
            ADD_FAILURE() << "no driver for the modal form " << className.toStdString();
        return queue.isEmpty() ? Driver() : queue.takeFirst();
    }
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
    bool openUrl(const QString &url) override
    {
        urls << url;
        return true;
    }
    QStringList printerNames() override { return printers; }
    QString defaultPrinterName() override { return printers.value(0); }
    QList<platform::ProcessEntry> processes() override { return processList; }
    QList<platform::WindowEntry> windows() override { return windowList; }
    bool pingWindow(quintptr window, int) override
    {
        pinged << window;
        return pingAnswers-- > 0;
    }
    void setTopMost(QWidget *, bool onTop) override { topMost << onTop; }
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
