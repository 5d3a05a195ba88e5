#include "display/Robot.h"
#include "platform/ui/MSFlexGrid.h"
#include <QAbstractButton>
#include <QDialog>
#include <QDir>
#include <QPixmap>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QSet>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace display {

namespace {

// Long enough for a loaded two-core machine; a window that needs longer is stuck.
constexpr int kStepLimitMs = 15000;
constexpr int kActivateAfterMs = 3000;

bool isShown(QWidget *w)
{
    return w->isVisible() && w->windowHandle() && w->windowHandle()->isExposed();
}

QString describe(QWidget *w)
{
    if (!w)
        return "no modal window";
    auto *box = qobject_cast<QMessageBox *>(w);
    return QString("%1 \"%2\"%3 (shown %4, active %5)")
        .arg(w->metaObject()->className(), w->windowTitle(),
             box ? " saying \"" + box->text() + '"' : QString())
        .arg(isShown(w))
        .arg(w->isActiveWindow());
}

// xdotool's move that waits until the pointer is there (it never returns when the
// pointer is there already).
QStringList moveTo(QPoint at)
{
    return {"mousemove", "--sync", QString::number(at.x()), QString::number(at.y())};
}

} // namespace

Robot::Robot()
{
    m_timer.setInterval(25);
    connect(&m_timer, &QTimer::timeout, this, [this] { poll(); });
}

void Robot::answer(const QString &text, QMessageBox::StandardButton button)
{
    m_steps.push_back({"a box saying \"" + text + '"',
                       [text](QWidget *w) {
                           auto *box = qobject_cast<QMessageBox *>(w);
                           return box && box->text().contains(text);
                       },
                       [button](QWidget *w) {
                           QAbstractButton *pressed = static_cast<QMessageBox *>(w)->button(button);
                           ASSERT_TRUE(pressed) << "the box has no such button";
                           click(pressed);
                       }});
}

void Robot::stop()
{
    m_timer.stop();
    for (const Step &s : m_steps) failures << "never reached: " + s.what;
    m_steps.clear();
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (qobject_cast<QDialog *>(w) && w->isVisible()) {
            failures << "left open: " + describe(w);
            w->hide();
        }
    }
}

// Runs the next step once its window has been up for a whole tick, so that it
// has had its paint; steps that open a modal form run on in its loop.
void Robot::poll()
{
    if (m_quiet)
        return;
    QWidget *modal = QApplication::activeModalWidget();
    if (m_failed) {
        if (modal)
            modal->hide();
        return;
    }
    if (m_steps.empty()) {
        if (modal && m_waiting.elapsed() > kStepLimitMs)
            fail("left open after the last step: " + describe(modal));
        return;
    }
    Step &next = m_steps.front();
    const bool awaited = next.window && modal && next.match(modal);
    const bool ready =
        next.window ? awaited && isShown(modal) && modal->isActiveWindow() : next.match(modal);
    if (!ready) {
        m_seen = nullptr;
        // The window manager may leave a window of this long-running process
        // unfocused when it maps (its last input was for an earlier window); a user
        // would click it. Only the window the step waits for, and only once it is up.
        if (awaited && isShown(modal) && !m_activated && m_waiting.elapsed() > kActivateAfterMs) {
            m_activated = true;
            modal->activateWindow();
        }
        if (m_waiting.elapsed() > kStepLimitMs)
            fail("waited " + QString::number(kStepLimitMs / 1000) + " s for " + next.what +
                 "; up instead: " + describe(modal));
        return;
    }
    if (next.window && m_seen != modal) {
        m_seen = modal;
        return;
    }
    Step step = std::move(next);
    m_steps.pop_front();
    m_seen = nullptr;
    m_activated = false;
    m_waiting.restart();
    step.act(modal);
}

