#include "support/VersionsFolder.h"
#include "hotkeys/hkeyVersions.h"
#include "support/HkTest.h"

namespace testing_support {

void keepVersionsPerTest()
{
    HkTest::extend({[](HkTest &test) { versions::setRoot(test.versionsRoot()); }, {}});
}

} // namespace testing_support
