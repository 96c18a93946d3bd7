#pragma once

#include "support/loudapplication.h"

#include <QtTest>

namespace TestSupport {

/// Runs the functions of a test object as QTest::qExec does, and fails the run as well when a Qt warning or
/// critical message came that no QTest::ignoreMessage() had announced.
int run(QObject* test, const QStringList& arguments);

/// Before the application is made: without a wish for another platform, that of no screen.
inline void preferNoScreen()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

}

#define PLOT2D_TEST_MAIN(TestClass)                                                                          \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        TestSupport::preferNoScreen();                                                                       \
        TestSupport::LoudApplication application(argc, argv);                                                \
        TestClass test;                                                                                      \
        return TestSupport::run(&test, QCoreApplication::arguments());                                       \
    }
