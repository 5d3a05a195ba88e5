#pragma once
#include "display/Robot.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/NativeShell.h"
#include "shell/frmMain.h"
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <ostream>

inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"';
}

inline std::ostream &operator<<(std::ostream &os, const QRect &r)
{
    return os << r.x() << ',' << r.y() << ' ' << r.width() << " x " << r.height();
}

namespace display {

struct ProgramEnd {
    int code;
};

// The production shell, except that the end of the program comes back to the test.
class ShellUntilEnd : public platform::NativeShell {
public:
    [[noreturn]] void exitProcess(int code) override { throw ProgramEnd{code}; }
};

// A store as the demo seeder makes it (linked sets with pictures, special and
// coupon keys, an embedded database with inventory), in a folder of its own
// with its own settings store, and the program started on it as a user starts it.
class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Runs the program from its start until it ends; returns its exit code.
    int runProgram();
    QString dataPath() const { return temp.filePath("data"); }
    QByteArray readDataFile(const QString &name) const { return readFile(dataPath() + '/' + name); }
    static QByteArray readFile(const QString &path);
    // The whole form on the screen, its bottom row of buttons included.
    static void expectWhollyOnScreen(QWidget *form);
    // The form with its frame covers the work area, as the window manager maximises it.
    static void expectMaximized(QWidget *form);
    // The addresses the program opened in a web browser.
    QStringList openedUrls() const;

    QTemporaryDir temp;
    Robot robot;
    ShellUntilEnd shell;
};

} // namespace display
