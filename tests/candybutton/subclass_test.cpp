#include "candybutton/Subclasser.h"
#include "support/HkTest.h"
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <functional>

using namespace candy;

namespace {

// A window that logs its own handling of the messages it is sent.
class LoggingWindow : public QWidget {
public:
    explicit LoggingWindow(QStringList &log) : m_log(log) { setMouseTracking(true); }
    QPoint lastPress;
    std::function<void()> onOwn;

protected:
    bool event(QEvent *e) override
    {
        if (e->type() == QEvent::MouseButtonPress)
            lastPress = static_cast<QMouseEvent *>(e)->position().toPoint();
        if (e->type() == QEvent::MouseButtonPress || e->type() == QEvent::MouseMove ||
            e->type() >= QEvent::User)
            m_log << QString("own %1").arg(e->type());
        if (e->type() == QEvent::User && onOwn)
            onOwn();
        return QWidget::event(e);
    }

private:
    QStringList &m_log;
};

class Recorder : public SubclassCallback {
public:
    explicit Recorder(QStringList &log) : m_log(log) {}
    void scCallback(bool bBefore, bool &bHandled, qint32 &, QWidget *hWnd, int uMsg, quint32,
                    qint32, qint32 &UserValue) override
    {
        m_log << QString("%1 %2").arg(bBefore ? "before" : "after").arg(uMsg);
        ++UserValue;
        bHandled = handle;
        if (onCall)
            onCall(hWnd);
    }
    bool handle = false;
    std::function<void(QWidget *)> onCall;

private:
    QStringList &m_log;
};

constexpr int userMsg = WM_APP + int(QEvent::User);

class Subclassing : public testing_support::HkTest {
protected:
    void send(QEvent::Type type = QEvent::User)
    {
        QEvent e(type);
        QCoreApplication::sendEvent(&window, &e);
    }
    void move(QPoint pos)
    {
        QMouseEvent e(QEvent::MouseMove, pos, pos, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &e);
    }
    QStringList takeLog() { return std::exchange(log, {}); }

