#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QStringList>

/// One run of the option desk's program, from its start to its end.
struct DeskRun {
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;

    /// The lines on standard error, without the line ends.
    QList<QByteArray> errorLines() const;
    /// Empty if it did what it was to do without a word on standard error.
    QByteArray trouble() const;
};

/// Runs the program in a folder, which also takes the user's settings; the tests' environment has the
/// platform without a display. A run that crashes or takes more than a minute has the exit code -1.
DeskRun runDesk(const QStringList& arguments, const QString& folder,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
