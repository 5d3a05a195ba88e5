#include "support/TestMain.h"
#include <QCoreApplication>

// The tests of a floor below the screens run without a screen at all.
int main(int argc, char **argv)
{
    testing_support::prepareTestProcess(argc, argv);
    QCoreApplication app(argc, argv);
    return testing_support::runAllTests();
}
