#pragma once

namespace testing_support {

// Every test of the program keeps the versions of its data folder in its own
// temporary folder (HkTest::versionsRoot), never in the user's.
void keepVersionsPerTest();

} // namespace testing_support
