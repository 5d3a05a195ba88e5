#include "candybutton/Subclasser.h"
#include "platform/Dialogs.h"
#include <QEvent>
#include <QMouseEvent>
#include <QWidget>
#include <algorithm>
#include <memory>

namespace candy {

namespace {

qint32 pointParam(QPoint p)
{
    return qint32(quint32(quint16(qint16(p.x()))) | quint32(quint16(qint16(p.y()))) << 16);
}

QPoint paramPoint(qint32 lParam)
{
    return {qint16(lParam & 0xFFFF), qint16(quint32(lParam) >> 16)};
}

quint32 mouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    quint32 flags = 0;
    if (buttons & Qt::LeftButton)
        flags |= MK_LBUTTON;
    if (buttons & Qt::RightButton)
        flags |= MK_RBUTTON;
    if (buttons & Qt::MiddleButton)
        flags |= MK_MBUTTON;
    if (modifiers & Qt::ShiftModifier)
        flags |= MK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        flags |= MK_CONTROL;
    return flags;
}

Qt::MouseButtons flagButtons(quint32 flags)
{
    Qt::MouseButtons buttons;
    buttons.setFlag(Qt::LeftButton, flags & MK_LBUTTON);
    buttons.setFlag(Qt::RightButton, flags & MK_RBUTTON);
    buttons.setFlag(Qt::MiddleButton, flags & MK_MBUTTON);
    return buttons;
}

Qt::KeyboardModifiers flagModifiers(quint32 flags)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, flags & MK_SHIFT);
    modifiers.setFlag(Qt::ControlModifier, flags & MK_CONTROL);
    return modifiers;
}

int buttonMessage(Qt::MouseButton button, int left, int right)
{
    return button == Qt::RightButton ? right : left;
}

// An event for a legacy message, for a caller that wants the window's own
// handling of it; null for a message no event stands for.
std::unique_ptr<QEvent> eventFor(int uMsg, quint32 wParam, qint32 lParam)
{
    const QPointF pos = paramPoint(lParam);
    const auto mouse = [&](QEvent::Type type, Qt::MouseButton button) {
        return std::make_unique<QMouseEvent>(type, pos, pos, button, flagButtons(wParam),
                                             flagModifiers(wParam));
    };
    switch (uMsg) {
    case WM_SETFOCUS:
        return std::make_unique<QFocusEvent>(QEvent::FocusIn);
    case WM_KILLFOCUS:
        return std::make_unique<QFocusEvent>(QEvent::FocusOut);
    case WM_MOUSEMOVE:
        return mouse(QEvent::MouseMove, Qt::NoButton);
    case WM_LBUTTONDOWN:
        return mouse(QEvent::MouseButtonPress, Qt::LeftButton);
    case WM_LBUTTONUP:
        return mouse(QEvent::MouseButtonRelease, Qt::LeftButton);
    case WM_LBUTTONDBLCLK:
        return mouse(QEvent::MouseButtonDblClick, Qt::LeftButton);
    case WM_RBUTTONDOWN:
        return mouse(QEvent::MouseButtonPress, Qt::RightButton);
    case WM_RBUTTONUP:
        return mouse(QEvent::MouseButtonRelease, Qt::RightButton);
    case WM_MOUSELEAVE:
        return std::make_unique<QEvent>(QEvent::Leave);
    default:
        if (uMsg > WM_APP && uMsg <= WM_APP + int(QEvent::MaxUser) &&
            uMsg - WM_APP != int(QEvent::Paint))
            return std::make_unique<QEvent>(QEvent::Type(uMsg - WM_APP));
        return nullptr;
    }
}

} // namespace

int legacyMessage(const QEvent &event, quint32 &wParam, qint32 &lParam)
{
    wParam = 0;
    lParam = 0;
    switch (event.type()) {
    case QEvent::FocusIn:
        return WM_SETFOCUS;
    case QEvent::FocusOut:
        return WM_KILLFOCUS;
    case QEvent::Paint:
        return WM_PAINT;
    case QEvent::Leave:
        return WM_MOUSELEAVE;
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        wParam = mouseFlags(mouse.buttons(), mouse.modifiers());
        lParam = pointParam(mouse.position().toPoint());
        switch (event.type()) {
        case QEvent::MouseMove:
            return WM_MOUSEMOVE;
        case QEvent::MouseButtonPress:
            return buttonMessage(mouse.button(), WM_LBUTTONDOWN, WM_RBUTTONDOWN);
        case QEvent::MouseButtonRelease:
            return buttonMessage(mouse.button(), WM_LBUTTONUP, WM_RBUTTONUP);
        default:
            return WM_LBUTTONDBLCLK;
        }
    }
    default:
        return WM_APP + int(event.type());
    }
}

