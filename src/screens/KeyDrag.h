#pragma once
#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>

class MyButton;
class QLabel;
class QMouseEvent;

// Moves a key onto another key of a panel by dragging it: with a mouse the drag starts
// once the pointer moves, on a touch screen once the finger has held the key still for
// a moment, so a tap still presses the key. The release over a key reports the drop.
class KeyDrag : public QObject {
    Q_OBJECT
public:
    explicit KeyDrag(QWidget *form);

    // A key that can be dragged and dropped on; `id` comes back in dropped().
    void addKey(MyButton *key, int id);
    bool dragging() const { return m_dragging; }

signals:
    // `copy` when Ctrl was held at the release.
    void dropped(int fromId, int toId, bool copy);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void press(MyButton *key, QMouseEvent *event);
    void move(QMouseEvent *event);
    bool release(QMouseEvent *event);
    void begin();
    void end();
    MyButton *keyAt(const QPoint &globalPos) const;
    void setTarget(MyButton *key);

    QWidget *m_form;
    QList<MyButton *> m_keys;
    QLabel *m_ghost;
    QTimer m_hold;
    QPointer<MyButton> m_source;
    QPointer<MyButton> m_target;
    QPoint m_pressAt;
    bool m_touch = false;
    bool m_held = false;
    bool m_dragging = false;
};
