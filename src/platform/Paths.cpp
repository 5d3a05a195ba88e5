#include "platform/Paths.h"
#include <QDir>
#include <QRegularExpression>

namespace platform {

QString nativePath(const QString &suitePath)
{
#ifdef Q_OS_WIN
    return suitePath;
#else
    static const QRegularExpression drive("^([A-Za-z]):[\\\\/]?");
    QString path = suitePath;
    const QRegularExpressionMatch m = drive.match(path);
    if (m.hasMatch()) {
        const QByteArray var = "HOTKEYS_DRIVE_" + m.captured(1).toUpper().toLatin1();
        QString root = qEnvironmentVariable(var.constData(), QDir::homePath());
        if (!root.endsWith('/'))
            root += '/';
        path = root + path.mid(m.capturedLength());
    }
    path.replace('\\', '/');
    return path;
#endif
}

bool endsWithSeparator(const QString &path)
{
    return path.endsWith('\\') || path.endsWith(QDir::separator());
}

} // namespace platform
