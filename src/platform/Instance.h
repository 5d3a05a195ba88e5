#pragma once
#include <QString>

class QWidget;

namespace platform {

// The test for a running instance of this executable on this machine. The first
// instance holds a lock file in the temporary folder and listens on a local
// socket so that a later one can ask it to come to the front.
class Instance {
public:
    // True when another instance already holds the lock; otherwise this process takes it.
    static bool otherIsRunning();
    // Asks the instance whose title is `title` to come to the front; false when none answers.
    static bool raise(const QString &title);
    // The window the first instance brings to the front when asked.
    static void listen(QWidget *window, const QString &title);
    // Lets a test use its own lock and socket names.
    static void setKey(const QString &key);
    static QString lockPath();
};

} // namespace platform
