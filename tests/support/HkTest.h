#pragma once
#include "support/Doubles.h"
#include <QColor>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace testing_support {

// A fresh data folder, settings location and set of platform doubles per test.
// A box the test did not take with boxes() fails it at the end.
class HkTest : public ::testing::Test {
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
    QString dataPath() const;
    // Where the versions of the test's data folder go, never the user's own.
    QString versionsRoot() const;
    // Writes a file of the data folder byte for byte.
    void writeDataFile(const QString &name, const QByteArray &bytes) const;
    QByteArray readDataFile(const QString &name) const;

    QTemporaryDir temp;
    ScriptedDialogs dialogs;
    ScriptedModal modal;
    RecordingShell shell;
};

// A colour as the files store it (0x00BBGGRR) as the screen shows it.
inline QRgb rgbOf(quint32 colour)
{
    return qRgb(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

} // namespace testing_support
