#pragma once

#include <QByteArray>
#include <QProcessEnvironment>

namespace TestSupport {

/// How a row of a test ended in a process of its own.
struct ChildRun {
    bool finished = false; ///< False when the process had to be ended after its time was up.
    bool crashed = false;
    int exitCode = -1; ///< The number of failures when the process neither crashed nor had to be ended.
    QByteArray output;

    bool passed() const { return finished && !crashed && exitCode == 0; }
};

/// Whether this process was started by repeatRowInChild().
bool isChild();

/// Runs the current function and data row once more in a child process of this test program, for what has
/// to be set before a program starts and for what ends one. The child gets two minutes.
ChildRun repeatRowInChild(const QProcessEnvironment& environment);

}
