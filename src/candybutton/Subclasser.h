#pragma once
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <array>

class QEvent;
class QWidget;

// Puts an owner between a window and the window's own event handling: the
// owner sees chosen messages before, after, or instead of that handling.
// Messages keep their legacy numbers; Qt's events are mapped onto them.
namespace candy {

constexpr int ALL_MESSAGES = -1;
constexpr int MSG_ENTRIES = 32;
enum MsgWhen { MSG_BEFORE = 1, MSG_AFTER = 2 };

enum LegacyMessage {
    WM_SETFOCUS = 7,
    WM_KILLFOCUS = 8,
    WM_PAINT = 15,
    WM_MOUSEMOVE = 512,
    WM_LBUTTONDOWN = 513,
    WM_LBUTTONUP = 514,
    WM_LBUTTONDBLCLK = 515,
    WM_RBUTTONDOWN = 516,
    WM_RBUTTONUP = 517,
    WM_MOUSELEAVE = 675,
    // Events with no legacy number of their own: this base plus the Qt event type.
    WM_APP = 0x8000,
};
// Button flags of a mouse message's wParam.
enum { MK_LBUTTON = 1, MK_RBUTTON = 2, MK_SHIFT = 4, MK_CONTROL = 8, MK_MBUTTON = 16 };

// The legacy number of an event, with its wParam and lParam (x and y in the
// signed 16-bit halves of lParam for mouse messages).
int legacyMessage(const QEvent &event, quint32 &wParam, qint32 &lParam);

// A count and up to MSG_ENTRIES message numbers; the count ALL_MESSAGES
// matches every message, a slot holding 0 is free.
class MessageTable {
public:
    // False when the table is full.
    bool add(int uMsg);
    // False when the message is not in the table.
    bool remove(int uMsg);
    bool matches(int uMsg) const;
    void clear() { m_count = 0; }
    int count() const { return m_count; }

private:
    int m_count = 0;
    std::array<int, MSG_ENTRIES + 1> m_msg{}; // slots 1 to count
};

class SubclassCallback {
public:
    virtual ~SubclassCallback() = default;
    virtual void scCallback(bool bBefore, bool &bHandled, qint32 &lReturn, QWidget *hWnd, int uMsg,
                            quint32 wParam, qint32 lParam, qint32 &UserValue) = 0;
};

class InterceptBlock;

class Subclasser {
public:
    // typeName names the owner in error reports; defaultOwner gets the callbacks
    // unless sc_Subclass names another.
    Subclasser(const QString &typeName, SubclassCallback *defaultOwner);
    ~Subclasser();
    Subclasser(const Subclasser &) = delete;
    Subclasser &operator=(const Subclasser &) = delete;

    bool sc_Subclass(QWidget *hWnd, qint32 UserValue = 0,
                     SubclassCallback *CallbackOwner = nullptr);
    void sc_UnSubclass(QWidget *hWnd);
    void sc_ReleaseAll();
    void sc_WatchMsg(QWidget *hWnd, int uMsg, int When);
    void sc_UnwatchMsg(QWidget *hWnd, int uMsg, int When);
    // Runs the window's own handling of a message now; 0 for a message that
    // cannot be made into an event.
    qint32 sc_CallPrevProc(QWidget *hWnd, int uMsg, quint32 wParam, qint32 lParam);
    qint32 sc_UserValue(QWidget *hWnd);
    void sc_setUserValue(QWidget *hWnd, qint32 value);

private:
    InterceptBlock *zMap_hWnd(QWidget *hWnd);
    void zError(const QString &routine, const QString &text) const;
    static QString zKey(QWidget *hWnd);

    QString m_typeName;
    SubclassCallback *m_defaultOwner;
    struct Entry {
        QString key;
        QPointer<InterceptBlock> block;
    };
    QList<Entry> m_blocks; // oldest first
};

} // namespace candy
