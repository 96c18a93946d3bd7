#pragma once

#include "gui/xserver.h"
#include "support/testmain.h"

/// PLOT2D_TEST_MAIN for tests on an X server of their own.
#define PLOT2D_SCREEN_TEST_MAIN(TestClass)                                                                   \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        XServer server;                                                                                      \
        if (!server.start())                                                                                 \
            return 1;                                                                                        \
        QApplication application(argc, argv);                                                                \
        TestClass test;                                                                                      \
        return TestSupport::run(&test, QCoreApplication::arguments());                                       \
    }
