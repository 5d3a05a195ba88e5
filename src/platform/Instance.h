#pragma once
#include <QString>
#include <functional>

class QObject;

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
    // What the first instance does when asked to come to the front; it listens as
    // long as `owner` lives.
    static void listen(QObject *owner, const QString &title, std::function<void()> toFront);
    // Lets a test use its own lock and socket names.
    static void setKey(const QString &key);
    static QString lockPath();
};

} // namespace platform
