#pragma once
#include "support/PgCluster.h"
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace testing_support {

// What every test program does before its application object exists.
inline void prepareTestProcess(int &argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const QString runtime = QDir::temp().filePath("hk-tests-runtime");
        QDir().mkpath(runtime);
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit());
    }
    // Nothing a test leaves out of its own folders lands in the user's.
    QStandardPaths::setTestModeEnabled(true);
}

inline int runAllTests()
{
    const int result = RUN_ALL_TESTS();
    stopOwnPgCluster();
    return result;
}

// The main of a program whose tests need no screen at all.
inline int runWithoutScreen(int argc, char **argv)
{
    prepareTestProcess(argc, argv);
    QCoreApplication app(argc, argv);
    return runAllTests();
}

} // namespace testing_support
