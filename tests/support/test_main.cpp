#include "platform/ui/KeyPreviewForm.h"
#include "support/DbTest.h"
#include "support/ScreenDoubles.h"
#include "support/TestMain.h"
#include "support/VersionsFolder.h"

int main(int argc, char **argv)
{
    testing_support::prepareTestProcess(argc, argv);
    testing_support::registerTestDataFolder();
    testing_support::keepVersionsPerTest();
    testing_support::showModalFormsPerTest();
    platform::Application app(argc, argv);
    return testing_support::runAllTests();
}
