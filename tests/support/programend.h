#pragma once

#include <QByteArray>

class QProcess;

namespace TestSupport {

/// What is wrong with how a program has ended that was to do its work and to complain of nothing: its end, if
/// that was not the exit code 0, and what it wrote to standard error. Empty if nothing is.
QByteArray troubleOf(QProcess& program);
QByteArray troubleOf(int exitCode, const QByteArray& errors);

}
