#include "monkey/monkeycommand.h"

#include "monkey/lastwords.h"
#include "monkey/monkeyrun.h"

#include <QElapsedTimer>

#include <cstdio>
#include <optional>

namespace Monkey {

namespace {

struct Command {
    quint64 seed = 1;
    int from = 0;
    int to = 0;
    bool prints = false;
};

std::optional<Command> parsed(const QStringList& arguments)
{
    Command command;
    bool isNumber = true;
    for (int i = 1; i < arguments.size() && isNumber; i += 2) {
        const QString value = arguments.value(i + 1);
        if (arguments[i] == QLatin1String("--events")) {
            command.to = value.toInt(&isNumber);
        } else if (arguments[i] == QLatin1String("--seed")) {
            command.seed = value.toULongLong(&isNumber);
        } else if (arguments[i] == QLatin1String("--replay")) {
            const QStringList parts = value.split(QLatin1Char(':'));
            bool areNumbers[3] = {};
            command.seed = parts.value(0).toULongLong(&areNumbers[0]);
            command.from = parts.value(1).toInt(&areNumbers[1]);
            command.to = parts.value(2).toInt(&areNumbers[2]);
            command.prints = true;
            isNumber = parts.size() == 3 && areNumbers[0] && areNumbers[1] && areNumbers[2];
        } else {
            return std::nullopt;
        }
    }
    return isNumber && command.from >= 0 && command.from < command.to ? std::optional<Command>(command)
                                                                      : std::nullopt;
}

void print(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

}

bool isCommand(const QStringList& arguments)
{
    return arguments.value(1).startsWith(QStringLiteral("--"));
}

int runCommand(const QStringList& arguments)
{
    const std::optional<Command> command = parsed(arguments);
    if (!command) {
        std::fprintf(stderr, "Usage: tst_monkey --events N [--seed S] | --replay SEED:FROM:TO\n");
        return 2;
    }
    LastWords::install();
    Run run(command->seed);
    if (command->prints)
        run.onStep = print;
    QElapsedTimer timer;
    timer.start();
    const QString broken = run.play(command->from, command->to);
    const Tally& tally = run.tally();
    std::printf(
        "seed %llu: %d steps in %.1f s; %d pans, %d zooms, %d axis drags, %d times labels thinned, %d "
        "price intervals, %d interventions; memory grown by %lld KiB; digest %016llx\n",
        static_cast<unsigned long long>(command->seed), tally.steps,
        static_cast<double>(timer.elapsed()) / 1000.0, tally.pans, tally.zooms, tally.axisDrags,
        tally.thinnedLabels, tally.intervals, tally.interventions,
        static_cast<long long>(run.memoryGrowth() / 1024), static_cast<unsigned long long>(run.digest()));
    if (broken.isEmpty())
        return 0;
    std::printf("BROKEN: %s\n", qPrintable(broken));
    return 1;
}

}
