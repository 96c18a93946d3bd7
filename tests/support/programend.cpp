#include "support/programend.h"

#include <QProcess>

QByteArray TestSupport::troubleOf(QProcess& program)
{
    const bool hasExited
        = program.state() == QProcess::NotRunning && program.exitStatus() == QProcess::NormalExit;
    return troubleOf(hasExited ? program.exitCode() : -1, program.readAllStandardError());
}

QByteArray TestSupport::troubleOf(int exitCode, const QByteArray& errors)
{
    return (exitCode == 0 ? QByteArray() : "exit code " + QByteArray::number(exitCode) + '\n') + errors;
}
