#include "deskrun.h"

#include "support/programend.h"

#include <QProcess>

QList<QByteArray> DeskRun::errorLines() const
{
    QList<QByteArray> lines = errors.split('\n');
    lines.removeAll(QByteArray());
    return lines;
}

QByteArray DeskRun::trouble() const
{
    return TestSupport::troubleOf(exitCode, errors);
}

DeskRun runDesk(const QStringList& arguments, const QString& folder, const QProcessEnvironment& environment)
{
    constexpr int patience = 60000;
    QProcess process;
    process.setWorkingDirectory(folder);
    QProcessEnvironment isolated = environment;
    isolated.insert(QStringLiteral("XDG_CONFIG_HOME"), folder + QStringLiteral("/config"));
    // The texts that tests expect are English.
    if (!isolated.contains(QStringLiteral("LANGUAGE")))
        isolated.insert(QStringLiteral("LANGUAGE"), QStringLiteral("en"));
    process.setProcessEnvironment(isolated);
    process.start(QStringLiteral(OPTIONDESK_PROGRAM), arguments);
    const bool ended = process.waitForFinished(patience);
    DeskRun run;
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    if (ended && process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    else
        process.kill();
    process.waitForFinished();
    return run;
}
