#include "support/childrun.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr char childMark[] = "PLOT2D_TEST_CHILD";
constexpr int timeLimit = 120000; // ms

QString currentRow()
{
    QString row = QString::fromLatin1(QTest::currentTestFunction());
    if (QTest::currentDataTag())
        row += QLatin1Char(':') + QString::fromUtf8(QTest::currentDataTag());
    return row;
}

}

bool TestSupport::isChild()
{
    return qEnvironmentVariableIsSet(childMark);
}

TestSupport::ChildRun TestSupport::repeatRowInChild(const QProcessEnvironment& environment)
{
    // An aborted child cannot remove its temporary files: they go where the parent does it.
    const QTemporaryDir folder;
    QProcessEnvironment childEnvironment = environment;
    childEnvironment.insert(QLatin1String(childMark), QStringLiteral("1"));
    childEnvironment.insert(QStringLiteral("TMPDIR"), folder.path());

    QProcess process;
    process.setProcessEnvironment(childEnvironment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("-nocrashhandler"), currentRow()});

    ChildRun run;
    run.finished = process.waitForFinished(timeLimit);
    if (!run.finished) {
        process.kill();
        process.waitForFinished();
    }
    run.crashed = process.exitStatus() == QProcess::CrashExit;
    run.exitCode = process.exitCode();
    run.output = process.readAll();
    return run;
}
