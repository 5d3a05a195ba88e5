#include "support/DbTest.h"
#include "support/TestMain.h"
#include "support/VersionsFolder.h"

// The tests of the hotkeys floor: no screen, and each test's versions in its own folder.
int main(int argc, char **argv)
{
    testing_support::registerTestDataFolder();
    testing_support::keepVersionsPerTest();
    return testing_support::runWithoutScreen(argc, argv);
}
