#pragma once
#include "support/Doubles.h"
#include <QMap>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

namespace testing_support {

// Every file under `folder` (hidden ones and those of subfolders too) by its relative
// path, with its bytes; the database's files (*.db), which any read may touch, left out.
QMap<QString, QByteArray> filesUnder(const QString &folder);

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
    void SetUp() override;
    void TearDown() override;

    QList<Box> boxes() { return dialogs.take(); }
    QStringList boxTexts()
    {
        QStringList t;
        for (const Box &b : boxes()) t << b.text;
        return t;
    }
    // Writes a file of the data folder byte for byte.
    void writeDataFile(const QString &name, const QByteArray &bytes) const;
    QByteArray readDataFile(const QString &name) const;

    QTemporaryDir temp;
    ScriptedDialogs dialogs;
    RecordingShell shell;

private:
    static inline QList<Extension> s_extensions;
};

} // namespace testing_support