bool MessageTable::add(int uMsg)
{
    if (uMsg == ALL_MESSAGES) {
        m_count = ALL_MESSAGES;
        return true;
    }
    if (m_count >= MSG_ENTRIES)
        return false;
    for (int i = 1; i <= m_count; ++i) {
        if (m_msg[i] == 0) {
            m_msg[i] = uMsg;
            return true;
        }
        if (m_msg[i] == uMsg)
            return true;
    }
    // Behind the last entry; a table that matched everything now holds this one.
    m_count = std::max(m_count, 0) + 1;
    m_msg[m_count] = uMsg;
    return true;
}

bool MessageTable::remove(int uMsg)
{
    if (uMsg == ALL_MESSAGES) {
        m_count = 0;
        return true;
    }
    for (int i = 1; i <= m_count; ++i) {
        if (m_msg[i] == uMsg) {
            m_msg[i] = 0;
            return true;
        }
    }
    return false;
}

bool MessageTable::matches(int uMsg) const
{
    if (m_count == ALL_MESSAGES)
        return true;
    return std::find(m_msg.begin() + 1, m_msg.begin() + 1 + std::max(m_count, 0), uMsg) !=
           m_msg.begin() + 1 + std::max(m_count, 0);
}

// One intercepted window. It is the window's first event filter; the window's
// own event() is the previous procedure. A child of the window, so it cannot
// outlive it.
class InterceptBlock : public QObject {
public:
    InterceptBlock(QWidget *window, SubclassCallback *owner, qint32 userValue)
        : QObject(window), Window(window), Owner(owner), UserValue(userValue)
    {
    }

    void install() { Window->installEventFilter(this); }
    // The window has its own handling back.
    void free()
    {
        if (Window)
            Window->removeEventFilter(this);
        delete this;
    }
    void close()
    {
        Closing = true;
        Owner = nullptr;
        BeforeTable.clear();
        AfterTable.clear();
        if (InUse == 0 && m_depth == 0)
            free();
    }
    // The window may go, and this block with it, while it handles the message.
    qint32 callPrevious(QEvent &event)
    {
        const QPointer<InterceptBlock> alive(this);
        ++InUse;
        const bool result = static_cast<QObject *>(Window.data())->event(&event);
        if (alive)
            --InUse;
        return result ? 1 : 0;
    }

    int InUse = 0;
    bool Closing = false;
    QPointer<QWidget> Window;
    SubclassCallback *Owner;
    MessageTable BeforeTable;
    MessageTable AfterTable;
    qint32 UserValue;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != Window)
            return false;
        quint32 wParam;
        qint32 lParam;
        const int uMsg = legacyMessage(*event, wParam, lParam);
        if (!Closing && !BeforeTable.matches(uMsg) && !AfterTable.matches(uMsg))
            return false;
        const QPointer<InterceptBlock> alive(this);
        ++m_depth;
        bool handled = false;
        qint32 lReturn = 0;
        if (BeforeTable.count() != 0 && BeforeTable.matches(uMsg) && Owner)
            Owner->scCallback(true, handled, lReturn, Window, uMsg, wParam, lParam, UserValue);
        if (alive && !handled && Window) {
            lReturn = callPrevious(*event);
            if (alive && InUse == 0 && Closing) {
                free();
                return true;
            }
            if (alive && AfterTable.count() != 0 && AfterTable.matches(uMsg) && Owner)
                Owner->scCallback(false, handled, lReturn, Window, uMsg, wParam, lParam, UserValue);
        }
        if (alive)
            --m_depth;
        // The window's own handling has run, or the owner took the message.
        return true;
    }

private:
    int m_depth = 0; // messages of this window inside this filter now
};

Subclasser::Subclasser(const QString &typeName, SubclassCallback *defaultOwner)
    : m_typeName(typeName), m_defaultOwner(defaultOwner)
{
}

Subclasser::~Subclasser()
{
    sc_ReleaseAll();
}

