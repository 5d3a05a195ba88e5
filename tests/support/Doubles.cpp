#include "support/Doubles.h"
#include <gtest/gtest.h>

namespace testing_support {

QList<Box> ScriptedDialogs::take()
{
    QList<Box> boxes;
    boxes.swap(m_boxes);
    return boxes;
}

QString ScriptedDialogs::next(const Box &box, bool needed, const QString &fallback)
{
    m_boxes << box;
    if (!m_answers.isEmpty())
        return m_answers.dequeue()();
    if (needed)
        ADD_FAILURE() << "unexpected " << box.kind.toStdString()
                      << " box: " << box.title.toStdString() << " / " << box.text.toStdString();
    return fallback;
}

int ScriptedDialogs::msgBox(const QString &text, int style, const QString &title)
{
    // A box with only OK needs no script; the test reads it from take().
    const bool question = (style & 7) != platform::vbOKOnly;
    const QString fallback = QString::number(question ? platform::vbCancel : platform::vbOK);
    return next({"msg", style, title, text}, question, fallback).toInt();
}

QString ScriptedDialogs::inputBox(const QString &prompt, const QString &title, const QString &)
{
    return next({"input", 0, title, prompt}, true, QString());
}

QString ScriptedDialogs::openFileName(const QString &title, const QString &folder,
                                      const QString &filter)
{
    return next({"open", 0, title, folder + '|' + filter}, true, QString());
}

QString ScriptedDialogs::openFileNameFilter(const QString &title, const QString &folder,
                                            const QString &filter, int selectedFilter)
{
    return next({"open", 0, title, folder + '|' + filter, selectedFilter}, true, QString());
}

QString ScriptedDialogs::saveFileName(const QString &title, const QString &path,
                                      const QString &filter)
{
    return next({"save", 0, title, path + '|' + filter}, true, QString());
}

QString ScriptedDialogs::folderName(const QString &title, const QString &start)
{
    return next({"folder", 0, title, start}, true, QString());
}

ScriptedModal::Driver ScriptedModal::next(const QString &className)
{
    shown << className;
    QList<Driver> &queue = m_drivers[className];
    if (queue.isEmpty()) {
        ADD_FAILURE() << "no driver for the modal form " << className.toStdString();
        return {};
    }
    return queue.takeFirst();
}

bool RecordingShell::openUrl(const QString &url)
{
    urls << url;
    return true;
}

bool RecordingShell::pingWindow(quintptr window, int)
{
    pinged << window;
    return pingAnswers-- > 0;
}

void RecordingShell::setTopMost(QWidget *, bool onTop)
{
    topMost << onTop;
}

} // namespace testing_support
