#include "platform/ui/KeyPreviewForm.h"
#include "support/TestMain.h"

int main(int argc, char **argv)
{
    testing_support::prepareTestProcess(argc, argv);
    platform::Application app(argc, argv);
    return testing_support::runAllTests();
}
