#pragma once

#include "support/testmain.h"
#include "support/xserver.h"

/// PLOT2D_TEST_MAIN for tests on an X server of their own, which ends with the connection of its last client,
/// so that a test that crashes leaves none behind.
#define PLOT2D_SCREEN_TEST_MAIN(TestClass)                                                                   \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        XServer server;                                                                                      \
        if (!server.start({QStringLiteral("-terminate")}))                                                   \
            return 1;                                                                                        \
        server.enter();                                                                                      \
        TestSupport::LoudApplication application(argc, argv);                                                \
        return TestSupport::run<TestClass>(QCoreApplication::arguments());                                   \
    }