    const QString before = QString("before %1").arg(userMsg);
    const QString after = QString("after %1").arg(userMsg);
    QStringList log;
    LoggingWindow window{log};
    Recorder recorder{log};
    Subclasser sc{"Test", &recorder};
};

TEST_F(Subclassing, OwnerSeesWatchedMessagesAroundTheWindowsOwnHandling)
{
    ASSERT_TRUE(sc.sc_Subclass(&window, 41));
    sc.sc_WatchMsg(&window, userMsg, MSG_BEFORE | MSG_AFTER);
    sc.sc_WatchMsg(&window, WM_MOUSEMOVE, MSG_AFTER);
    send();
    move({3, 4});
    send(QEvent::Type(QEvent::User + 1)); // not watched: straight through
    EXPECT_EQ(takeLog(),
              QStringList({before, "own 1000", after, "own 5", "after 512", "own 1001"}));
    EXPECT_EQ(sc.sc_UserValue(&window), 44) << "each callback had the user value by reference";

    sc.sc_UnwatchMsg(&window, userMsg, MSG_BEFORE);
    sc.sc_WatchMsg(&window, ALL_MESSAGES, MSG_BEFORE);
    send(QEvent::Type(QEvent::User + 5));
    move({1, 1});
    sc.sc_UnwatchMsg(&window, ALL_MESSAGES, MSG_BEFORE);
    send();
    EXPECT_EQ(takeLog(), QStringList({QString("before %1").arg(userMsg + 5), "own 1005",
                                      "before 512", "own 5", "after 512", "own 1000", after}));
    sc.sc_WatchMsg(&window, userMsg, MSG_BEFORE);
    recorder.handle = true; // handled before: no own handling, no after pass
    send();
    EXPECT_EQ(takeLog(), QStringList({before}));
}

TEST_F(Subclassing, ErrorsAreReportedWithTheirRoutineAndTheFirstSubclassStays)
{
    sc.sc_Subclass(&window);
    sc.sc_WatchMsg(&window, userMsg, MSG_BEFORE);
    sc.sc_UnwatchMsg(&window, WM_LBUTTONDOWN, MSG_BEFORE);
    for (int m = 1; m <= 32; ++m) sc.sc_WatchMsg(&window, WM_APP + 2000 + m, MSG_BEFORE);
    LoggingWindow other(log);
    sc.sc_WatchMsg(&other, WM_MOUSEMOVE, MSG_BEFORE);
    sc.sc_UnSubclass(&other);
    EXPECT_FALSE(sc.sc_Subclass(nullptr));
    Subclasser orphan("Orphan", nullptr);
    EXPECT_FALSE(orphan.sc_Subclass(&other));
    Recorder second(log);
    EXPECT_FALSE(sc.sc_Subclass(&window, 0, &second));
    QStringList shown;
    for (const testing_support::Box &b : boxes()) shown << b.title + " | " + b.text;
    EXPECT_EQ(shown,
              QStringList({"Error in Test.zDelMsg | Message &H201 not found in table.",
                           "Error in Test.zAddMsg | Message table overflow. Either increase the "
                           "value of Const MSG_ENTRIES or use ALL_MESSAGES instead of specific "
                           "message values.",
                           "Error in Test.zMap_hWnd | Subclassing hasn't been started.",
                           "Error in Test.sc_UnSubclass | Window handle isn't subclassed.",
                           "Error in Test.sc_Subclass | Invalid window handle.",
                           "Error in Orphan.sc_Subclass | Callback method not found.",
                           "Error in Test.sc_Subclass | Window handle is already subclassed."}));
    send();
    EXPECT_EQ(takeLog(), QStringList({before, "own 1000"})) << "the first owner alone";
}

TEST_F(Subclassing, EndingFromACallbackOrOutsideAMessageOrWithTheWindowGoneLeavesNothing)
{
    sc.sc_Subclass(&window);
    sc.sc_WatchMsg(&window, userMsg, MSG_BEFORE | MSG_AFTER);
    recorder.onCall = [this](QWidget *w) { sc.sc_UnSubclass(w); };
    send();
    // The message still reached the window; the after pass is gone with the interception.
    EXPECT_EQ(takeLog(), QStringList({before, "own 1000"}));
    send();
    EXPECT_EQ(takeLog(), QStringList({"own 1000"}));

    // Ended on a move the window's own handling of the user message makes: that handling
    // returns first.
    EXPECT_TRUE(sc.sc_Subclass(&window)) << "the window is free to be intercepted again";
    sc.sc_WatchMsg(&window, WM_MOUSEMOVE, MSG_AFTER);
    sc.sc_WatchMsg(&window, userMsg, MSG_AFTER);
    window.onOwn = [this] { move({2, 2}); };
    send();
    EXPECT_EQ(takeLog(), QStringList({"own 1000", "own 5", "after 512"}));
    EXPECT_TRUE(window.children().isEmpty());

    window.onOwn = nullptr;
    recorder.onCall = nullptr;
    sc.sc_Subclass(&window);
    sc.sc_WatchMsg(&window, userMsg, MSG_AFTER);
    sc.sc_ReleaseAll();
    EXPECT_TRUE(window.children().isEmpty());
    send();
    EXPECT_EQ(takeLog(), QStringList({"own 1000"}));

    // Windows that go away, one of them in its own handling of a message, leave nothing behind.
    auto *gone = new LoggingWindow(log);
    sc.sc_Subclass(gone);
    sc.sc_WatchMsg(gone, ALL_MESSAGES, MSG_BEFORE | MSG_AFTER);
    delete gone;
    auto *self = new LoggingWindow(log);
    const QPointer<QWidget> watch(self);
    sc.sc_Subclass(self);
    sc.sc_WatchMsg(self, ALL_MESSAGES, MSG_BEFORE | MSG_AFTER);
    self->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(watch.isNull());
    sc.sc_ReleaseAll();
}

TEST_F(Subclassing, MouseMessagesCarryButtonsAndSignedCoordinatesBothWays)
{
    sc.sc_Subclass(&window);
    sc.sc_WatchMsg(&window, WM_LBUTTONDOWN, MSG_BEFORE);
    sc.sc_CallPrevProc(&window, WM_LBUTTONDOWN, MK_LBUTTON, 7 << 16 | 5);
    EXPECT_EQ(window.lastPress, QPoint(5, 7)) << "the window's own handling, at once";
    EXPECT_EQ(takeLog(), QStringList({"own 2"}));

    QMouseEvent e(QEvent::MouseMove, QPointF(-3, 20), QPointF(-3, 20), Qt::NoButton,
                  Qt::LeftButton | Qt::RightButton, Qt::ShiftModifier);
    quint32 wParam;
    qint32 lParam;
    EXPECT_EQ(legacyMessage(e, wParam, lParam), WM_MOUSEMOVE);
    EXPECT_EQ(wParam, quint32(MK_LBUTTON | MK_RBUTTON | MK_SHIFT));
    EXPECT_EQ(QPoint(qint16(lParam & 0xFFFF), lParam >> 16), QPoint(-3, 20));
}

} // namespace
