#include "support/HkTest.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>

namespace testing_support {

void HkTest::SetUp()
{
    ASSERT_TRUE(temp.isValid());
    QDir(temp.path()).mkpath("data");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, temp.filePath("settings"));
    gDataPath = clsDataPath();
    gDataPath.setDataPath(dataPath());
    platform::DialogPort::install(&dialogs);
    platform::ShellPort::install(&shell);
    for (const Extension &e : s_extensions)
        if (e.setUp)
            e.setUp(*this);
}

void HkTest::TearDown()
{
    for (const Extension &e : s_extensions)
        if (e.tearDown)
            e.tearDown();
    platform::DialogPort::install(nullptr);
    platform::ShellPort::install(nullptr);
    for (const Box &b : dialogs.take())
        ADD_FAILURE() << "box not checked by the test: " << b.title.toStdString() << " / "
                      << b.text.toStdString();
}

QMap<QString, QByteArray> filesUnder(const QString &folder)
{
    QMap<QString, QByteArray> files;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         it.hasNext();) {
        QFile f(it.next());
        if (!f.fileName().endsWith(".db"))
            files[QDir(folder).relativeFilePath(f.fileName())] =
                f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(unreadable)");
    }
    return files;
}

void HkTest::writeDataFile(const QString &name, const QByteArray &bytes) const
{
    QFile f(QDir(dataPath()).filePath(name));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

QByteArray HkTest::readDataFile(const QString &name) const
{
    QFile f(QDir(dataPath()).filePath(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace testing_support
