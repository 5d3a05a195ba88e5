#pragma once
#include "hotkeys/hkeyVersions.h"
#include "support/HkTest.h"

namespace testing_support {

// Every test of the program keeps the versions of its data folder in its own
// temporary folder (HkTest::versionsRoot), never in the user's.
inline void keepVersionsPerTest()
{
    HkTest::extend({[](HkTest &test) { versions::setRoot(test.versionsRoot()); }, {}});
}

} // namespace testing_support
