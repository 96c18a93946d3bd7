#pragma once

#include "support/loudapplication.h"

#include <QtTest>

#include <functional>
#include <memory>

namespace TestSupport {

/// Makes a test object, runs its functions as QTest::qExec does and destroys it, and fails the run as well
/// when a Qt warning or critical message came meanwhile that no QTest::ignoreMessage() had announced.
int run(const std::function<std::unique_ptr<QObject>()>& makeTest, const QStringList& arguments);

template <typename TestClass> int run(const QStringList& arguments)
{
    return run([] { return std::make_unique<TestClass>(); }, arguments);
}

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
        return TestSupport::run<TestClass>(QCoreApplication::arguments());                                   \
    }
