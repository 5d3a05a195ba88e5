#include "support/PgCluster.h"
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <gtest/gtest.h>
#ifdef HK_TEST_VERSIONS
#include "hotkeys/hkeyVersions.h"
#include "support/DbTest.h"
#endif
#ifdef HK_TEST_SCREENS
#include "platform/ui/KeyPreviewForm.h"
#include "support/ScreenDoubles.h"
#endif

// The main of every test program. From the hotkeys floor up each test keeps its
// versions in its own folder; the program with screens shows the modal forms
// through the test's script.
int main(int argc, char **argv)
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
#ifdef HK_TEST_VERSIONS
    testing_support::registerTestDataFolder();
    // Never in the user's own versions folder.
    testing_support::HkTest::extend(
        {[](testing_support::HkTest &test) { versions::setRoot(test.versionsRoot()); }, {}});
#endif
#ifdef HK_TEST_SCREENS
    testing_support::showModalFormsPerTest();
    platform::Application app(argc, argv);
#else
    QCoreApplication app(argc, argv);
#endif
    const int result = RUN_ALL_TESTS();
    testing_support::stopOwnPgCluster();
    return result;
}
