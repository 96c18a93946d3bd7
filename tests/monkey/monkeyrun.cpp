#include "monkey/monkeyrun.h"

#include "monkey/invariants.h"
#include "monkey/lastwords.h"
#include "monkey/memorywatch.h"
#include "monkey/stepexecutor.h"
#include "monkey/stepgenerator.h"

#include <QCoreApplication>
#include <QCursor>

#include <algorithm>
#include <cstring>

namespace Monkey {

namespace {
bool isSameScale(const Snapshot::Scale& a, const Snapshot::Scale& b)
{
    return a.lower == b.lower && a.upper == b.upper;
}

void count(
    Tally& tally, const Step& step, const Signals& heard, const Snapshot& before, const Snapshot& after)
{
    ++tally.steps;
    tally.thinnedLabels += after.labels.shown.size() < after.labels.candidates.size();
    tally.intervals += heard.interval;
    if (isSameScale(before.prices, after.prices) && isSameScale(before.values, after.values))
        return;
    tally.pans += std::holds_alternative<Release>(step);
    tally.axisDrags += std::holds_alternative<Move>(step);
    tally.zooms += std::holds_alternative<Turn>(step);
}

/// The FNV-1a hash continued.
std::uint64_t digested(std::uint64_t digest, double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return (digest ^ bits) * 0x100000001b3u;
}

std::uint64_t digested(std::uint64_t digest, const Snapshot& snapshot)
{
    for (const Snapshot::Scale* scale : {&snapshot.prices, &snapshot.values})
        digest = digested(digested(digest, scale->lower), scale->upper);
    for (const double label : snapshot.labels.shown)
        digest = digested(digest, label);
    digest = digested(digest, static_cast<double>(snapshot.legend.curves.size()));
    return digested(digest, snapshot.autoScale ? 1.0 : 0.0);
}

/// What the host itself did in a slot may have signals of its own.
QString brokenSignals(
    const Step& step, const Signals& heard, const Snapshot& before, const Snapshot& after, bool hasIntervened)
{
    const bool isOfHost
        = std::holds_alternative<SetInterval>(step) || std::holds_alternative<StartOver>(step);
    if (heard.intervalChangedSilently && !isOfHost)
        return QStringLiteral("signals: a price interval that changed silently");
    if (hasIntervened)
        return heard.wrong.join(QStringLiteral(", "));
    return Invariants::signalsOf(step, heard, Invariants::pricesMoved(before, after));
}

/// Puts back what outlives a plot: the cursor, and the events that wait.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCursor::setPos(0, 0);
    QCoreApplication::processEvents();
}

}

Run::Run(std::uint64_t seed)
    : m_seed(seed)
{
}

QString Run::describe(int from, int number, const QString& broken) const
{
    return QStringLiteral("seed %1, step %2 (%3): %4; to repeat it: %5 --replay %1:%6:%7")
        .arg(m_seed)
        .arg(number)
        .arg(text(stepAt(m_seed, number)).left(200), broken,
            QCoreApplication::applicationFilePath().section(QLatin1Char('/'), -1))
        .arg(from)
        .arg(number + 1);
}

QString Run::playPiece(int from, int to)
{
    const MemoryWatch memory;
    Host host;
    StepExecutor executor(host);
    executor.run(StartOver{});
    host.heard().take();
    Snapshot before = snapshotOf(host);
    for (int number = from; number < to; ++number) {
        const Step step = stepAt(m_seed, number);
        LastWords::set(describe(from, number, QStringLiteral("the process died\n")).toUtf8());
        if (onStep)
            onStep(QStringLiteral("%1 %2").arg(number).arg(text(step)));

        const int interventions = host.interventions();
        executor.run(step);
        const Snapshot after = snapshotOf(host);
        const bool byUser = isOfUser(step) && host.interventions() == interventions;
        const Signals heard = host.heard().take();
        QStringList broken{Invariants::broken(before, after, byUser), memory.afterStep(),
            std::holds_alternative<Press>(step) ? m_messages.takeAfterPress() : m_messages.take()};
        broken.append(brokenSignals(step, heard, before, after, host.interventions() > interventions));
        broken.removeAll(QString());
        if (!broken.isEmpty())
            return describe(from, number, broken.join(QStringLiteral("; ")));
        count(m_tally, step, heard, before, after);
        m_digest = digested(m_digest, after);
        before = after;
    }
    executor.releaseButtons();
    m_tally.interventions += host.interventions();
    return QString();
}

QString Run::play(int from, int to)
{
    MemoryWatch memory;
    settle();
    for (int begin = from; begin < to; begin += plotLength) {
        const int end = std::min(begin + plotLength, to);
        QString broken = playPiece(begin, end);
        settle();
        if (broken.isEmpty()) {
            QStringList left{m_messages.take(), memory.betweenPlots()};
            left.removeAll(QString());
            broken = left.isEmpty() ? QString() : describe(begin, end - 1, left.join(QStringLiteral("; ")));
        }
        LastWords::clear();
        if (!broken.isEmpty())
            return broken;
    }
    m_memoryGrowth = memory.growth();
    return QString();
}

}
