#include "screens/KeyDrag.h"
#include "screens/posButtons.h"
#include <QApplication>
#include <QLabel>
#include <QMouseEvent>

namespace {
const char *const kIdProperty = "keyDragId";
}

KeyDrag::KeyDrag(QWidget *form) : QObject(form), m_form(form), m_ghost(new QLabel(form))
{
    m_ghost->setObjectName("lblDragKey");
    m_ghost->setAlignment(Qt::AlignCenter);
    m_ghost->setStyleSheet("QLabel { background: #fff8c0; border: 2px dashed #404040; "
                           "padding: 10px; font-weight: bold; }");
    m_ghost->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_ghost->hide();
    m_hold.setSingleShot(true);
    m_hold.setInterval(QApplication::startDragTime());
    connect(&m_hold, &QTimer::timeout, this, [this] { m_held = true; });
}

void KeyDrag::addKey(MyButton *key, int id)
{
    key->setProperty(kIdProperty, id);
    key->installEventFilter(this);
    m_keys.append(key);
}

bool KeyDrag::eventFilter(QObject *watched, QEvent *event)
{
    auto *key = qobject_cast<MyButton *>(watched);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton)
            press(key, static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseMove:
        if (key == m_source) {
            move(static_cast<QMouseEvent *>(event));
            return m_dragging;
        }
        break;
    case QEvent::MouseButtonRelease:
        if (key == m_source)
            return release(static_cast<QMouseEvent *>(event));
        break;
    default:
        break;
    }
    return false;
}

void KeyDrag::press(MyButton *key, QMouseEvent *event)
{
    m_source = key;
    m_pressAt = event->globalPosition().toPoint();
    // A finger's press comes as a mouse press that Qt or the system made from the touch.
    m_touch = event->source() != Qt::MouseEventNotSynthesized;
    m_held = false;
    if (m_touch)
        m_hold.start();
}

void KeyDrag::move(QMouseEvent *event)
{
    const QPoint at = event->globalPosition().toPoint();
    if (!m_dragging) {
        if ((at - m_pressAt).manhattanLength() < QApplication::startDragDistance())
            return;
        if (m_touch && !m_held) {
            // Moved before the hold: a slip of the finger, not a drag.
            m_hold.stop();
            m_source = nullptr;
            return;
        }
        begin();
    }
    m_ghost->move(m_form->mapFromGlobal(at) - QPoint(m_ghost->width() / 2, m_ghost->height()));
    setTarget(keyAt(at));
}

bool KeyDrag::release(QMouseEvent *event)
{
    m_hold.stop();
    if (!m_dragging) {
        m_source = nullptr;
        return false;
    }
    MyButton *target = keyAt(event->globalPosition().toPoint());
    const int from = m_source->property(kIdProperty).toInt();
    const bool copy = event->modifiers() & Qt::ControlModifier;
    m_source->setDown(false);
    end();
    if (target)
        emit dropped(from, target->property(kIdProperty).toInt(), copy);
    return true;
}

void KeyDrag::begin()
{
    m_dragging = true;
    m_hold.stop();
    const QString caption = m_source->caption().simplified();
    m_ghost->setText(caption.isEmpty() ? QString("(empty key)") : caption);
    m_ghost->setFont(m_source->font());
    m_ghost->adjustSize();
    m_ghost->resize(qMax(m_ghost->width(), m_source->width() / 2), m_ghost->height());
    m_ghost->raise();
    m_ghost->show();
    m_source->setDown(true);
}

void KeyDrag::end()
{
    setTarget(nullptr);
    m_ghost->hide();
    m_dragging = false;
    m_source = nullptr;
}

MyButton *KeyDrag::keyAt(const QPoint &globalPos) const
{
    for (MyButton *key : m_keys) {
        if (key != m_source && key->isVisible() &&
            key->rect().contains(key->mapFromGlobal(globalPos)))
            return key;
    }
    return nullptr;
}

void KeyDrag::setTarget(MyButton *key)
{
    if (m_target == key)
        return;
    if (m_target)
        m_target->setDown(false);
    m_target = key;
    if (m_target)
        m_target->setDown(true);
}