QString Subclasser::zKey(QWidget *hWnd)
{
    return QString::number(quintptr(hWnd), 16).toUpper();
}

void Subclasser::zError(const QString &routine, const QString &text) const
{
    qWarning("%s", qPrintable(m_typeName + '.' + routine + ": " + text));
    platform::MsgBox(text + '.', platform::vbExclamation, "Error in " + m_typeName + '.' + routine);
}

bool Subclasser::sc_Subclass(QWidget *hWnd, qint32 UserValue, SubclassCallback *CallbackOwner)
{
    if (!hWnd) {
        zError("sc_Subclass", "Invalid window handle");
        return false;
    }
    SubclassCallback *owner = CallbackOwner ? CallbackOwner : m_defaultOwner;
    if (!owner) {
        zError("sc_Subclass", "Callback method not found");
        return false;
    }
    const QString key = zKey(hWnd);
    const bool known = std::any_of(m_blocks.cbegin(), m_blocks.cend(),
                                   [&](const Entry &e) { return e.key == key && e.block; });
    if (known) {
        zError("sc_Subclass", "Window handle is already subclassed");
        return false;
    }
    auto *block = new InterceptBlock(hWnd, owner, UserValue);
    block->install();
    m_blocks.append({key, block});
    return true;
}

InterceptBlock *Subclasser::zMap_hWnd(QWidget *hWnd)
{
    const QString key = zKey(hWnd);
    for (const Entry &e : std::as_const(m_blocks)) {
        if (e.key == key && e.block)
            return e.block;
    }
    zError("zMap_hWnd", "Subclassing hasn't been started");
    return nullptr;
}

void Subclasser::sc_UnSubclass(QWidget *hWnd)
{
    const QString key = zKey(hWnd);
    const auto it = std::find_if(m_blocks.begin(), m_blocks.end(),
                                 [&](const Entry &e) { return e.key == key && e.block; });
    if (it == m_blocks.end()) {
        zError("sc_UnSubclass", "Window handle isn't subclassed");
        return;
    }
    const QPointer<InterceptBlock> block = it->block;
    m_blocks.erase(it);
    block->close();
}

void Subclasser::sc_ReleaseAll()
{
    while (!m_blocks.isEmpty()) {
        const Entry e = m_blocks.takeLast();
        if (e.block)
            e.block->close();
    }
}

namespace {

// The tables that a When bit set names.
QList<MessageTable *> tablesOf(InterceptBlock &block, int When)
{
    QList<MessageTable *> tables;
    if (When & MSG_BEFORE)
        tables << &block.BeforeTable;
    if (When & MSG_AFTER)
        tables << &block.AfterTable;
    return tables;
}

} // namespace

void Subclasser::sc_WatchMsg(QWidget *hWnd, int uMsg, int When)
{
    InterceptBlock *block = zMap_hWnd(hWnd);
    if (!block)
        return;
    for (MessageTable *table : tablesOf(*block, When)) {
        if (!table->add(uMsg))
            zError("zAddMsg", "Message table overflow. Either increase the value of Const "
                              "MSG_ENTRIES or use ALL_MESSAGES instead of specific message "
                              "values");
    }
}

void Subclasser::sc_UnwatchMsg(QWidget *hWnd, int uMsg, int When)
{
    InterceptBlock *block = zMap_hWnd(hWnd);
    if (!block)
        return;
    for (MessageTable *table : tablesOf(*block, When)) {
        if (!table->remove(uMsg))
            zError("zDelMsg", "Message &H" + QString::number(quint32(uMsg), 16).toUpper() +
                                  " not found in table");
    }
}

qint32 Subclasser::sc_CallPrevProc(QWidget *hWnd, int uMsg, quint32 wParam, qint32 lParam)
{
    InterceptBlock *block = zMap_hWnd(hWnd);
    const std::unique_ptr<QEvent> event = eventFor(uMsg, wParam, lParam);
    if (!block || !event)
        return 0;
    return block->callPrevious(*event);
}

qint32 Subclasser::sc_UserValue(QWidget *hWnd)
{
    InterceptBlock *block = zMap_hWnd(hWnd);
    return block ? block->UserValue : 0;
}

void Subclasser::sc_setUserValue(QWidget *hWnd, qint32 value)
{
    if (InterceptBlock *block = zMap_hWnd(hWnd))
        block->UserValue = value;
}

} // namespace candy