void Robot::fail(const QString &why)
{
    failures << why;
    grab(QGuiApplication::primaryScreen()->geometry(),
         QString("failure-") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    m_failed = true;
    m_steps.clear();
}

QString Robot::run(const QString &program, const QStringList &args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(10000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        ADD_FAILURE() << program.toStdString() << ' ' << args.join(' ').toStdString()
                      << " failed: " << p.readAllStandardError().toStdString();
    return QString::fromLocal8Bit(p.readAllStandardOutput());
}

void Robot::click(QWidget *widget, QPoint at, int button, int clicks)
{
    run("xdotool",
        moveTo(widget->mapToGlobal(at)) +
            QStringList{"click", "--repeat", QString::number(clicks), QString::number(button)});
}

void Robot::clickCell(platform::MSFlexGrid *grid, int row, int col, int button, int clicks)
{
    const QRect cell = grid->visualItemRect(grid->item(row - grid->FixedRows(), col));
    click(grid->viewport(), cell.center(), button, clicks);
}

// One xdotool run: the program reads the events only once the step is over anyway.
void Robot::drag(QWidget *from, QWidget *to, const QString &held)
{
    const QPoint start = from->mapToGlobal(from->rect().center());
    const QPoint end = to->mapToGlobal(to->rect().center());
    QStringList hold = held.isEmpty() ? QStringList() : QStringList{"keydown", held};
    QStringList args = moveTo(start) + hold + QStringList{"mousedown", "1"};
    for (int step = 1; step <= 4; ++step) args << moveTo(start + (end - start) * step / 4);
    run("xdotool", args + QStringList{"mouseup", "1"} + hold.replaceInStrings("keydown", "keyup"));
}

void Robot::retype(QWidget *box, const QString &text)
{
    click(box);
    key("ctrl+a");
    type(text);
}

void Robot::settle(int ms)
{
    m_quiet = true;
    QTest::qWait(ms);
    m_quiet = false;
}

// The window's inside as the X server places it. Qt's own idea of a window's
// geometry has been seen to lag at 1 x 1 for a window already drawn.
QRect Robot::placeOf(QWidget *window)
{
    const QString info = run("xwininfo", {"-id", QString::number(window->winId())});
    auto field = [&info](const char *name) {
        return QRegularExpression(QString(name) + R"(:\s*(-?\d+))").match(info).captured(1).toInt();
    };
    return QRect(field("Absolute upper-left X"), field("Absolute upper-left Y"), field("Width"),
                 field("Height"));
}

QImage Robot::grab(QRect area, const QString &name)
{
    const QImage image = QGuiApplication::primaryScreen()
                             ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
                             .toImage();
    const QDir folder(qEnvironmentVariable("HK_DISPLAY_SHOTS", "display-shots"));
    folder.mkpath(".");
    image.save(folder.filePath(name + ".png"));
    return image;
}

// Each window is checked where it lies on the screen, so the desktop around it
// does not count.
void Robot::shot(const QString &name, QWidget *window)
{
    settle();
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QRect area = window ? placeOf(window) & screen : screen;
    const QImage image = grab(area, name);
    for (QWidget *w : window ? QWidgetList{window} : QApplication::topLevelWidgets()) {
        const QRect inside = w->isVisible() ? placeOf(w) & area : QRect();
        if (!inside.isEmpty())
            checkBlank(image.copy(inside.translated(-area.topLeft())),
                       name + ": " + w->metaObject()->className());
    }
}

// A grab that looks blank: a few colours, or a quarter of it black.
void Robot::checkBlank(const QImage &image, const QString &what)
{
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    const auto *pixels = reinterpret_cast<const QRgb *>(rgb.constBits());
    const qint64 all = qint64(rgb.width()) * rgb.height();
    QSet<QRgb> colours;
    qint64 black = 0;
    for (qint64 i = 0; i < all; ++i) {
        const QRgb c = pixels[i] & 0xFFFFFF;
        if (colours.size() < 8)
            colours.insert(c);
        black += qMax(qMax(qRed(c), qGreen(c)), qBlue(c)) < 16;
    }
    if (colours.size() < 8 || black * 4 > all)
        failures << what + QString::asprintf(" looks blank: %d colours, %lld%% black (%d x %d)",
                                             int(colours.size()), black * 100 / all, rgb.width(),
                                             rgb.height());
}

} // namespace display
