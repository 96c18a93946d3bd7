#include "support/testmain.h"

#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace {

std::atomic<int> messagesAround{0};
QtMessageHandler handlerBefore = nullptr;

/// Hears what Qt Test does not: what comes before and after the functions of a test.
void countAround(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        ++messagesAround;
        std::fprintf(stderr, "FAIL!  : unexpected message around the test: %s\n", qPrintable(message));
    } else {
        handlerBefore(type, context, message);
    }
}

bool namesAnOutput(const QStringList& arguments)
{
    return arguments.contains(QStringLiteral("-o"));
}

QStringList unexpectedMessages(const QString& report)
{
    QFile file(report);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("the test's report cannot be read")};

    QStringList messages;
    QString function;
    bool loud = false;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("TestFunction")) {
            function = xml.attributes().value(QLatin1String("name")).toString();
        } else if (xml.name() == QLatin1String("Message")) {
            const auto type = xml.attributes().value(QLatin1String("type"));
            loud = type == QLatin1String("qwarn") || type == QLatin1String("qcritical")
                || type == QLatin1String("warn") || type == QLatin1String("system");
        } else if (loud && xml.name() == QLatin1String("Description")) {
            messages << function + QLatin1String("(): ") + xml.readElementText();
            loud = false;
        }
    }
    return messages;
}

/// The number of failures, unexpected messages included.
int runFunctions(QObject* test, const QStringList& arguments)
{
    // Qt Test swallows announced messages before its loggers see them, so its own report holds exactly
    // the unannounced ones.
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report.xml"));
    QStringList all = arguments;
    if (!namesAnOutput(arguments))
        all << QStringLiteral("-o") << QStringLiteral("-,txt");
    all << QStringLiteral("-o") << report + QLatin1String(",xml");

    const int failures = QTest::qExec(test, all);
    if (!QFileInfo::exists(report))
        return failures; // A call such as -functions runs no test.
    const QStringList messages = unexpectedMessages(report);
    for (const QString& message : messages)
        std::fprintf(stderr, "FAIL!  : unexpected message in %s\n", qPrintable(message));
    return failures + static_cast<int>(messages.size());
}

}

int TestSupport::run(const std::function<std::unique_ptr<QObject>()>& makeTest, const QStringList& arguments)
{
    handlerBefore = qInstallMessageHandler(countAround);
    int failures = 0;
    {
        const std::unique_ptr<QObject> test = makeTest();
        failures = runFunctions(test.get(), arguments);
    }
    qInstallMessageHandler(handlerBefore);
    // An exit code has eight bits: 256 messages would pass for none.
    constexpr int most = 127;
    return std::min(most, failures + messagesAround);
}
