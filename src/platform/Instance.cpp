#include "platform/Instance.h"
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <memory>

namespace platform {

namespace {

QString &key()
{
    static QString k = QString::fromLatin1(
        QCryptographicHash::hash(QCoreApplication::applicationFilePath().toUtf8(),
                                 QCryptographicHash::Md5)
            .toHex()
            .left(12));
    return k;
}

QString socketName(const QString &title)
{
    return "hotkeys-" + key() + '-' +
           QString::fromLatin1(
               QCryptographicHash::hash(title.toUtf8(), QCryptographicHash::Md5).toHex().left(8));
}

std::unique_ptr<QLockFile> &lock()
{
    static std::unique_ptr<QLockFile> l;
    return l;
}

} // namespace

void Instance::setKey(const QString &k)
{
    key() = k;
    lock().reset();
}

QString Instance::lockPath()
{
    return QDir::temp().filePath("hotkeys-" + key() + ".lock");
}

bool Instance::otherIsRunning()
{
    if (lock() && lock()->isLocked())
        return false;
    auto l = std::make_unique<QLockFile>(lockPath());
    l->setStaleLockTime(0);
    if (!l->tryLock(0))
        return true;
    lock() = std::move(l);
    return false;
}

bool Instance::raise(const QString &title)
{
    QLocalSocket socket;
    socket.connectToServer(socketName(title));
    if (!socket.waitForConnected(200))
        return false;
    socket.write("raise\n");
    socket.waitForBytesWritten(200);
    return true;
}

void Instance::listen(QObject *owner, const QString &title, std::function<void()> toFront)
{
    auto *server = new QLocalServer(owner);
    QLocalServer::removeServer(socketName(title));
    server->listen(socketName(title));
    QObject::connect(server, &QLocalServer::newConnection, server, [server, toFront] {
        while (QLocalSocket *s = server->nextPendingConnection()) s->deleteLater();
        toFront();
    });
}

} // namespace platform
