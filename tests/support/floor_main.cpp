#include "support/TestMain.h"

// The tests of a floor below the screens run without a screen at all.
int main(int argc, char **argv)
{
    return testing_support::runWithoutScreen(argc, argv);
}
