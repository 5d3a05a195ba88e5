#pragma once
#include "platform/Instance.h"
#include "shell/hkeyMain.h"
#include "support/Doubles.h"
#include <QUuid>
#include <gtest/gtest.h>

namespace testing_support {

// Runs the start as the program does; the exit code of the process it would end.
inline int runMain()
{
    const int code = exitCode(Main);
    if (code == -1)
        ADD_FAILURE() << "Main returned instead of ending the process";
    return code;
}

// A start as a new process: no other instance holds the key.
inline void newInstanceKey()
{
    platform::Instance::setKey("test-" + QUuid::createUuid().toString(QUuid::Id128));
}

} // namespace testing_support
