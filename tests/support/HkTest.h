#pragma once
#include "settings/clsDataPath.h"
#include "support/Doubles.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QSettings>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

namespace testing_support {

// Every file under `folder` (hidden ones and those of subfolders too) by its relative
// path, with its bytes; the database's files (*.db), which any read may touch, left out.
inline QMap<QString, QByteArray> filesUnder(const QString &folder)
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

// A fresh data folder, settings location and set of platform doubles per test.
// A box the test did not take with boxes() fails it at the end.
class HkTest : public ::testing::Test {
public:
    // What the support of a floor above adds to every test of a program (where
    // the versions go, how modal forms show), added by the program's main.
    struct Extension {
        std::function<void(HkTest &)> setUp;
        std::function<void()> tearDown;
    };
    static void extend(Extension extension) { s_extensions << extension; }

    QString dataPath() const { return temp.filePath("data"); }
    // Where the versions of the test's data folder go, never the user's own.
    QString versionsRoot() const { return temp.filePath("versions"); }
    ScriptedModal modal;

protected:
    void SetUp() override
    {
        ASSERT_TRUE(temp.isValid());
        QDir(temp.path()).mkpath("data");
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           temp.filePath("settings"));
        gDataPath = clsDataPath();
        gDataPath.setDataPath(dataPath());
        platform::DialogPort::install(&dialogs);
        platform::ShellPort::install(&shell);
        for (const Extension &e : s_extensions)
            if (e.setUp)
                e.setUp(*this);
    }
    void TearDown() override
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

    QList<Box> boxes() { return dialogs.take(); }
    QStringList boxTexts()
    {
        QStringList t;
        for (const Box &b : boxes()) t << b.text;
        return t;
    }
    // Writes a file of the data folder byte for byte.
    void writeDataFile(const QString &name, const QByteArray &bytes) const
    {
        QFile f(QDir(dataPath()).filePath(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
    QByteArray readDataFile(const QString &name) const
    {
        QFile f(QDir(dataPath()).filePath(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    QTemporaryDir temp;
    ScriptedDialogs dialogs;
    RecordingShell shell;

private:
    static inline QList<Extension> s_extensions;
};

} // namespace testing_support
